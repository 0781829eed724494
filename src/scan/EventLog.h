// What an administrator finds in the event log of Windows: the end of each scan, repair and undo,
// what was refused, and what has failed.
//
// Nothing is written unless the set-up has registered the event source for the programs that run: a
// portable copy writes nothing, nor does a program whose message table is that of another version.
#ifndef ZELVREG_SCAN_EVENT_LOG_H
#define ZELVREG_SCAN_EVENT_LOG_H

#include <windows.h>

#include <string>
#include <vector>

namespace zelvreg {

struct Form42;

// The numbers are those of assets/events.mc, where each has its message.
enum class LoggedEvent {
  ScanEnded = 1,  // how many entries were found
  ScanStopped,    // how many were found until then
  RepairEnded,    // how many are gone, were left alone, are still there; the safety export, if any
  RepairRefused,  // why
  RepairUndone,   // what it was undone from
  UndoRefused,    // why
  CommandFailed,  // the line that says why
};
inline constexpr int loggedEvents = static_cast<int>(LoggedEvent::CommandFailed);

// The key of the source below HKEY_LOCAL_MACHINE. Its value names the program with the messages.
inline constexpr const char* eventSourceKey =
    "SYSTEM\\CurrentControlSet\\Services\\EventLog\\Application\\zelvreg";
inline constexpr const char* eventMessageFile = "EventMessageFile";

// The number with its severity, by which Windows finds the message.
DWORD eventNumber(LoggedEvent event);

// Failures are not told: a repair is no worse for an event log that is full.
void reportEvent(LoggedEvent event, const std::vector<std::string>& texts);

// The same for what was done on the computer of a form. Not of one that is repaired from outside,
// whose log is no place for it, and not if all safeguards are lifted.
void reportEvent(const Form42& form, LoggedEvent event, const std::vector<std::string>& texts);
void reportScan(const Form42& form, bool isWhole);
void reportRepair(const Form42& form);

}  // namespace zelvreg

#endif
