// The program with a window.
#include <windows.h>

// These two need <windows.h> before them.
#include <commctrl.h>
#include <objbase.h>

#include "desktop/MainWindow.h"
#include "form/Form42.h"
#include "form/ProcessEnd.h"
#include "runtime/SingleInstance.h"
#include "shell/CommandModes.h"
#include "shell/StartUp.h"
#include "unicode/Unicode.h"

namespace {

// A process of an administrator must not load a library that somebody has put into the program's
// folder or the current one.
void loadFromSystemFolderOnly() {
  SetDllDirectoryW(L"");
  using SetDirectories = BOOL(WINAPI*)(DWORD);
  // On Windows 7 it needs an update.
  const auto setDirectories = reinterpret_cast<SetDirectories>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "SetDefaultDllDirectories")));
  if (setDirectories != nullptr) {
    setDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
  }
}

}  // namespace

int WINAPI wWinMain(HINSTANCE /*instance*/, HINSTANCE /*before*/, LPWSTR commandLine,
                    int /*show*/) {
  loadFromSystemFolderOnly();
  const zelvreg::SingleInstance instance;
  if (!instance.isFirst()) {
    return 0;
  }
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&classes);
  zelvreg::Form42 form;
  zelvreg::readCommandLine(form, zelvreg::utf8(reinterpret_cast<char16_t*>(commandLine)));
  zelvreg::desktop::MainWindow window(form);
  zelvreg::Form_Load(form);
  window.addLanguages();
  window.run();
}
