// The window in high contrast, as Windows' scheme “High Contrast #1” has it: Wine has no such
// setting, so the colors are set and taken here as the program takes them on Windows.
#include <windows.h>

// These two need <windows.h> before them.
#include <commctrl.h>
#include <objbase.h>

#include <array>

#include "controls/Color.h"
#include "desktop/MainWindow.h"
#include "form/Form42.h"
#include "shell/Languages.h"
#include "shell/StartUp.h"

namespace {

constexpr COLORREF black = RGB(0, 0, 0);
constexpr COLORREF yellow = RGB(255, 255, 0);
constexpr COLORREF green = RGB(0, 255, 0);

void setScheme() {
  constexpr std::array<int, 12> numbers{COLOR_WINDOW,   COLOR_WINDOWTEXT, COLOR_3DFACE,
                                        COLOR_BTNTEXT,  COLOR_HIGHLIGHT,  COLOR_MENU,
                                        COLOR_MENUTEXT, COLOR_GRAYTEXT,   COLOR_HIGHLIGHTTEXT,
                                        COLOR_HOTLIGHT, COLOR_BTNSHADOW,  COLOR_INFOBK};
  constexpr std::array<COLORREF, 12> values{black,
                                            yellow,
                                            black,
                                            yellow,
                                            RGB(0, 128, 0),
                                            black,
                                            yellow,
                                            green,
                                            RGB(255, 255, 255),
                                            RGB(128, 128, 255),
                                            yellow,
                                            black};
  SetSysColors(static_cast<int>(numbers.size()), numbers.data(), values.data());
}

}  // namespace

int WINAPI wWinMain(HINSTANCE /*instance*/, HINSTANCE /*before*/, LPWSTR /*commandLine*/,
                    int /*show*/) {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&classes);
  setScheme();
  zelvreg::Form42 form;
  zelvreg::desktop::MainWindow window(form);
  zelvreg::Form_Load(form);
  window.addLanguages();
  zelvreg::desktop::Desk& desk = window.sharedDesk();
  desk.colors.useSystem(
      [](int number) { return zelvreg::controls::fromProperty(GetSysColor(number)); });
  // All is shown anew when a language is chosen, and buttons when the suite's color changes, which
  // high contrast ignores.
  zelvreg::lbllanguage_Click(form, 0);
  form.Shape3.foreColor = 0;
  window.run();
}
