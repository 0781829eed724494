#include "console/Commands.h"

#include <algorithm>
#include <stdexcept>

#include "console/FixCommand.h"
#include "console/FormUse.h"
#include "console/ListCommands.h"
#include "console/ScanCommands.h"
#include "console/SearchCommand.h"

namespace zelvreg::console {
namespace {

// What a command does to the computer.
enum class Writing : std::uint8_t { Nothing, AtOnce, OnceItHasAskedForMore };
Writing writingOf(Command command) {
  switch (command) {
    case Command::Scan:
    case Command::Search:
    case Command::ListUndo:
    case Command::ListExclusions:
    case Command::ListLanguages:
    case Command::CheckLanguage:
    case Command::Doctor:
    case Command::Detect:
    case Command::Merge:
    case Command::ScanImages:
      return Writing::Nothing;
    case Command::Fix:
    case Command::Automatic:
      return Writing::OnceItHasAskedForMore;
    default:
      return Writing::AtOnce;
  }
}

// The program's settings are in a hive of the computer. Files that belong to them would be gone
// before that hive is found to be one that cannot be written.
void refuseFor(const std::vector<std::string>& behind) {
  if (!behind.empty()) {
    throw std::runtime_error(behind.front() + "; nothing was changed");
  }
}

// What a command is refused for is told once, by the refusal.
std::vector<std::string> noticesBut(const std::vector<std::string>& behind,
                                    const Computer& computer) {
  std::vector<std::string> notices = computer.notices();
  std::erase_if(notices, [&behind](const std::string& notice) {
    return std::ranges::any_of(
        behind, [&notice](const std::string& line) { return notice.starts_with(line); });
  });
  return notices;
}

}  // namespace

int runCommand(const Options& options, Computer& computer, const Streams& streams) {
  const Writing writing = writingOf(options.command);
  const std::vector<std::string> behind =
      writing == Writing::Nothing ? std::vector<std::string>() : computer.behind();
  tell(noticesBut(behind, computer), streams);
  if (writing == Writing::AtOnce) {
    refuseFor(behind);
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
    // They need no computer, or open it themselves.
    case Command::CheckLanguage:
    case Command::Doctor:
    case Command::Detect:
    case Command::Merge:
    case Command::ScanImages:
      break;
  }
  return failed;
}

}  // namespace zelvreg::console
