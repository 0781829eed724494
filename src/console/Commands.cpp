#include "console/Commands.h"

#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "console/DisplayText.h"
#include "console/Progress.h"
#include "console/ScanResult.h"
#include "console/Table.h"
#include "console/Terminal.h"
#include "shell/Languages.h"
#include "shell/StartUp.h"

namespace zelvreg::console {
namespace {

// Messages go to the error stream; questions to the terminal, and without one they are answered No.
Answer answer(const UserMessage& message, const Options& options, std::ostream& error) {
  error << "zelvreg: " << printable(registryText(message.text)) << "\n";
  if (!message.isQuestion) {
    return Answer::Ok;
  }
  if (options.answersYes) {
    return Answer::Yes;
  }
  if (!isInputTerminal()) {
    return Answer::No;
  }
  error << "Yes or No? " << std::flush;
  std::string line;
  std::getline(std::cin, line);
  return !line.empty() && (line.front() == 'y' || line.front() == 'Y') ? Answer::Yes : Answer::No;
}

void prepareForm(Form42& form, const Options& options, const Streams& streams) {
  form.dialogs.show = [&options, &streams](const UserMessage& message) {
    return answer(message, options, streams.error);
  };
  Form_Load(form);
}

// Presses Start with the ticks that were asked for, and Cancel if the user interrupts.
bool runScanOn(Form42& form, const Options& options, const Streams& streams) {
  for (std::size_t row = 1; row <= form.View1.count(); ++row) {
    form.View1.setChecked(row, options.rows.contains(row));
  }
  bool isCancelled = false;
  form.messages.serveHost = [&form, &isCancelled] {
    if (isStopRequested() && !isCancelled) {
      isCancelled = true;
      form.cmd_cancel.click();
    }
  };
  std::optional<Progress> progress;
  if (streams.showsProgress && !options.isQuiet) {
    progress.emplace(form, streams.error);
  }
  form.cmd_start.click();
  return !isCancelled;
}

void print(const ScanResult& result, const Options& options, const Streams& streams) {
  if (options.format == Format::Json) {
    streams.out << jsonText(result);
  } else if (options.format == Format::Csv) {
    streams.out << csvText(result);
  } else if (!options.isQuiet) {
    streams.out << tableText(result, streams.width);
  }
}

int scan(const Options& options, const Computer& computer, const Streams& streams) {
  Form42 form;
  prepareForm(form, options, streams);
  const bool isComplete = runScanOn(form, options, streams);
  const ScanResult result = scanResultOf(form);
  print(result, options, streams);
  if (!isComplete) {
    throw std::runtime_error("the scan was cancelled; what was found so far is listed");
  }
  const auto damage = computer.damage();
  for (const std::string& line : damage) {
    streams.error << "zelvreg: " << line << "\n";
  }
  if (!damage.empty()) {
    return failed;
  }
  return result.findings.empty() || options.exitsZero ? nothingFound : problemsFound;
}

int listLanguages(const Options& options, const Streams& streams) {
  Form42 form;
  prepareForm(form, options, streams);
  Table table({{""}, {"Tag"}, {"Language"}});
  for (const auto& entry : form.lbllanguage) {
    const bool isUsed = form.langFileName == "zelvreg-" + entry->tag.get() + ".lang";
    table.addRow({isUsed ? "*" : "", registryText(entry->tag.get()),
                  captionText(entry->caption.get(), entry->font.get().charset)});
  }
  streams.out << table.text(streams.width);
  return nothingFound;
}

int useLanguage(const Options& options, Computer& computer, const Streams& streams) {
  Form42 form;
  prepareForm(form, options, streams);
  std::string known;
  for (std::size_t entry = 0; entry < form.lbllanguage.size(); ++entry) {
    const std::string& tag = form.lbllanguage[entry]->tag;
    if (tag == options.language) {
      lbllanguage_Click(form, entry);
      computer.save();
      return nothingFound;
    }
    known += (known.empty() ? "" : ", ") + tag;
  }
  throw std::runtime_error("\"" + options.language + "\" is no language; choose from: " + known);
}

}  // namespace

int runCommand(const Options& options, Computer& computer, const Streams& streams) {
  switch (options.command) {
    case Command::Scan:
      return scan(options, computer, streams);
    case Command::ListLanguages:
      return listLanguages(options, streams);
    case Command::UseLanguage:
      return useLanguage(options, computer, streams);
  }
  return failed;
}

}  // namespace zelvreg::console
