#include "console/DetectCommand.h"

#include <map>
#include <sstream>

#include "console/DisplayText.h"
#include "console/FixCommand.h"
#include "console/FormUse.h"
#include "console/UserTurns.h"
#include "evidence/KindLooks.h"
#include "evidence/RowEvidence.h"
#include "form/Form42.h"
#include "form/Version.h"
#include "repair/RepairPlan.h"
#include "scan/CategoryTable.h"
#include "text/Characters.h"

namespace zelvreg::console {
namespace {

// What was found, and what of it a repair of the sure rows would take.
struct Detection {
  std::map<std::size_t, std::size_t> taken;  // by category
  std::size_t sure = 0;
  std::size_t likely = 0;
  std::size_t unsure = 0;

  [[nodiscard]] std::size_t takenRows() const {
    std::size_t rows = 0;
    for (const auto& [category, count] : taken) {
      rows += count;
    }
    return rows;
  }
};

void tickSureRows(Form42& form, Detection& found) {
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    const Confidence confidence = evidenceAt(form, row).confidence;
    form.View2.setChecked(row, confidence == Confidence::Sure);
    found.sure += confidence == Confidence::Sure ? 1 : 0;
    found.likely += confidence == Confidence::Likely ? 1 : 0;
    found.unsure += confidence == Confidence::Unsure ? 1 : 0;
  }
}

// Rows that stay whatever a repair does would be found again and again.
void addTaken(Form42& form, Detection& found) {
  const RepairPlan plan(form);
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    const RowPlan* rowPlan = plan.rowPlan(form, row);
    if (rowPlan != nullptr && rowPlan->shouldGo) {
      const KindRule* rule = kindRule(form, row);
      ++found.taken[rule == nullptr ? 0 : rule->category];
    }
  }
}

Detection detectionOf(UserTurns& turns, Computer& computer) {
  Detection found;
  for (const UserTurn& turn : turns.all()) {
    tickSureRows(*turn.form, found);
    if (turns.take(turn, UserWork::Scan)) {
      addTaken(*turn.form, found);
    }
  }
  computer.endActing();
  return found;
}

std::string takenText(const Detection& found) {
  if (found.taken.empty()) {
    return "nothing sure to repair";
  }
  std::string names;
  for (const auto& [category, count] : found.taken) {
    names.append(names.empty() ? "" : ", ")
        .append(category == 0 ? "others" : categoryAt(category).optionName)
        .append(" ")
        .append(std::to_string(count));
  }
  return std::to_string(found.takenRows()) + " sure in " + std::to_string(found.taken.size()) +
         (found.taken.size() == 1 ? " category (" : " categories (") + names + ")";
}

std::string textOf(const Detection& found) {
  std::string text = takenText(found);
  if (const std::size_t left = found.sure - found.takenRows(); left > 0) {
    text += "; " + std::to_string(left) + " sure that a repair leaves alone";
  }
  return text + "; " + std::to_string(found.likely) + " likely, " + std::to_string(found.unsure) +
         " unsure left to review";
}

void printLine(const std::string& text, const Streams& streams) {
  const std::string line = printable(std::string("zelvreg ") + programVersion() + ": " + text);
  streams.out << firstCharacters(line, longestDetection) << "\n";
  note(streams, text);
}

}  // namespace

int detect(const Options& options, const std::function<std::unique_ptr<Computer>()>& open,
           const Streams& streams) {
  std::ostringstream unread;
  try {
    const auto computer = open();
    noteComputer(streams);
    const Streams silent{.out = unread, .error = unread, .log = streams.log};
    UserTurns turns(options, *computer, silent);
    scanToRepair(turns, options, *computer);
    const Detection found = detectionOf(turns, *computer);
    computer->close();
    printLine(
        textOf(found) +
            (turns.isAnybodyLeftOut() ? "; somebody was left out: " + silent.told->front() : ""),
        streams);
    return found.taken.empty() ? nothingFound : problemsFound;
  } catch (const std::exception& failure) {
    printLine(std::string("not known whether there is anything to repair: ") + failure.what(),
              streams);
    return nothingFound;
  }
}

}  // namespace zelvreg::console
