#include "console/FixCommand.h"

#include <algorithm>
#include <set>
#include <stdexcept>
#include <utility>
#include <vector>

#include "console/DisplayText.h"
#include "console/FixTicks.h"
#include "console/FormUse.h"
#include "console/ResultOutput.h"
#include "console/Terminal.h"
#include "console/UserTurns.h"
#include "form/Form42.h"
#include "repair/RepairPlan.h"
#include "runtime/Directory.h"
#include "scan/OwnPaths.h"
#include "undo/UndoStores.h"

namespace zelvreg::console {
namespace {

// All turns of one repair.
class Repair {
 public:
  Repair(const Options& optionsInUse, Computer& computerInUse, const Streams& streamsInUse,
         UserTurns& scannedTurns)
      : options(optionsInUse),
        computer(computerInUse),
        streams(streamsInUse),
        turns(scannedTurns) {}

  // Gives the exit status.
  int run() {
    found = turns.result().findings.size();
    tick();
    if (options.isRehearsal) {
      return rehearse();
    }
    if (!ticked.empty()) {
      refuseMoreThanAsked();
      for (const auto& [turn, rows] : ticked) {
        if (!pressFix(*turn)) {
          tellWhatIsLost();
          return failed;  // the form has said why
        }
      }
      computer.endActing();
      saveAndTell(computer, streams);
      tellLeftAlone();
    }
    const ScanResult left = turns.resultToPrint();
    printResult(left, options, streams, outcome(found - left.findings.size()));
    return status(isAnythingLeft() ? problemsFound : nothingFound);
  }

 private:
  void tick() {
    RepairTicks ticks(options, streams);
    for (const UserTurn& turn : turns.all()) {
      if (const std::size_t rows = ticks.tick(*turn.form, computer.users()); rows > 0) {
        ticked.emplace_back(&turn, rows);
      }
    }
    ticks.tell(*turns.all().front().form);
  }

  void refuseMoreThanAsked() {
    if (!options.mostRows) {
      return;
    }
    std::size_t going = 0;
    for (const auto& [turn, rows] : ticked) {
      going += turns.take(*turn, UserWork::Scan) ? RepairPlan(*turn->form).rowsThatGo() : 0;
    }
    if (going > *options.mostRows) {
      throw std::runtime_error(std::to_string(going) +
                               " findings would be repaired, and --max is " +
                               std::to_string(*options.mostRows) +
                               "; nothing was repaired: look at fix --dry-run, then allow more");
    }
  }

  int rehearse() {
    RepairResult result{.isRehearsal = true, .takings = {}, .refused = {}};
    for (const auto& [turn, rows] : ticked) {
      if (!turns.take(*turn, UserWork::Scan)) {
        continue;
      }
      const RepairPlan plan(*turn->form);
      result.repaired += plan.rowsThatGo();
      for (const std::string& place : plan.takings()) {
        result.takings.push_back(placeOf(turn->user, place));
      }
      addRefused(result, *turn, plan.leftAlone());
    }
    computer.endActing();
    printResult(turns.resultToPrint(), options, streams, result);
    return status(result.repaired == 0 ? nothingFound : problemsFound);
  }

  // A timeout ends a repair only before its first change, an interruption at any time. False if the
  // form has stopped it.
  bool pressFix(const UserTurn& turn) {
    if (!turns.take(turn, UserWork::Repair)) {
      return true;
    }
    Form42& form = *turn.form;
    // An offline disk may not have it.
    makeFolder(form.programFolder);
    form.messages.serveHost = [this, &form] {
      const bool isBegun = hasBegun || form.repairOutcome.hasBegun;
      if (isBegun ? isStopRequested() : isGivenUp(options)) {
        throw std::runtime_error(interruptionText(isBegun, computer));
      }
    };
    form.cmd_fix.click();
    form.messages.serveHost = nullptr;
    hasBegun = hasBegun || form.repairOutcome.hasBegun;
    noteRepair(turn);
    return !form.isRepairStopped;
  }

  void noteRepair(const UserTurn& turn) const {
    const Form42& form = *turn.form;
    const RepairOutcome& done = form.repairOutcome;
    const std::string whose = turn.user ? " of " + turn.user->name : std::string();
    if (!form.exportStem.empty()) {
      note(streams, "exported" + whose + ": " + exportPath(form, form.exportStem));
    }
    note(streams, (form.isRepairStopped ? "repaired nothing" : "repaired") + whose + ": " +
                      std::to_string(done.gone) + " gone, " + std::to_string(done.leftAlone) +
                      " left alone, " + std::to_string(done.noEffect) + " without effect");
  }

  void tellWhatIsLost() const {
    if (hasBegun && !computer.keepsAtOnce()) {
      tell({"nothing was saved of the other users' repairs either"}, streams);
    }
  }

  void tellLeftAlone() const {
    for (const auto& [turn, rows] : ticked) {
      tellWhatWasLeftAlone(*turn->form, streams, turn->user);
    }
  }

  // Whether a row that was to be repaired, and can be, is still there.
  [[nodiscard]] bool isAnythingLeft() const {
    return std::ranges::any_of(ticked, [](const auto& one) {
      const RepairOutcome& outcome = one.first->form->repairOutcome;
      const bool tookPlace = outcome.gone + outcome.leftAlone + outcome.noEffect > 0;
      return tookPlace ? outcome.failed > 0 : one.second > 0;
    });
  }

  [[nodiscard]] RepairResult outcome(std::size_t repaired) const {
    RepairResult result{.repaired = repaired, .takings = {}, .refused = {}};
    for (const auto& [turn, rows] : ticked) {
      const RepairOutcome& one = turn->form->repairOutcome;
      result.gone += one.gone;
      result.leftAlone += one.leftAlone;
      result.noEffect += one.noEffect;
      addRefused(result, *turn, one.refused);
    }
    return result;
  }

  static void addRefused(RepairResult& result, const UserTurn& turn,
                         const std::set<LeftAlone>& refused) {
    for (const LeftAlone& entry : refused) {
      result.refused.emplace_back(placeOf(turn.user, entry.place), entry.reason);
    }
  }

  [[nodiscard]] int status(int done) const {
    if (turns.isAnybodyLeftOut()) {
      return failed;
    }
    return options.exitsZero ? nothingFound : done;
  }

  const Options& options;
  Computer& computer;
  const Streams& streams;
  UserTurns& turns;
  std::vector<std::pair<const UserTurn*, std::size_t>> ticked;  // with how many rows
  std::size_t found = 0;
  bool hasBegun = false;  // a change was made in one of the turns
};

void refuseForFirstOf(const std::vector<std::string>& lines) {
  if (!lines.empty()) {
    throw std::runtime_error(lines.front() + "; nothing was repaired");
  }
}

}  // namespace

// Who can be repaired. Damage in the hives of one does not keep the others back.
std::vector<ComputerUser> wholeUsers(UserTurns& turns, const Options& options,
                                     const Computer& computer) {
  if (!options.target.everyUser) {
    refuseUnlessWhole(computer);
    return {};
  }
  refuseForFirstOf(computer.faultsOfComputer());
  std::vector<ComputerUser> users = turns.usersToRepair();
  if (users.empty()) {
    throw std::runtime_error("nobody's keys can be repaired; nothing was repaired");
  }
  return users;
}

void refuseUnlessWhole(const Computer& computer) {
  refuseForFirstOf(computer.damage());
  refuseForFirstOf(computer.unclean());
}

std::string interruptionText(bool hasBegun, const Computer& computer) {
  if (!hasBegun) {
    return "the repair was interrupted before its first change; nothing was repaired";
  }
  return computer.keepsAtOnce() ? "the repair was interrupted; what it had done stays done"
                                : "the repair was interrupted; nothing of it was saved";
}

void tellWhatWasLeftAlone(const Form42& form, const Streams& streams,
                          const std::optional<ComputerUser>& user) {
  for (const auto& [place, reason] : form.repairOutcome.refused) {
    streams.error << "zelvreg: left alone: it would have taken " << printable(placeOf(user, place))
                  << ": " << printable(reason) << " (fix --no-protect takes it)\n";
    note(streams, "left alone: " + placeOf(user, place) + ": " + reason);
  }
}

void scanToRepair(UserTurns& turns, const Options& options, const Computer& computer) {
  std::vector<ComputerUser> users = wholeUsers(turns, options, computer);
  for (bool isWhole = false; !isWhole;) {
    if (!turns.scan(users)) {
      throw std::runtime_error(std::string("the scan was ") + howGivenUp() +
                               "; nothing was repaired");
    }
    // Some damage is found only by the scan.
    const std::size_t before = users.size();
    users = wholeUsers(turns, options, computer);
    isWhole = users.size() == before;
  }
}

int fix(const Options& options, Computer& computer, const Streams& streams) {
  UserTurns turns(options, computer, streams);
  scanToRepair(turns, options, computer);
  turns.writeReport();
  tell(turns.unseen(), streams);
  return Repair(options, computer, streams, turns).run();
}

}  // namespace zelvreg::console
