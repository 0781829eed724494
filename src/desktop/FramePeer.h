// The window of a frame: a page, a panel, or a group of controls.
#ifndef ZELVREG_DESKTOP_FRAME_PEER_H
#define ZELVREG_DESKTOP_FRAME_PEER_H

#include <functional>

#include "desktop/Peer.h"
#include "widgets/SimpleControls.h"

namespace zelvreg::desktop {

struct FrameOptions {
  Rgb ground;
  bool isCard = false;      // has an edge with round corners
  Rgb behind;               // what shows behind those corners
  bool hasTitle = false;    // the caption is a page's title
  bool hasCaption = false;  // the caption names a group
};

class FramePeer : public Peer {
 public:
  FramePeer(Desk& sharedDesk, HWND parent, Frame& shownFrame, FrameOptions frameOptions);

  [[nodiscard]] Frame& shownFrame() const { return frame; }

  // Other than what the control holds.
  std::function<Place()> placeOf;
  std::function<std::string()> titleOf;
  // Each may be empty: after it was shown or hidden, and the mouse on its ground.
  std::function<void()> onVisible;
  std::function<void()> onMouseMove;

  void changed(const Control& control, Change what, std::size_t row) override;

 protected:
  void showText() override;
  void showPlace() override;

 private:
  static LRESULT CALLBACK procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
  void paintGround(HDC context) const;

  Frame& frame;
  FrameOptions options;
};

}  // namespace zelvreg::desktop

#endif
