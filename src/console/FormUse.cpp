#include "console/FormUse.h"

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <string>

#include "console/DisplayText.h"
#include "console/Progress.h"
#include "console/ResultFacts.h"
#include "console/Terminal.h"
#include "form/Form42.h"
#include "scan/CategoryTable.h"
#include "scan/OwnPaths.h"
#include "scan/Policies.h"
#include "scan/SafeguardSources.h"
#include "shell/StartUp.h"

namespace zelvreg::console {
namespace {

// What a question tells in paragraphs of its own, the command has said before it asks.
std::string_view ownLineOf(const UserMessage& question) {
  const std::string_view text = question.text;
  return text.substr(0, text.find("\n\n"));
}

// Without a terminal a question is answered No.
Answer answer(const UserMessage& message, const Options& options, const Streams& streams) {
  std::ostream& error = streams.error;
  if (!message.isQuestion) {
    tell({message.text}, streams);
    return Answer::Ok;
  }
  error << "zelvreg: " << printable(ownLineOf(message)) << "\n";
  if (options.answersYes) {
    return Answer::Yes;
  }
  if (!isInputTerminal()) {
    error << "zelvreg: answered No, because there is no terminal; --yes answers Yes\n";
    return Answer::No;
  }
  error << "Yes or No? " << std::flush;
  const std::string line = typedLine();
  return !line.empty() && (line.front() == 'y' || line.front() == 'Y') ? Answer::Yes : Answer::No;
}

// What --only has named, and a policy does not.
void refuseForbiddenRows(const Form42& form, const Options& options) {
  const auto allowed = categoriesByPolicy(form);
  if (!allowed || options.rows.empty()) {
    return;
  }
  const auto forbidden = std::ranges::find_if(
      options.rows, [&allowed](std::size_t row) { return !allowed->contains(row); });
  if (options.areRowsNamed && forbidden != options.rows.end()) {
    throw UsageError(policyRefusal("--only " + std::string(categoryAt(*forbidden).optionName),
                                   "name only what it allows"));
  }
  if (allowed->empty()) {
    throw UsageError(std::string("a policy of this computer (HKLM\\") + policyKey +
                     ") allows no category; its value " + categoriesPolicy +
                     " must name some, such as fonts,dlls");
  }
}

}  // namespace

void prepareForm(Form42& form, const Options& options, const Streams& streams) {
  form.dialogs.show = [&options, &streams](const UserMessage& message) {
    return answer(message, options, streams);
  };
  form.safeguardChoices = options.safeguardChoices;
  form.leastTicked = options.leastSure.value_or(form.leastTicked);
  form.obeysComputer = !options.target.isDisk();
  const std::string contradiction = contradictionOf(form);
  if (!contradiction.empty()) {
    throw UsageError(contradiction);
  }
  refuseForbiddenRows(form, options);
  Form_Load(form);
}

bool isGivenUp(const Options& options) {
  return isStopRequested() ||
         (options.deadline && std::chrono::steady_clock::now() >= *options.deadline);
}

const char* howGivenUp() { return isStopRequested() ? "cancelled" : "ended by --timeout"; }

bool runScanOn(Form42& form, const Options& options, const Streams& streams) {
  for (std::size_t row = 1; row <= form.View1.count(); ++row) {
    // Fewer than a policy allows may be asked for; the scan leaves out what it does not.
    form.View1.setLocked(row, false);
    form.View1.setChecked(row, options.rows.contains(row));
  }
  bool isCancelled = false;
  form.messages.serveHost = [&form, &options, &isCancelled] {
    if (!isCancelled && isGivenUp(options)) {
      isCancelled = true;
      form.cmd_cancel.click();
    }
  };
  std::optional<Progress> progress;
  if (streams.showsProgress && !options.isQuiet) {
    progress.emplace(form, streams.error);
  }
  form.cmd_start.click();
  form.messages.serveHost = nullptr;
  return !isCancelled;
}

void requireExclusions(const Form42& form) {
  if (form.areExclusionsUnread) {
    throw std::runtime_error(unreadExclusions(form) +
                             " cannot be read, so what it excludes is not known; "
                             "see that it can be read, and try again");
  }
}

void tell(const std::vector<std::string>& lines, const Streams& streams) {
  for (const std::string& line : lines) {
    streams.error << "zelvreg: " << printable(line) << "\n";
    streams.told->push_back(line);
    note(streams, "told: " + line);
  }
}

void note(const Streams& streams, const std::string& step) {
  if (streams.log) {
    streams.log->note(step);
  }
}

void noteComputer(const Streams& streams) {
  if (streams.log) {
    const ComputerFacts facts = factsOfComputer();
    streams.log->note("computer " + (facts.name.empty() ? "without a name" : facts.name) + ", " +
                      (facts.product.empty() ? "Windows" : facts.product) +
                      (facts.version.empty() ? "" : " " + facts.version));
  }
}

void saveAndTell(Computer& computer, const Streams& streams) {
  computer.save();
  tell(computer.unsaved(), streams);
}

}  // namespace zelvreg::console
