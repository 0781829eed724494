#include "desktop/ProcessStart.h"

#include <windows.h>

// These two need <windows.h> before them.
#include <commctrl.h>
#include <objbase.h>

#include "libraries/SystemLibrary.h"

namespace zelvreg::desktop {

void beginProcess() {
  loadFromSystemFolderOnly();
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&classes);
}

}  // namespace zelvreg::desktop
