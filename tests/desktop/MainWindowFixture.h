// The main window with a form of its own, hidden until a test shows it.
#ifndef ZELVREG_TESTS_DESKTOP_MAIN_WINDOW_FIXTURE_H
#define ZELVREG_TESTS_DESKTOP_MAIN_WINDOW_FIXTURE_H

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "desktop/MainWindow.h"
#include "form/Form42.h"

namespace zelvreg::desktop {

// What the system makes of F1 for the window with the focus; the headers have no name for it.
constexpr UINT pressedF1 = 0x4D;

struct ChildSearch {
  std::wstring windowClass;
  std::vector<HWND> found;
};

inline BOOL CALLBACK noteChild(HWND child, LPARAM parameter) {
  auto& search = *reinterpret_cast<ChildSearch*>(parameter);
  wchar_t name[64] = {};
  GetClassNameW(child, name, 64);
  if (search.windowClass == name) {
    search.found.push_back(child);
  }
  return TRUE;
}

class MainWindowTest : public ::testing::Test {
 protected:
  // Serves the queue, as the program does in its loop.
  void serve() {
    // The clock of the queue may run in steps of 16 ms.
    Sleep(60);
    form.messages.doEvents();
  }

  // The child windows of a class, hidden ones included, in the order of their creation.
  std::vector<HWND> children(const std::wstring& windowClass) const {
    ChildSearch search{windowClass, {}};
    EnumChildWindows(window.hwnd(), noteChild, reinterpret_cast<LPARAM>(&search));
    return search.found;
  }

  HWND windowOf(const Control& control, const std::wstring& windowClass) const {
    for (HWND child : children(windowClass)) {
      const Peer* peer = Peer::of(child);
      if (peer != nullptr && &peer->shownControl() == &control) {
        return child;
      }
    }
    return nullptr;
  }

  static std::wstring textOf(HWND child) {
    wchar_t text[256] = {};
    GetWindowTextW(child, text, 256);
    return text;
  }

  Form42 form;
  MainWindow window{form};
};

}  // namespace zelvreg::desktop

#endif
