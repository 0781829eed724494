#include "console/Commands.h"

#include "console/FixCommand.h"
#include "console/ListCommands.h"
#include "console/ScanCommands.h"
#include "console/SearchCommand.h"

namespace zelvreg::console {

int runCommand(const Options& options, Computer& computer, const Streams& streams) {
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
