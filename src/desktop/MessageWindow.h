// A message or a question, in the language and the colors of the window.
#ifndef ZELVREG_DESKTOP_MESSAGE_WINDOW_H
#define ZELVREG_DESKTOP_MESSAGE_WINDOW_H

#include <windows.h>

#include "desktop/Desk.h"
#include "widgets/Dialogs.h"

namespace zelvreg {
struct Form42;
}  // namespace zelvreg

namespace zelvreg::desktop {

// Waits for the answer; the queue is served meanwhile. Who closes it has answered OK or No. `owner`
// cannot be used until then; null for none.
Answer showMessageWindow(Desk& desk, Form42& form, HWND owner, const UserMessage& message);

}  // namespace zelvreg::desktop

#endif
