#include "console/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cctype>

#include "console/FixArguments.h"
#include "console/SafeguardArguments.h"
#include "console/SearchArguments.h"
#include "console/TimeArguments.h"
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

#ifndef _WIN32
void addDrive(Target& target, const std::string& drive) {
  if (drive.size() < 3 || drive[1] != '=' ||
      std::isalpha(static_cast<unsigned char>(drive[0])) == 0) {
    throw UsageError("\"" + drive +
                     "\" is not a drive; write it as a letter and its folder, D=/mnt/d");
  }
  const char letter = static_cast<char>(std::toupper(static_cast<unsigned char>(drive[0])));
  if (!target.drives.emplace(letter, drive.substr(2)).second) {
    throw UsageError("drive " + std::string(1, letter) + " is given twice; give each drive once");
  }
}

// Options of the program that works on folders and disks.
struct TargetArguments {
  std::vector<std::string> drives;
  std::string missingDrives = "unknown";

  void addTo(CLI::App& app, Target& target) {
    auto* machine = app.add_option("--machine", target.machineFolder,
                                   "folder that stands for a Windows computer");
    auto* offline = app.add_option("--offline", target.offlineRoot,
                                   "mounted Windows disk: the drive of its Windows folder");
    machine->excludes(offline);
    app.add_option("--drive", drives, "another drive of that disk, as D=DIR; may be repeated")
        ->needs(offline);
    app.add_option("--user", target.user,
                   "whose current user it is; else the one whose hive was written last")
        ->needs(offline);
    app.add_option("--missing-drives", missingDrives,
                   "whether files on drives that were not given are \"unknown\" or \"dead\"")
        ->check(CLI::IsMember({"unknown", "dead"}))
        ->needs(offline);
    app.add_flag("--read-only-files", target.filesAreReadOnly,
                 "leave the attributes of the disk's files alone")
        ->needs(offline);
    app.add_option("--keep-backups", target.keptBackups,
                   "how many older backups of each hive to keep beside FILE.bak; 3 by default, "
                   "always with the oldest")
        ->check(CLI::NonNegativeNumber)
        ->needs(offline);
  }

  void applyTo(Target& target) const {
    for (const std::string& drive : drives) {
      addDrive(target, drive);
    }
    target.missingDrivesAreDead = missingDrives == "dead";
    if (target.machineFolder.empty() && target.offlineRoot.empty()) {
      throw UsageError(
          "no computer is named; give --machine DIR (a folder that stands for one) or "
          "--offline ROOT (a mounted Windows disk)");
    }
  }
};
#else
struct TargetArguments {
  void addTo(CLI::App& /*app*/, Target& /*target*/) {}
  void applyTo(Target& /*target*/) const {}
};
#endif

struct ScanArguments {
  std::string only;
  bool isJson = false;
  bool isCsv = false;
  TimeArguments time;

  void addTo(CLI::App& scan, Options& options) {
    scan.add_option("--only", only, "categories to scan, separated by commas: " + categoryNames());
    auto* json = scan.add_flag("--json", isJson, "print one JSON object, in UTF-8");
    scan.add_flag("--csv", isCsv, "print the findings as CSV, in UTF-8")->excludes(json);
    scan.add_option("--report", options.reportFile, "write the text report to this file");
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

}  // namespace

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
  Options& options = result.options;
  CLI::App app("Finds entries of the Windows registry that name something that is gone.",
               "zelvreg");
  TargetArguments target;
  target.addTo(app, options.target);
  app.add_flag("--yes", options.answersYes, "answer every question with Yes");

  CLI::App* scan = app.add_subcommand("scan", "find dead references and list them");
  ScanArguments scanArguments;
  scanArguments.addTo(*scan, options);
  SafeguardArguments::addTo(
      *scan, {&Safeguards::touches, &Safeguards::asksShares, &Safeguards::asksService}, options);
  CLI::App* fix = app.add_subcommand("fix", "scan and repair what was found");
  ScanArguments fixScanArguments;
  fixScanArguments.addTo(*fix, options);
  FixArguments fixArguments;
  fixArguments.addTo(*fix, options);
  CLI::App* search = app.add_subcommand("search", "look for a text in the registry");
  SearchArguments searchArguments;
  searchArguments.addTo(*search, options);
  std::vector<PlainCommand> plainCommands;
  for (const auto& group : {addUndo(app, options), addExclude(app, options),
                            addLanguages(app, options), addModes(app)}) {
    plainCommands.insert(plainCommands.end(), group.begin(), group.end());
  }
  // Options of the program may follow the command too.
  letFallThrough(app);

  try {
    app.parse(count, arguments);
  } catch (const CLI::CallForHelp&) {
    const auto chosen = app.get_subcommands();
    result.help = chosen.empty() ? app.help() : chosen.front()->help();
    return result;
  } catch (const CLI::ParseError& error) {
    throw UsageError(oneLine(error.what()));
  }
  if (app.get_subcommands().empty()) {
    throw UsageError("no command is given; try zelvreg --machine DIR scan, and zelvreg --help");
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
    applyPlainCommand(options, plainCommands);
  }
  return result;
}

}  // namespace zelvreg::console
