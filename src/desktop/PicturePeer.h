// The window of a picture: one of the program's icons, or an animation from a file.
#ifndef ZELVREG_DESKTOP_PICTURE_PEER_H
#define ZELVREG_DESKTOP_PICTURE_PEER_H

#include <functional>
#include <optional>
#include <string>

#include "desktop/Animation.h"
#include "desktop/Peer.h"
#include "widgets/SimpleControls.h"

namespace zelvreg::desktop {

struct PictureOptions {
  const char* icon = "";
  bool canBePressed = false;
  int length = 16;  // of the icon, in pixels at 96 dpi
  Tone ground = Tone::Ground;
  // A disc under the icon.
  bool hasDisc = false;
  Tone disc = Tone::Ground;
  std::optional<Tone> tone = std::nullopt;  // instead of the icon's own
};

class PicturePeer : public Peer {
 public:
  PicturePeer(Desk& sharedDesk, HWND parent, Picture& shownPicture, PictureOptions pictureOptions);

  void draw(const DRAWITEMSTRUCT& request) override;

  [[nodiscard]] AccessibleFacts facts() const override;

  // The name that a screen reader reads.
  void setName(std::function<std::string()> name);

  // The icon, if it changes, and the press. Each may be empty.
  std::function<std::string()> iconOf;
  std::function<void()> onClick;

 protected:
  void showLook() override;

 private:
  std::function<std::string()> nameOf;

  static LRESULT CALLBACK procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR id, DWORD_PTR reference);
  void nextFrame();

  Picture& picture;
  PictureOptions options;
  std::string loadedFile;
  Animation animation;
  std::size_t frame = 0;  // the one that is shown
};

}  // namespace zelvreg::desktop

#endif
