// The help as the system shows it.
#ifndef ZELVREG_DESKTOP_HELP_VIEWER_H
#define ZELVREG_DESKTOP_HELP_VIEWER_H

#include <windows.h>

#include <string>

namespace zelvreg {
struct Form42;
}  // namespace zelvreg

namespace zelvreg::desktop {

// Opens a book at the page of a context number, in a window that goes with its owner. Where the
// system cannot show it, the page opens as plain HTML.
void showHelp(Form42& form, HWND owner, const std::string& book, int context);

}  // namespace zelvreg::desktop

#endif
