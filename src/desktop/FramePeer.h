// The window of a frame: a page, a panel, or a group of controls.
#ifndef ZELVREG_DESKTOP_FRAME_PEER_H
#define ZELVREG_DESKTOP_FRAME_PEER_H

#include <functional>
#include <optional>

#include "desktop/Peer.h"
#include "widgets/SimpleControls.h"

namespace zelvreg::desktop {

struct FrameOptions {
  Tone ground = Tone::Ground;
  bool isCard = false;         // has an edge with round corners
  Tone behind = Tone::Ground;  // what is seen at those corners
  bool hasTitle = false;       // the caption is a page's title
  bool hasCaption = false;     // the caption names a group
};

class FramePeer : public Peer {
 public:
  FramePeer(Desk& sharedDesk, HWND parent, Frame& shownFrame, FrameOptions frameOptions);

  [[nodiscard]] Frame& shownFrame() const { return frame; }
  [[nodiscard]] AccessibleFacts facts() const override;

  // Instead of the control's own.
  std::function<Place()> placeOf;
  std::function<std::string()> titleOf;
  // Called after it was shown or hidden, and for mouse moves on its ground. Each may be empty.
  std::function<void()> onVisible;
  std::function<void()> onMouseMove;
  // A frame that has this takes the focus when it is shown and passes each key pressed in it. The
  // answer says whether the key was used.
  std::function<bool(WPARAM key)> onKey;

  void changed(const Control& control, Change what, std::size_t row) override;

 protected:
  void showText() override;
  void showPlace() override;

 private:
  static LRESULT CALLBACK procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
  void paintGround(HDC context) const;
  std::optional<LRESULT> keyMessage(UINT message, WPARAM wParam) const;

  Frame& frame;
  FrameOptions options;
};

}  // namespace zelvreg::desktop

#endif
