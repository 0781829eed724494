#include "gallery/GalleryWindow.h"

int main() {
  zelvreg::gallery::GalleryWindow gallery;
  return gallery.run();
}
