// The window of a small form: a title in the color of the suite, a close button, its controls.
#ifndef ZELVREG_DESKTOP_SMALL_WINDOW_H
#define ZELVREG_DESKTOP_SMALL_WINDOW_H

#include <windows.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "controls/TransForm.h"
#include "desktop/Desk.h"
#include "desktop/PicturePeer.h"
#include "desktop/SimplePeers.h"
#include "widgets/FormWindow.h"
#include "widgets/MessageQueue.h"

namespace zelvreg {
struct Form42;
}  // namespace zelvreg

namespace zelvreg::desktop {

struct SmallWindowOptions {
  const wchar_t* windowClass = L"ZelvregSmallWindow";
  std::string title;  // as the system and screen readers name it
  // Called when the window takes a resolution: sets the form's height and places that follow from
  // lengths of texts. May be empty.
  std::function<void(Desk& desk)> arrange = nullptr;
  // Opens the help about the window when F1 is pressed in it. May be empty.
  std::function<void()> help = nullptr;
};

class SmallWindow : private ControlPeer {
 public:
  // The caller adds the peers. Desk, form and owner must outlive the window; the owner may be null.
  // It has the colors of the desk, and the resolution of the screen that it is on.
  SmallWindow(Desk& sharedDesk, FormWindow& shownForm, DropShadow& formShadow, HWND owner,
              std::function<void()> close, const SmallWindowOptions& options);
  SmallWindow(const SmallWindow&) = delete;
  SmallWindow& operator=(const SmallWindow&) = delete;
  ~SmallWindow() override;

  void add(Label& label, const Place& place, LabelLook look);
  void add(Button& button, const Place& place, ButtonRole role, const char* icon);
  // `name` says what is to be typed.
  void add(TextBox& box, const Place& place, const Label& name);
  void add(Picture& picture, const Place& place, const PictureOptions& options);
  // Any other control, whose peer was made for this window's desk and handle.
  void add(Control& control, const Place& place, std::unique_ptr<Peer> peer);

  // Shows it and serves the queue as long as `isOpen` is true; the owner is disabled.
  void runModal(MessageQueue& messages, const bool& isOpen);

  [[nodiscard]] HWND hwnd() const { return window; }
  [[nodiscard]] Desk& ownDesk() { return desk; }

 private:
  static LRESULT CALLBACK procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
  void changed(const Control& control, Change what, std::size_t row) override;
  void paintGround(HDC context) const;
  // Gives it its size at the resolution of the screen, as far as the screen has room.
  void takeResolution(int resolution, const RECT& onScreen);
  void beginOnItsScreen();
  void changeResolution(int resolution, const RECT& suggested);
  void showAll();

  Desk desk;
  FormWindow& form;
  DropShadow& shadow;
  HWND owner;
  HWND window = nullptr;
  std::function<void()> onClose;
  std::function<void(Desk& desk)> arrange;
  std::function<void()> onHelp;
  const Button* primary = nullptr;
  HWND firstFocus = nullptr;
  std::unique_ptr<controls::TransForm> outline;
  std::vector<std::unique_ptr<Peer>> peers;
};

// These run until the user closes them.
void showExclusionDialog(Desk& desk, Form42& form, HWND owner);
void showAboutDialog(Desk& desk, Form42& form, HWND owner);

}  // namespace zelvreg::desktop

#endif
