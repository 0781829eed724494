#include "console/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "console/Completions.h"
#include "console/Examples.h"
#include "console/FixArguments.h"
#include "console/Help.h"
#include "console/ImagesArguments.h"
#include "console/ListArguments.h"
#include "console/MergeArguments.h"
#include "console/NearestName.h"
#include "console/OptionGroups.h"
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
  return message + "; see " + TargetArguments::program() + " --help";
}

// Options of the program may follow the command too. Those that ask for help come last.
void finish(CLI::App& app) {
  app.fallthrough();
  app.set_help_flag("-h,--help", "print this help and exit")->group(helpGroup);
  for (CLI::App* command : app.get_subcommands({})) {
    finish(*command);
  }
}

// The last command of those that were given.
const CLI::App& deepest(const CLI::App& app) {
  const auto chosen = app.get_subcommands();
  return chosen.empty() ? app : deepest(*chosen.front());
}

// The program's options may follow each of its commands.
std::vector<std::string> knownOptions(const CLI::App& command) {
  std::vector<std::string> names;
  for (const CLI::App* app = &command; app != nullptr; app = app->get_parent()) {
    for (const CLI::Option* option : shownOptions(*app)) {
      const auto own = namesOf(*option);
      names.insert(names.end(), own.begin(), own.end());
    }
  }
  return names;
}

std::vector<std::string> knownCommands(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::App* command : shownCommands(app)) {
    names.push_back(command->get_name());
  }
  return names;
}

// The commands that have an option, with commas between.
std::string ownersOf(const CLI::App& app, const std::string& option) {
  std::string names;
  for (const CLI::App* command : shownCommands(app)) {
    const auto own = knownOptions(*command);
    if (std::ranges::find(own, option) != own.end()) {
      names += (names.empty() ? "" : ", ") + command->get_name();
    }
  }
  return names;
}

// How a line ends that has named something that does not exist.
std::string advice(const std::string& nearest, const std::string& command) {
  return (nearest.empty() ? "; see " : "; did you mean " + nearest + "? See ") + command +
         " --help";
}

std::string unknownCommand(const CLI::App& command, const std::string& typed) {
  const bool takesCommands = !shownCommands(command).empty();
  return (takesCommands ? "there is no command \"" + typed + "\""
                        : "\"" + typed + "\" is one argument too many") +
         advice(nearestName(typed, knownCommands(command)), fullNameOf(command));
}

// What is wrong with an argument that nothing takes, and what may have been meant.
std::string unknownArgument(const CLI::App& app, const std::string& typed) {
  const CLI::App& command = deepest(app);
  if (typed.starts_with('-')) {
    const std::string name = typed.substr(0, typed.find('='));
    if (const std::string owners = ownersOf(app, name); !owners.empty()) {
      return name + " is an option of " + owners + "; give it behind that command";
    }
    return "there is no option " + name +
           advice(nearestName(name, knownOptions(command)), fullNameOf(command));
  }
  return unknownCommand(command, typed);
}

// All options and commands, and what becomes of their arguments.
class Parser {
 public:
  explicit Parser(Options& given) : options(given) {
    target.addTo(app, options.target);
    addOwnOptions();
    scanArguments.addTo(*scan, options);
    SafeguardArguments::addTo(
        *scan, {&Safeguards::touches, &Safeguards::asksShares, &Safeguards::asksService}, options);
    fixScanArguments.addTo(*fix, options);
    fixArguments.addTo(*fix, options);
    addDetection();
    searchArguments.addTo(*search, options);
    MergeArguments::addTo(*merge, options.merge);
    imagesArguments.addTo(*images, options);
    lists.addUndo(app, options);
    lists.addExclude(app, options);
    lists.addLanguages(app, options);
    lists.addDoctor(app, options);
    addShellCommands();
    lists.addModes(app);
    scan->group("Look");
    search->group("Look");
    detect->group("Look");
    merge->group("Look");
    images->group(ImagesArguments::group());
    fix->group("Repair");
    finish(app);
    addFooters(app);
    // What follows a command is never another command: a text to look for may be called like one.
    app.require_subcommand(0, 1);
  }

  // The help text or the version if they were asked for. Otherwise the options are complete.
  std::optional<std::string> parse(int count, const char* const* arguments,
                                   const HelpLayout& layout) {
    try {
      app.parse(count, arguments);
    } catch (const CLI::CallForHelp&) {
      return helpText(deepest(app), layout);
    } catch (const CLI::CallForVersion& version) {
      return std::string(version.what()) + "\n";
    } catch (const CLI::ParseError& error) {
      // What nothing takes may be why something else is missing.
      const auto unknown = app.remaining(true);
      throw UsageError(unknown.empty() ? oneLine(error.what())
                                       : unknownArgument(app, unknown.front()));
    }
    if (app.get_subcommands().empty()) {
      throw UsageError("no command is given; try " + TargetArguments::callOf("scan"),
                       paragraphs(shortHelp(), {.width = layout.width}));
    }
    if (help->parsed()) {
      return helpOf(layout);
    }
    if (completions->parsed()) {
      return completionScript(app, shell);
    }
    apply();
    return std::nullopt;
  }

 private:
  void addOwnOptions() {
    app.add_flag("--yes", options.answersYes, "answer every question with Yes")
        ->group("Questions and tables");
    app.add_flag("--full", options.isFull,
                 "cut no text of a table: long ones take several lines, or each row a block")
        ->group("Questions and tables");
    app.add_option("--log", options.logFile,
                   "add a line for each step of the command to this file, with the time")
        ->type_name("FILE")
        ->group(outputGroup);
    app.add_option("--color", color,
                   "whether to print in color; by default on a terminal, unless NO_COLOR is set")
        ->check(CLI::IsMember({"auto", "always", "never"}))
        ->type_name("auto|always|never")
        ->group("Questions and tables");
    app.set_version_flag("--version", std::string("zelvreg ") + programVersion(),
                         "print which version this is and exit")
        ->group(helpGroup);
  }

  void addDetection() {
    detectArguments.addScopeTo(*detect);
    SafeguardArguments::addTo(*detect,
                              {&Safeguards::protects, &Safeguards::touches, &Safeguards::asksShares,
                               &Safeguards::asksService},
                              options);
  }

  void addShellCommands() {
    completions =
        app.add_subcommand("completions", "print a script that completes commands in a shell")
            ->group(installationGroup);
    completions
        ->add_option("SHELL", shell, "the shell that is to complete commands: bash, zsh or fish")
        ->check(CLI::IsMember(completedShells()))
        ->required();
    help = app.add_subcommand("help", "print the help of a command")->group(installationGroup);
    help->add_option("COMMAND", helpFor, "the command, by the names that lead to it");
  }

  [[nodiscard]] std::string helpOf(const HelpLayout& layout) const {
    const CLI::App* command = &app;
    for (const std::string& name : helpFor) {
      const CLI::App* next = commandBelow(*command, name);
      if (next == nullptr) {
        throw UsageError(unknownCommand(*command, name));
      }
      command = next;
    }
    return helpText(*command, layout);
  }

  void apply() {
    if (merge->parsed()) {
      options.command = Command::Merge;
      MergeArguments::check(options.merge);
      return;
    }
    const auto plain = lists.command();
    if (plain && needsNoComputer(*plain)) {
      lists.applyTo(options);
      return;
    }
    SafeguardArguments::applyTo(options);
    if (images->parsed()) {
      target.applyToImages(options.target);
      imagesArguments.applyTo(options);
      return;
    }
    target.applyTo(options.target);
    if (scan->parsed()) {
      options.areRowsNamed = scan->count("--only") > 0;
      scanArguments.applyTo(options, options.areRowsNamed);
    } else if (fix->parsed()) {
      options.command = Command::Fix;
      options.areRowsNamed = fix->count("--only") > 0;
      fixScanArguments.applyTo(options, options.areRowsNamed);
      fixArguments.applyTo(options, fix->count("--max") > 0);
    } else if (detect->parsed()) {
      options.command = Command::Detect;
      options.leastSure = Confidence::Sure;
      options.areRowsNamed = detect->count("--only") > 0;
      detectArguments.applyTo(options, options.areRowsNamed);
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
    if (options.target.everyUser && command != Command::Scan && command != Command::Fix &&
        command != Command::Detect) {
      throw UsageError(
          "--user all goes with scan, fix and detect only; an undo finds its user by itself");
    }
    // What was repaired may be anybody's.
    options.target.everyProfile = options.target.everyProfile || command == Command::ListUndo ||
                                  command == Command::RestoreUndo ||
                                  command == Command::RestoreExport;
  }

  Options& options;
  CLI::App app{"Finds entries of the Windows registry that name something that is gone.",
               TargetArguments::program()};
  TargetArguments target;
  // In the order of the help.
  CLI::App* scan = app.add_subcommand("scan", "find dead references and list them");
  CLI::App* detect =
      app.add_subcommand("detect", "say in one line whether a repair would take something sure");
  CLI::App* fix = app.add_subcommand("fix", "scan and repair what was found");
  CLI::App* search = app.add_subcommand("search", "look for a text in the registry");
  CLI::App* merge = app.add_subcommand("merge", "put the results of many computers together");
  CLI::App* images =
      app.add_subcommand("images", "scan many images, each into a result of its own");
  ScanArguments scanArguments;
  ScanArguments fixScanArguments;
  ScanArguments detectArguments;
  FixArguments fixArguments;
  SearchArguments searchArguments;
  ImagesArguments imagesArguments;
  ListArguments lists;
  CLI::App* completions = nullptr;
  CLI::App* help = nullptr;
  std::string shell;
  std::vector<std::string> helpFor;
  std::string color;  // read before the others, by colorAskedFor
};

}  // namespace

bool needsNoComputer(Command command) {
  return command == Command::CheckLanguage || command == Command::Doctor ||
         command == Command::Merge || command == Command::ScanImages;
}

bool changesComputer(const Options& options) {
  switch (options.command) {
    case Command::Scan:
    case Command::Detect:
    case Command::Search:
    case Command::ListUndo:
    case Command::ListExclusions:
    case Command::ListLanguages:
    case Command::CheckLanguage:
    case Command::Doctor:
    case Command::Merge:
    case Command::ScanImages:
      return false;
    case Command::Fix:
      return !options.isRehearsal;
    default:
      return true;
  }
}

ColorUse colorAskedFor(const std::vector<std::string>& arguments) {
  constexpr std::string_view option = "--color";
  std::string_view asked;
  for (auto argument = arguments.begin(); argument != arguments.end() && *argument != "--";
       ++argument) {
    if (argument->starts_with("--color=")) {
      asked = std::string_view(*argument).substr(option.size() + 1);
    } else if (*argument == option && std::next(argument) != arguments.end()) {
      asked = *std::next(argument);
    }
  }
  return asked == "always" ? ColorUse::Always : asked == "never" ? ColorUse::Never : ColorUse::Auto;
}

ParsedCommandLine parseCommandLine(int count, const char* const* arguments,
                                   const HelpLayout& layout) {
  ParsedCommandLine result;
  result.help = Parser(result.options).parse(count, arguments, layout);
  return result;
}

}  // namespace zelvreg::console
