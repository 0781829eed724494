// The Windows calls on the event log, which takes whatever is reported. It is not among the files
// of the computer.
#include <windows.h>

#include "machine/Machine.h"
#include "machine/calls/ApiSupport.h"
#include "machine/computer/Requests.h"
#include "unicode/Unicode.h"

namespace {

using namespace zelvreg;
using namespace zelvreg::machine;

HANDLE eventLogHandle() { return reinterpret_cast<HANDLE>(std::uintptr_t{0x30010}); }

}  // namespace

extern "C" {

HANDLE RegisterEventSourceW(LPCWSTR, LPCWSTR source) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return nullptr;
  machine->requests().eventSource = utf8(textOf(source));
  return eventLogHandle();
}

BOOL ReportEventW(HANDLE source, WORD type, WORD, DWORD number, PSID user, WORD count, DWORD,
                  LPCWSTR* texts, LPVOID) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return FALSE;
  if (source != eventLogHandle()) return failed(ERROR_INVALID_HANDLE);
  EventReport report{.type = type, .number = number, .hasUser = user != nullptr, .texts = {}};
  for (WORD index = 0; index < count; ++index) {
    report.texts.push_back(utf8(textOf(texts[index])));
  }
  machine->requests().events.push_back(std::move(report));
  return TRUE;
}

BOOL DeregisterEventSource(HANDLE source) {
  return source == eventLogHandle() ? TRUE : failed(ERROR_INVALID_HANDLE);
}
}
