// The system's dialogs for the name of a file, over the middle of a window.
#ifndef ZELVREG_DESKTOP_FILE_DIALOG_H
#define ZELVREG_DESKTOP_FILE_DIALOG_H

#include <windows.h>

#include <string>

#include "widgets/Dialogs.h"

namespace zelvreg::desktop {

// The name to save under, or of an existing file to open; the empty text if the user cancels.
std::string askToSave(HWND owner, const CommonDialog& dialog, const std::string& suggested = {});
std::string askToOpen(HWND owner, const CommonDialog& dialog);

}  // namespace zelvreg::desktop

#endif
