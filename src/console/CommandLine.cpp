#include "console/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "console/FixArguments.h"
#include "console/ListArguments.h"
#include "console/SafeguardArguments.h"
#include "console/ScanArguments.h"
#include "console/SearchArguments.h"
#include "console/TargetArguments.h"
#include "form/Version.h"

namespace zelvreg::console {
namespace {

// The parser's messages end with advice on help, in a second line.
std::string oneLine(std::string message) {
  message.resize(std::min(message.find('\n'), message.size()));
  return message + "; see zelvreg --help";
}

void letFallThrough(CLI::App& app) {
  app.fallthrough();
  for (CLI::App* command : app.get_subcommands({})) {
    letFallThrough(*command);
  }
}

// All options and commands, and what becomes of their arguments.
class Parser {
 public:
  explicit Parser(Options& given) : options(given) {
    app.set_version_flag("--version", std::string("zelvreg ") + programVersion(),
                         "print which version this is and exit");
    target.addTo(app, options.target);
    app.add_flag("--yes", options.answersYes, "answer every question with Yes");
    scanArguments.addTo(*scan, options);
    SafeguardArguments::addTo(
        *scan, {&Safeguards::touches, &Safeguards::asksShares, &Safeguards::asksService}, options);
    fixScanArguments.addTo(*fix, options);
    fixArguments.addTo(*fix, options);
    searchArguments.addTo(*search, options);
    lists.addUndo(app, options);
    lists.addExclude(app, options);
    lists.addLanguages(app, options);
    lists.addModes(app);
    // Options of the program may follow the command too.
    letFallThrough(app);
  }

  // The help text or the version if they were asked for. Otherwise the options are complete.
  std::optional<std::string> parse(int count, const char* const* arguments) {
    try {
      app.parse(count, arguments);
    } catch (const CLI::CallForHelp&) {
      const auto chosen = app.get_subcommands();
      return chosen.empty() ? app.help() : chosen.front()->help();
    } catch (const CLI::CallForVersion& version) {
      return std::string(version.what()) + "\n";
    } catch (const CLI::ParseError& error) {
      throw UsageError(oneLine(error.what()));
    }
    if (app.get_subcommands().empty()) {
      throw UsageError("no command is given; try zelvreg --machine DIR scan, and zelvreg --help");
    }
    apply();
    return std::nullopt;
  }

 private:
  void apply() {
    if (lists.isParsed(Command::CheckLanguage)) {
      lists.applyTo(options);
      return;
    }
    target.applyTo(options.target);
    SafeguardArguments::applyTo(options);
    if (scan->parsed()) {
      scanArguments.applyTo(options, scan->count("--only") > 0);
    } else if (fix->parsed()) {
      options.command = Command::Fix;
      fixScanArguments.applyTo(options, fix->count("--only") > 0);
      fixArguments.applyTo(options, fix->count("--max") > 0);
    } else if (search->parsed()) {
      options.command = Command::Search;
      searchArguments.applyTo(options);
    } else {
      lists.applyTo(options);
    }
    TargetArguments::decideWriting(options);
    requireScanForEveryUser();
  }

  void requireScanForEveryUser() {
    const Command command = options.command;
    if (options.target.everyUser && command != Command::Scan && command != Command::Fix) {
      throw UsageError("--user all goes with scan and fix only; an undo finds its user by itself");
    }
    // What was repaired may be anybody's.
    options.target.everyProfile = options.target.everyProfile || command == Command::ListUndo ||
                                  command == Command::RestoreUndo ||
                                  command == Command::RestoreExport;
  }

  Options& options;
  CLI::App app{"Finds entries of the Windows registry that name something that is gone.",
               "zelvreg"};
  TargetArguments target;
  // In the order of the help.
  CLI::App* scan = app.add_subcommand("scan", "find dead references and list them");
  CLI::App* fix = app.add_subcommand("fix", "scan and repair what was found");
  CLI::App* search = app.add_subcommand("search", "look for a text in the registry");
  ScanArguments scanArguments;
  ScanArguments fixScanArguments;
  FixArguments fixArguments;
  SearchArguments searchArguments;
  ListArguments lists;
};

}  // namespace

bool needsNoComputer(Command command) { return command == Command::CheckLanguage; }

bool changesComputer(const Options& options) {
  switch (options.command) {
    case Command::Scan:
    case Command::Search:
    case Command::ListUndo:
    case Command::ListExclusions:
    case Command::ListLanguages:
    case Command::CheckLanguage:
      return false;
    case Command::Fix:
      return !options.isRehearsal;
    default:
      return true;
  }
}

ParsedCommandLine parseCommandLine(int count, const char* const* arguments) {
  ParsedCommandLine result;
  result.help = Parser(result.options).parse(count, arguments);
  return result;
}

}  // namespace zelvreg::console
