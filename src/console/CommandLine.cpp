#include "console/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>

#include "console/FixArguments.h"
#include "console/SafeguardArguments.h"
#include "console/SearchArguments.h"
#include "console/TargetArguments.h"
#include "console/TimeArguments.h"
#include "form/Version.h"
#include "scan/CategoryTable.h"
#include "text/Text.h"
#include "unicode/Unicode.h"

namespace zelvreg::console {
namespace {

std::string categoryNames() {
  std::string names;
  for (const Category& category : categories()) {
    names += (names.empty() ? "" : ", ") + std::string(category.optionName);
  }
  return names;
}

std::set<std::size_t> allRows() {
  std::set<std::size_t> rows;
  for (std::size_t row = 1; row <= categories().size(); ++row) {
    rows.insert(row);
  }
  return rows;
}

std::size_t rowNamed(std::string_view name) {
  const std::string wanted = lowerCase(trim(name));
  for (std::size_t row = 1; row <= categories().size(); ++row) {
    const Category& category = categoryAt(row);
    if (wanted == category.valueName || wanted == category.optionName) {
      return row;
    }
  }
  throw UsageError("\"" + std::string(trim(name)) +
                   "\" is not a category; choose from: " + categoryNames());
}

struct ScanArguments {
  std::string only;
  bool isJson = false;
  bool isCsv = false;
  TimeArguments time;

  void addTo(CLI::App& scan, Options& options) {
    scan.add_option("--only", only, "categories to scan, separated by commas: " + categoryNames());
    auto* json = scan.add_flag("--json", isJson, "print one JSON object, in UTF-8");
    scan.add_flag("--csv", isCsv, "print the findings as CSV, in UTF-8")->excludes(json);
    auto* report =
        scan.add_option("--report", options.reportFile, "write the text report to this file");
    scan.add_flag("--report-evidence", options.reportsEvidence,
                  "with --report: also write how sure each finding is, and why")
        ->needs(report);
    scan.add_flag("--quiet", options.isQuiet, "print nothing but messages");
    scan.add_flag("--exit-zero", options.exitsZero, "end with 0 even if problems were found");
    time.addTo(scan);
  }

  void applyTo(Options& options, bool isOnlyGiven) const {
    time.applyTo(options);
    options.rows = isOnlyGiven ? rowsNamed(only) : allRows();
    if (isJson) {
      options.format = Format::Json;
    } else if (isCsv) {
      options.format = Format::Csv;
    }
  }
};

// A command without options of its own.
struct PlainCommand {
  CLI::App* app;
  Command command;
};

PlainCommand addEntryCommand(CLI::App& list, const char* name, const char* description,
                             Command command, Options& options) {
  CLI::App* app = list.add_subcommand(name, description);
  app->add_option("n", options.entry, "row of the list, from 1")->required();
  return {app, command};
}

PlainCommand meetsUndo(const PlainCommand& plain, Options& options) {
  SafeguardArguments::addTo(*plain.app, {&Safeguards::undoesByExport}, options);
  return plain;
}

std::vector<PlainCommand> addUndo(CLI::App& app, Options& options) {
  CLI::App* undo = app.add_subcommand("undo", "list, restore and remove undo journals");
  undo->require_subcommand(1);
  CLI::App* restoreExport = undo->add_subcommand(
      "restore-export", "restore all that a repair took, from its safety export");
  restoreExport->add_option("file", options.exportFile, "the .reg file in backup\\registry")
      ->required();
  return {
      {restoreExport, Command::RestoreExport},
      meetsUndo(
          {undo->add_subcommand("list", "list the repairs that can be undone"), Command::ListUndo},
          options),
      meetsUndo(addEntryCommand(*undo, "restore", "undo a repair", Command::RestoreUndo, options),
                options),
      addEntryCommand(*undo, "remove", "remove a journal", Command::RemoveUndo, options),
      {undo->add_subcommand("on", "write a journal at each repair"), Command::UndoOn},
      {undo->add_subcommand("off", "write no journals"), Command::UndoOff},
  };
}

std::vector<PlainCommand> addExclude(CLI::App& app, Options& options) {
  CLI::App* exclude = app.add_subcommand("exclude", "list, add and remove exclusions");
  exclude->require_subcommand(1);
  CLI::App* add = exclude->add_subcommand("add", "drop findings whose key begins with a text");
  add->add_option("key", options.exclusion, "the text, with the root's long name")->required();
  return {
      {exclude->add_subcommand("list", "list the exclusions"), Command::ListExclusions},
      {add, Command::AddExclusion},
      addEntryCommand(*exclude, "remove", "remove an exclusion", Command::RemoveExclusion, options),
  };
}

std::vector<PlainCommand> addLanguages(CLI::App& app, Options& options) {
  CLI::App* languages = app.add_subcommand("languages", "list the languages, or choose one");
  CLI::App* use = languages->add_subcommand("use", "choose a language for this computer");
  use->add_option("tag", options.language, "the language's tag, as the list shows it")->required();
  // The subcommand comes first: with it, both count as parsed.
  return {{use, Command::UseLanguage}, {languages, Command::ListLanguages}};
}

// The program's automatic modes, by the one argument that it takes.
std::vector<PlainCommand> addModes(CLI::App& app) {
  std::vector<PlainCommand> modes;
  for (const char* mode : {"w4", "w4-c4", "r", "r-c", "d"}) {
    CLI::App* command = app.add_subcommand(mode, "");
    command->group("");
    modes.push_back({command, Command::Automatic});
  }
  return modes;
}

void applyMode(Options& options, const std::string& mode) {
  if (mode == "d") {
    throw UsageError("d works only in the window program; use scan or fix here");
  }
  options.mode = mode;
}

// The parser's messages end with advice on help, in a second line.
std::string oneLine(std::string message) {
  message.resize(std::min(message.find('\n'), message.size()));
  return message + "; see zelvreg --help";
}

void applyPlainCommand(Options& options, const std::vector<PlainCommand>& commands) {
  const auto chosen = std::ranges::find_if(
      commands, [](const PlainCommand& command) { return command.app->parsed(); });
  options.command = chosen->command;
  // Any bytes may come in as an argument.
  options.exclusion = utf8(utf16(options.exclusion));
  if (chosen->command == Command::Automatic) {
    applyMode(options, chosen->app->get_name());
  }
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
    for (const auto& group : {addUndo(app, options), addExclude(app, options),
                              addLanguages(app, options), addModes(app)}) {
      plainCommands.insert(plainCommands.end(), group.begin(), group.end());
    }
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
      applyPlainCommand(options, plainCommands);
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
  std::vector<PlainCommand> plainCommands;
};

}  // namespace

bool changesComputer(const Options& options) {
  switch (options.command) {
    case Command::Scan:
    case Command::Search:
    case Command::ListUndo:
    case Command::ListExclusions:
    case Command::ListLanguages:
      return false;
    case Command::Fix:
      return !options.isRehearsal;
    default:
      return true;
  }
}

std::set<std::size_t> rowsNamed(const std::string& names) {
  std::set<std::size_t> rows;
  for (const std::string_view name : split(names, ",")) {
    rows.insert(rowNamed(name));
  }
  if (rows.empty()) {
    throw UsageError("--only names no category; choose from: " + categoryNames());
  }
  return rows;
}

ParsedCommandLine parseCommandLine(int count, const char* const* arguments) {
  ParsedCommandLine result;
  result.help = Parser(result.options).parse(count, arguments);
  return result;
}

}  // namespace zelvreg::console
