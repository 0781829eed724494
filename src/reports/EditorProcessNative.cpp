// Where the management service does not exist, the list of processes is asked for directly.
#include <windows.h>
// tlhelp32 needs windows.h before it.
#include <tlhelp32.h>

#include "reports/EditorProcess.h"
#include "text/Text.h"
#include "unicode/Unicode.h"

namespace zelvreg {

void killprocess() {
  HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  if (snapshot == INVALID_HANDLE_VALUE) {
    return;
  }
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof entry;
  BOOL isThere = Process32FirstW(snapshot, &entry);
  while (isThere != FALSE && lowerCase(utf8(entry.szExeFile)) != "regedit.exe") {
    isThere = Process32NextW(snapshot, &entry);
  }
  CloseHandle(snapshot);
  if (isThere != FALSE) {
    TerminateProcess(OpenProcess(PROCESS_TERMINATE, FALSE, entry.th32ProcessID), 0);
  }
}

}  // namespace zelvreg
