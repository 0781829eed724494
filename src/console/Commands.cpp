#include "console/Commands.h"

#include <stdexcept>

#include "console/FixCommand.h"
#include "console/FormUse.h"
#include "console/ListCommands.h"
#include "console/ScanCommands.h"
#include "console/SearchCommand.h"

namespace zelvreg::console {
namespace {

// Those that only read, and those that ask for more than this before they write.
bool writesAtOnce(Command command) {
  switch (command) {
    case Command::Scan:
    case Command::Fix:
    case Command::Search:
    case Command::Automatic:
    case Command::ListUndo:
    case Command::ListExclusions:
    case Command::ListLanguages:
      return false;
    default:
      return true;
  }
}

// The program's settings are in a hive of the computer. Files that belong to them would be gone
// before that hive is found to be one that cannot be written.
void refuseIfBehind(const Computer& computer) {
  const std::vector<std::string> lines = computer.behind();
  if (!lines.empty()) {
    throw std::runtime_error(lines.front() + "; nothing was changed");
  }
}

}  // namespace

int runCommand(const Options& options, Computer& computer, const Streams& streams) {
  tell(computer.notices(), streams);
  if (writesAtOnce(options.command)) {
    refuseIfBehind(computer);
  }
  switch (options.command) {
    case Command::Scan:
      return scan(options, computer, streams);
    case Command::Fix:
      return fix(options, computer, streams);
    case Command::Search:
      return search(options, computer, streams);
    case Command::Automatic:
      return runAutomatically(options, computer, streams);
    case Command::ListUndo:
    case Command::RestoreUndo:
    case Command::RemoveUndo:
    case Command::RestoreExport:
    case Command::UndoOn:
    case Command::UndoOff:
      return workOnUndo(options, computer, streams);
    case Command::ListExclusions:
    case Command::AddExclusion:
    case Command::RemoveExclusion:
      return workOnExclusions(options, computer, streams);
    case Command::ListLanguages:
    case Command::UseLanguage:
      return workOnLanguages(options, computer, streams);
  }
  return failed;
}

}  // namespace zelvreg::console
