// The window of one control. It shows what the control holds and keeps no state of its own.
#ifndef ZELVREG_DESKTOP_PEER_H
#define ZELVREG_DESKTOP_PEER_H

#include <windows.h>

#include <functional>
#include <optional>

#include "controls/PaintBuffer.h"
#include "desktop/Desk.h"
#include "widgets/Control.h"

namespace zelvreg::desktop {

class Peer : public ControlPeer {
 public:
  // The desk and the control outlive the peer.
  Peer(Desk& sharedDesk, Control& shownControl);
  Peer(const Peer&) = delete;
  Peer& operator=(const Peer&) = delete;
  ~Peer() override;

  // Null once its parent has taken the window along.
  [[nodiscard]] HWND hwnd() const { return window; }

  [[nodiscard]] const Control& shownControl() const { return shown; }

  void changed(const Control& control, Change what, std::size_t row) override;
  // Shows all of the control anew, as after a change of the resolution.
  virtual void showAll();

  // What the window's parent is told of it comes back here: the code of a command; a notice, none
  // for one that means nothing to the peer; the place where it draws itself.
  virtual void command(int /*code*/) {}
  virtual std::optional<LRESULT> notice(NMHDR& /*header*/) { return std::nullopt; }
  virtual void draw(const DRAWITEMSTRUCT& /*request*/) {}

  // The peer of a window, or null.
  static Peer* of(HWND window);

 protected:
  // Takes over a window; the peer destroys it.
  void own(HWND made);
  // The window is another's, which destroys it.
  void borrow(HWND made);

  virtual void showText() {}
  virtual void showLook();
  virtual void showPlace();
  virtual void showValue() {}
  virtual void showRows(Change /*what*/, std::size_t /*row*/) {}

  [[nodiscard]] Desk& desk() const { return shared; }
  [[nodiscard]] Control& control() const { return shown; }
  // The ring around what has the focus, inside the buffer's edge; none while it is elsewhere.
  void drawFocus(const controls::PaintBuffer& buffer) const;
  void repaint() const { InvalidateRect(window, nullptr, FALSE); }
  void move(int left, int top, int width, int height) const;
  // Of the layout rather than of the control.
  void moveTo(const Place& place) const;

 private:
  void leaveFocus() const;
  // At once, or when the queue is served next: a scan asks at every key, and nobody sees each.
  void refresh();

  Desk& shared;
  Control& shown;
  HWND window = nullptr;
  bool isOwned = false;
  DWORD refreshedAt = 0;
};

// Gives the notices of child windows back to their peers; none when no peer wants it.
std::optional<LRESULT> reflect(UINT message, WPARAM wParam, LPARAM lParam);

// Presses the button that has the focus. Whether there was one.
bool pressFocusedButton();

// For what can be pressed and is of no class of buttons: presses it when the message is Enter or
// the space bar, and claims Enter from the dialog keys. None for any other message.
std::optional<LRESULT> pressByKey(UINT message, WPARAM wParam, LPARAM lParam,
                                  const std::function<void()>& press);

// Gives the one-point border of a window the color of borders. The desk outlives it.
void colorBorder(HWND window, Desk& desk);

// A class of the program's own windows; once it is there, it serves all later ones.
void registerClass(const wchar_t* name, WNDPROC procedure);

// Makes a child window of a system class, hidden.
HWND makeChild(HWND parent, const wchar_t* windowClass, DWORD style, DWORD extendedStyle = 0);

}  // namespace zelvreg::desktop

#endif
