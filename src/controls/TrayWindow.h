// The hidden window of an icon in the notification area.
#ifndef ZELVREG_CONTROLS_TRAY_WINDOW_H
#define ZELVREG_CONTROLS_TRAY_WINDOW_H

#include <windows.h>

#include <random>

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

 private:
  static LRESULT CALLBACK procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR id, DWORD_PTR reference);
  void notify(TrayCall call, const TrayRecord& record) override;
  std::uint32_t window() override;
  std::uint32_t icon(const Picture& picture) override;
  double randomFraction() override;

  HWND receiver;
  HICON shown = nullptr;
  std::minstd_rand random;
  // Last, because its destructor calls the host.
  TrayArea control;
};

}  // namespace zelvreg::controls

#endif
