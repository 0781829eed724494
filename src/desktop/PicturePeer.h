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
  // What a screen reader says of a picture that can be pressed.
  const wchar_t* name = L"";
  int length = 16;  // of the icon, in points at 96 to the inch
  Tone ground = Tone::Ground;
  // A disc behind the icon.
  bool hasDisc = false;
  Tone disc = Tone::Ground;
  std::optional<Tone> tone = std::nullopt;  // other than the icon's own
};

class PicturePeer : public Peer {
 public:
  PicturePeer(Desk& sharedDesk, HWND parent, Picture& shownPicture, PictureOptions pictureOptions);

  void draw(const DRAWITEMSTRUCT& request) override;

  // May be empty.
  std::function<void()> onClick;

 protected:
  void showLook() override;

 private:
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
