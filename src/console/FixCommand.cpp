#include "console/FixCommand.h"

#include <stdexcept>

#include "console/DisplayText.h"
#include "console/FixTicks.h"
#include "console/FormUse.h"
#include "console/ResultOutput.h"
#include "console/Terminal.h"
#include "form/Form42.h"
#include "repair/RepairPlan.h"
#include "runtime/Directory.h"

namespace zelvreg::console {
namespace {

std::vector<std::pair<std::string, std::string>> refusedTexts(const std::set<LeftAlone>& list) {
  std::vector<std::pair<std::string, std::string>> texts;
  texts.reserve(list.size());
  for (const LeftAlone& entry : list) {
    texts.emplace_back(entry.place, entry.reason);
  }
  return texts;
}

void refuseMoreThanAsked(Form42& form, const Options& options) {
  if (!options.mostRows) {
    return;
  }
  const std::size_t going = RepairPlan(form).rowsThatGo();
  if (going > *options.mostRows) {
    throw std::runtime_error(std::to_string(going) + " findings would be repaired, and --max is " +
                             std::to_string(*options.mostRows) +
                             "; nothing was repaired: look at fix --dry-run, then allow more");
  }
}

int rehearse(Form42& form, const Options& options, const Computer& computer,
             const Streams& streams) {
  const RepairPlan plan(form);
  const RepairResult result{.isRehearsal = true,
                            .repaired = plan.rowsThatGo(),
                            .takings = plan.takings(),
                            .refused = refusedTexts(plan.leftAlone())};
  printResult(scanResultOf(form, computer), options, streams, result);
  return plan.rowsThatGo() == 0 || options.exitsZero ? nothingFound : problemsFound;
}

// A timeout ends a repair only before its first change, an interruption at any time.
void pressFix(Form42& form, const Options& options, const Computer& computer) {
  // An offline disk may not have it.
  makeFolder(form.programFolder);
  form.messages.serveHost = [&form, &options, &computer] {
    if (form.repairOutcome.hasBegun ? isStopRequested() : isGivenUp(options)) {
      throw std::runtime_error(interruptionText(form.repairOutcome, computer));
    }
  };
  form.cmd_fix.click();
  form.messages.serveHost = nullptr;
}

// Whether a row that was to be repaired, and can be, is still there.
bool isAnythingLeft(const Form42& form, std::size_t ticked) {
  const RepairOutcome& outcome = form.repairOutcome;
  const bool tookPlace = outcome.gone + outcome.leftAlone + outcome.noEffect > 0;
  return tookPlace ? outcome.failed > 0 : ticked > 0;
}

RepairResult resultOf(const Form42& form, std::size_t repaired) {
  const RepairOutcome& outcome = form.repairOutcome;
  return {.repaired = repaired,
          .gone = outcome.gone,
          .leftAlone = outcome.leftAlone,
          .noEffect = outcome.noEffect,
          .takings = {},
          .refused = refusedTexts(outcome.refused)};
}

void refuseForFirstOf(const std::vector<std::string>& lines) {
  if (!lines.empty()) {
    throw std::runtime_error(lines.front() + "; nothing was repaired");
  }
}

}  // namespace

void refuseUnlessWhole(const Computer& computer) {
  refuseForFirstOf(computer.damage());
  refuseForFirstOf(computer.unclean());
}

std::string interruptionText(const RepairOutcome& outcome, const Computer& computer) {
  if (!outcome.hasBegun) {
    return "the repair was interrupted before its first change; nothing was repaired";
  }
  return computer.keepsAtOnce() ? "the repair was interrupted; what it had done stays done"
                                : "the repair was interrupted; nothing of it was saved";
}

void tellWhatWasLeftAlone(const Form42& form, const Streams& streams) {
  for (const auto& [place, reason] : refusedTexts(form.repairOutcome.refused)) {
    streams.error << "zelvreg: left alone: it would have taken " << printable(place) << ": "
                  << printable(reason) << " (fix --no-protect takes it)\n";
  }
}

int fix(const Options& options, Computer& computer, const Streams& streams) {
  refuseUnlessWhole(computer);
  Form42 form;
  prepareForm(form, options, streams);
  if (!runScanOn(form, options, streams)) {
    throw std::runtime_error(std::string("the scan was ") + howGivenUp() +
                             "; nothing was repaired");
  }
  // Some damage is found only by the scan.
  refuseForFirstOf(computer.damage());
  writeReport(form, options);
  const std::size_t found = form.View2.count();
  const std::size_t ticked = tickForRepair(form, options, streams);
  if (options.isRehearsal) {
    return rehearse(form, options, computer, streams);
  }
  if (ticked > 0) {
    refuseMoreThanAsked(form, options);
    pressFix(form, options, computer);
    if (form.isRepairStopped) {
      return failed;  // the form has said so
    }
    saveAndTell(computer, streams);
    tellWhatWasLeftAlone(form, streams);
  }
  const ScanResult left = scanResultOf(form, computer);
  printResult(left, options, streams, resultOf(form, found - left.findings.size()));
  return isAnythingLeft(form, ticked) && !options.exitsZero ? problemsFound : nothingFound;
}

}  // namespace zelvreg::console
