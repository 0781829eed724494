// The gallery's window: the page with real controls on it.
#ifndef ZELVREG_GALLERY_GALLERY_WINDOW_H
#define ZELVREG_GALLERY_GALLERY_WINDOW_H

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "controls/CMWndProc.h"
#include "controls/PaintBuffer.h"
#include "controls/TransForm.h"
#include "controls/TrayWindow.h"
#include "controls/chameleonButton.h"
#include "gallery/GalleryIcons.h"

namespace zelvreg::gallery {

class GalleryWindow {
 public:
  GalleryWindow();
  GalleryWindow(const GalleryWindow&) = delete;
  GalleryWindow& operator=(const GalleryWindow&) = delete;
  ~GalleryWindow();

  // Shows the window, opens its menu, and ends when the window is closed.
  int run();

 private:
  static LRESULT CALLBACK procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
  controls::chameleonButton& addButton(const std::string& caption, const controls::Rectangle& place,
                                       int style);
  void addTitleButtons();
  void addCommands();
  void addSideBar();
  void addTableColumn();
  void makeMenu();
  void openMenu() const;

  controls::PaintBuffer page;
  HWND window;
  HMENU menu = nullptr;
  HIMAGELIST menuPictures = nullptr;
  std::vector<std::unique_ptr<controls::chameleonButton>> buttons;
  std::unique_ptr<controls::TransForm> outline;
  std::unique_ptr<controls::CMWndProc> menus;
  controls::TrayWindow tray;
};

}  // namespace zelvreg::gallery

#endif
