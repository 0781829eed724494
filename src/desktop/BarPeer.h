// The window of one bar of the results' counts by category: a button with a name and a number.
#ifndef ZELVREG_DESKTOP_BAR_PEER_H
#define ZELVREG_DESKTOP_BAR_PEER_H

#include <cstddef>
#include <string>

#include "desktop/Hover.h"
#include "desktop/Peer.h"
#include "widgets/Button.h"

namespace zelvreg::desktop {

struct Bar {
  std::string name;
  std::size_t count = 0;
  std::size_t longest = 0;  // the number for which a bar is as long as it can be
  bool isChosen = false;

  bool operator==(const Bar&) const = default;
};

class BarPeer : public Peer {
 public:
  BarPeer(Desk& sharedDesk, HWND parent, Button& shownButton);

  void show(const Bar& told);
  void command(int code) override;
  [[nodiscard]] AccessibleFacts facts() const override;

 private:
  static LRESULT CALLBACK procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR id, DWORD_PTR reference);
  void paint();
  void drawBar(const controls::PaintBuffer& buffer) const;

  Button& button;
  Bar bar;
  Hover hover;
};

}  // namespace zelvreg::desktop

#endif
