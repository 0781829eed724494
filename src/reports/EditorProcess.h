// Ending the registry editor, so that it reads its place anew when it starts.
#ifndef ZELVREG_REPORTS_EDITOR_PROCESS_H
#define ZELVREG_REPORTS_EDITOR_PROCESS_H

namespace zelvreg {

// Ends the first process named "regedit.exe", through the management service. Without the service
// nothing is ended.
void killprocess();

}  // namespace zelvreg

#endif
