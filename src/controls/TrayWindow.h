// The hidden window of an icon in the notification area.
#ifndef ZELVREG_CONTROLS_TRAY_WINDOW_H
#define ZELVREG_CONTROLS_TRAY_WINDOW_H

#include <windows.h>

#include <functional>
#include <random>
#include <string>

#include "controls/TrayArea.h"

namespace zelvreg::controls {

// Receives the icon's notifications and passes them to the control as mouse moves.
class TrayWindow : private TrayHost {
 public:
  explicit TrayWindow(bool userMode = true);
  TrayWindow(const TrayWindow&) = delete;
  TrayWindow& operator=(const TrayWindow&) = delete;
  ~TrayWindow() override;

  TrayArea& area() { return control; }
  [[nodiscard]] HWND hwnd() const { return receiver; }

  // Shows a notice beside the icon, for as long as the system shows such notices; nothing if the
  // icon is not shown. Both are UTF-8; the system shows up to 63 and 255 units of UTF-16.
  void showNotice(const std::string& title, const std::string& text);
  // Called for a press on a notice; may be empty.
  std::function<void()> onNoticeClick;

 private:
  static LRESULT CALLBACK procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR id, DWORD_PTR reference);
  void notify(TrayCall call, const TrayRecord& record) override;
  std::uint32_t window() override;
  std::uint32_t icon(const Picture& picture) override;
  double randomFraction() override;

  HWND receiver;
  HICON shown = nullptr;
  TrayRecord standing;  // as the system has it
  std::minstd_rand random;
  // Last, because its destructor calls the host.
  TrayArea control;
};

}  // namespace zelvreg::controls

#endif
