// The window of one control. It shows what the control holds and keeps no state of its own.
#ifndef ZELVREG_DESKTOP_PEER_H
#define ZELVREG_DESKTOP_PEER_H

#include <windows.h>

#include <functional>
#include <optional>
#include <string>

#include "controls/PaintBuffer.h"
#include "desktop/AccessibleFacts.h"
#include "desktop/Desk.h"
#include "widgets/Control.h"

namespace zelvreg::desktop {

class Peer : public ControlPeer {
 public:
  // The desk and the control must outlive the peer.
  Peer(Desk& sharedDesk, Control& shownControl);
  Peer(const Peer&) = delete;
  Peer& operator=(const Peer&) = delete;
  ~Peer() override;

  // Null after the window was destroyed with its parent.
  [[nodiscard]] HWND hwnd() const { return window; }

  [[nodiscard]] const Control& shownControl() const { return shown; }

  void changed(const Control& control, Change what, std::size_t row) override;
  // Shows the whole control again, as after a change of the resolution.
  virtual void showAll();

  // Messages to the parent about this window come back here: the code of a command, a notification
  // (no value if the peer does not answer it), a request to draw itself or for its colors.
  virtual void command(int /*code*/) {}
  virtual std::optional<LRESULT> notice(NMHDR& /*header*/) { return std::nullopt; }
  virtual void draw(const DRAWITEMSTRUCT& /*request*/) {}
  // Gives the context the colors of the window's text; the answer is the brush of its ground.
  virtual std::optional<LRESULT> colors(HDC /*context*/) { return std::nullopt; }

  // For screen readers: what it is, and what a row of it is (from 1, in the order in which
  // they are shown; none where it has no such).
  [[nodiscard]] virtual AccessibleFacts facts() const { return {}; }
  [[nodiscard]] virtual std::optional<AccessibleFacts> factsOfRow(std::size_t /*row*/) const {
    return std::nullopt;
  }

  // The peer of a window, or null.
  static Peer* of(HWND window);

 protected:
  // Takes ownership of a window.
  void own(HWND made);
  // Uses a window that somebody else owns and destroys.
  void borrow(HWND made);

  virtual void showText() {}
  virtual void showLook();
  virtual void showPlace();
  virtual void showValue() {}
  virtual void showRows(Change /*what*/, std::size_t /*row*/) {}

  [[nodiscard]] Desk& desk() const { return shared; }
  [[nodiscard]] Control& control() const { return shown; }
  // The width of a text in one line, in pixels of the screen.
  [[nodiscard]] int lineWidth(const std::u16string& text, HFONT font) const;
  // Draws the focus ring inside the buffer's edge, if the window has the focus. `ground` is what
  // the buffer was cleared with.
  void drawFocus(const controls::PaintBuffer& buffer, Tone ground) const;
  void repaint() const { InvalidateRect(window, nullptr, FALSE); }
  void move(int left, int top, int width, int height) const;
  // From the layout, not from the control.
  void moveTo(const Place& place) const;

 private:
  [[nodiscard]] bool isAt(int left, int top, int width, int height) const;
  void leaveFocus() const;
  // At once, or when the queue is next served: a scan asks for it at every key.
  void refresh();

  Desk& shared;
  Control& shown;
  HWND window = nullptr;
  bool isOwned = false;
  DWORD refreshedAt = 0;
};

// Passes messages about child windows back to their peers; no value if no peer answers.
std::optional<LRESULT> reflect(UINT message, WPARAM wParam, LPARAM lParam);

// Presses the button that has the focus. Whether there was one.
bool pressFocusedButton();

// For windows that can be pressed but are not buttons: presses it for Enter or the space bar, and
// keeps Enter from the dialog manager. No value for any other message.
std::optional<LRESULT> pressByKey(UINT message, WPARAM wParam, LPARAM lParam,
                                  const std::function<void()>& press);

// Draws the one-pixel border of a window in the border color, or shows by it that the window has
// the focus. The desk must outlive it.
void colorBorder(HWND window, Desk& desk);

// Registers a class for the program's own windows, if it is not registered yet.
void registerClass(const wchar_t* name, WNDPROC procedure);

// Makes a child window of a system class, hidden.
HWND makeChild(HWND parent, const wchar_t* windowClass, DWORD style, DWORD extendedStyle = 0);

}  // namespace zelvreg::desktop

#endif
