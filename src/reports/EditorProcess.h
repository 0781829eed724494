// Ends the registry editor, so that it reads its last key when it starts again.
#ifndef ZELVREG_REPORTS_EDITOR_PROCESS_H
#define ZELVREG_REPORTS_EDITOR_PROCESS_H

// The connection to the management service, on Windows.
struct IWbemServices;

namespace zelvreg {

// Ends the first process named "regedit.exe", through the management service. Without the service
// nothing is ended.
void killprocess();

// The same through a connection that is already made; only on Windows.
void endEditor(IWbemServices& services);

}  // namespace zelvreg

#endif
