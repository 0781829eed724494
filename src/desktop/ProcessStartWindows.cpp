#include "desktop/ProcessStart.h"

#include <windows.h>

// These two need <windows.h> before them.
#include <commctrl.h>
#include <objbase.h>

namespace zelvreg::desktop {
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

void beginProcess() {
  loadFromSystemFolderOnly();
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&classes);
}

}  // namespace zelvreg::desktop
