#include "scan/EventLog.h"

#include <algorithm>
#include <iterator>

#include "form/Form42.h"
#include "keys/OpenKey.h"
#include "keys/ValueData.h"
#include "runtime/Environment.h"
#include "runtime/ProcessUser.h"
#include "scan/OwnPaths.h"
#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

const std::u16string sourceName = u"zelvreg";
constexpr const char* messageProgram = "zelvreg-console.exe";

struct Severity {
  WORD type;   // as the event log has it
  DWORD bits;  // of the number of a message
};
constexpr Severity information{EVENTLOG_INFORMATION_TYPE, 0x40000000};
constexpr Severity warning{EVENTLOG_WARNING_TYPE, 0x80000000};
constexpr Severity error{EVENTLOG_ERROR_TYPE, 0xC0000000};

Severity severityOf(LoggedEvent event) {
  switch (event) {
    case LoggedEvent::RepairRefused:
    case LoggedEvent::UndoRefused:
      return warning;
    case LoggedEvent::CommandFailed:
      return error;
    default:
      return information;
  }
}

bool isSourceOurs() {
  const OpenKey key(HiveHandle::LocalMachine, eventSourceKey, KEY_QUERY_VALUE | KEY_WOW64_64KEY);
  ValueData value;
  return key.isOpen() && value.read(key.handle(), eventMessageFile) == ERROR_SUCCESS &&
         value.isSingleText() &&
         lowerCase(value.text()) == lowerCase(programFolder() + "\\" + messageProgram);
}

}  // namespace

DWORD eventNumber(LoggedEvent event) { return static_cast<DWORD>(event) | severityOf(event).bits; }

void reportEvent(LoggedEvent event, const std::vector<std::string>& texts) {
  if (!isSourceOurs()) {
    return;
  }
  HANDLE source = RegisterEventSourceW(nullptr, wideText(sourceName));
  if (source == nullptr) {
    return;
  }
  std::vector<std::u16string> units;
  std::ranges::transform(texts, std::back_inserter(units), utf16UntilNul);
  std::vector<LPCWSTR> pointers;
  std::ranges::transform(units, std::back_inserter(pointers), wideText);
  std::vector<BYTE> user = processUser();
  ReportEventW(source, severityOf(event).type, 0, eventNumber(event),
               user.empty() ? nullptr : user.data(), static_cast<WORD>(pointers.size()), 0,
               pointers.data(), nullptr);
  DeregisterEventSource(source);
}

void reportEvent(const Form42& form, LoggedEvent event, const std::vector<std::string>& texts) {
  if (form.obeysComputer && form.safeguards != asDescribed()) {
    reportEvent(event, texts);
  }
}

void reportScan(const Form42& form, bool isWhole) {
  reportEvent(form, isWhole ? LoggedEvent::ScanEnded : LoggedEvent::ScanStopped,
              {std::to_string(form.View2.count())});
}

void reportRepair(const Form42& form) {
  const RepairOutcome& outcome = form.repairOutcome;
  const std::string exported =
      form.exportStem.empty() ? std::string() : exportPath(form, form.exportStem);
  reportEvent(form, LoggedEvent::RepairEnded,
              {std::to_string(outcome.gone), std::to_string(outcome.leftAlone),
               std::to_string(outcome.noEffect), exported});
}

}  // namespace zelvreg
