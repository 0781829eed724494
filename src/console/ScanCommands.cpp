#include "console/ScanCommands.h"

#include <stdexcept>

#include "console/FixCommand.h"
#include "console/FormUse.h"
#include "console/ResultOutput.h"
#include "console/UserTurns.h"
#include "form/Form42.h"
#include "form/ProcessEnd.h"
#include "runtime/Directory.h"
#include "runtime/Environment.h"
#include "shell/CommandModes.h"

namespace zelvreg::console {
namespace {

int statusFor(const ScanResult& result, const Options& options) {
  return result.findings.empty() || options.exitsZero ? nothingFound : problemsFound;
}

}  // namespace

int scan(const Options& options, Computer& computer, const Streams& streams) {
  UserTurns turns(options, computer, streams);
  const bool isComplete =
      turns.scan(options.target.everyUser ? computer.users() : std::vector<ComputerUser>());
  // Both are told below the result, where they are seen.
  const std::string stopped =
      std::string("the scan was ") + howGivenUp() + "; what was found so far is listed";
  const auto damage = computer.damage();
  const ScanResult result =
      turns.resultToPrint(isComplete ? damage : std::vector<std::string>{stopped});
  printResult(result, options, streams);
  turns.writeReport();
  tell(turns.unseen(), streams);
  if (!isComplete) {
    throw std::runtime_error(stopped);
  }
  tell(damage, streams);
  return damage.empty() && !turns.isAnybodyLeftOut() ? statusFor(result, options) : failed;
}

int runAutomatically(const Options& options, Computer& computer, const Streams& streams) {
  refuseUnlessWhole(computer);
  Form42 form;
  readCommandLine(form, options.mode);
  makeFolder(programFolder());
  try {
    prepareForm(form, options, streams);
  } catch (const ProcessEnd&) {
    saveAndTell(computer, streams);
    tellWhatWasLeftAlone(form, streams);
    return nothingFound;
  }
  throw std::runtime_error("no category is ticked, so nothing was scanned");
}

}  // namespace zelvreg::console
