#include "console/ListArguments.h"

#include <algorithm>
#include <array>

#include "console/OptionGroups.h"
#include "console/SafeguardArguments.h"
#include "unicode/Unicode.h"

namespace zelvreg::console {
namespace {

constexpr const char* undoGroup = "Undo and exclusions";
constexpr const char* modesGroup = "Modes that a suite starts";

struct Mode {
  const char* name;
  const char* meaning;
  const char* group = modesGroup;
};

constexpr std::array modes{
    Mode{"w4", "scan all categories, list what was found, and end"},
    Mode{"w4-c4", "the same, and repair all of it"},
    Mode{"r", "scan the categories again that were ticked"},
    Mode{"r-c", "the same, and repair all of it"},
    // Known only so that it can be refused with a reason.
    Mode{"d", "the window without its Start button", ""},
};

void addJournal(CLI::App& command, Options& options) {
  SafeguardArguments::addTo(command, {&Safeguards::undoesByExport}, options);
}

void applyMode(Options& options, const std::string& mode) {
  if (mode == "d") {
    throw UsageError("d works only in the window program; use scan or fix here");
  }
  options.mode = mode;
}

}  // namespace

CLI::App* ListArguments::add(CLI::App& parent, const char* name, const char* description,
                             Command command) {
  CLI::App* app = parent.add_subcommand(name, description)->group("Commands");
  commands.push_back({app, command});
  return app;
}

CLI::App* ListArguments::addForEntry(CLI::App& list, const char* name, const char* description,
                                     Command command, Options& options) {
  CLI::App* app = add(list, name, description, command);
  app->add_option("N", options.entry, "row of the list, from 1")->required();
  return app;
}

void ListArguments::addUndo(CLI::App& app, Options& options) {
  CLI::App* undo =
      app.add_subcommand("undo", "list, restore and remove repairs that can be undone");
  undo->group(undoGroup);
  undo->require_subcommand(1);
  addJournal(*add(*undo, "list", "list the repairs that can be undone", Command::ListUndo),
             options);
  addJournal(*addForEntry(*undo, "restore", "undo a repair", Command::RestoreUndo, options),
             options);
  CLI::App* restoreExport =
      add(*undo, "restore-export", "restore all that a repair took, from its safety export",
          Command::RestoreExport);
  restoreExport->add_option("FILE", options.exportFile, "the .reg file in backup\\registry")
      ->required();
  addForEntry(*undo, "remove", "remove a journal", Command::RemoveUndo, options);
  add(*undo, "on", "write a journal at each repair", Command::UndoOn);
  add(*undo, "off", "write no journals", Command::UndoOff);
}

void ListArguments::addExclude(CLI::App& app, Options& options) {
  CLI::App* exclude = app.add_subcommand("exclude", "list, add and remove exclusions");
  exclude->group(undoGroup);
  exclude->require_subcommand(1);
  add(*exclude, "list", "list the exclusions", Command::ListExclusions);
  CLI::App* addition =
      add(*exclude, "add", "drop findings whose key begins with a text", Command::AddExclusion);
  addition->add_option("KEY", options.exclusion, "the text, with the root's long name")->required();
  addForEntry(*exclude, "remove", "remove an exclusion", Command::RemoveExclusion, options);
}

void ListArguments::addLanguages(CLI::App& app, Options& options) {
  CLI::App* languages =
      app.add_subcommand("languages", "list the languages, choose one, or check a file");
  languages->group(installationGroup);
  CLI::App* use =
      add(*languages, "use", "choose a language for this computer", Command::UseLanguage);
  use->add_option("TAG", options.language, "the language's tag, as the list shows it")->required();
  CLI::App* check = add(*languages, "check", "check a language file", Command::CheckLanguage);
  check->add_option("FILE", options.languageFile, "the file, zelvreg-TAG.lang")->required();
  check
      ->add_option("--charset", options.charset,
                   "the charset of its language; else that of its line in data.lang beside it")
      ->check(CLI::Range(0, 255))
      ->type_name("N")
      ->group(outputGroup);
  check
      ->add_flag_callback(
          "--json", [&options] { options.format = Format::Json; },
          "print one JSON object, in UTF-8")
      ->group(outputGroup);
  check->add_flag("--exit-zero", options.exitsZero, "end with 0 even if problems were found")
      ->group(outputGroup);
  // Behind its subcommands: with one of them, both count as parsed.
  commands.push_back({languages, Command::ListLanguages});
}

// The program's automatic modes, by the one argument that it takes.
void ListArguments::addModes(CLI::App& app) {
  for (const Mode& mode : modes) {
    add(app, mode.name, mode.meaning, Command::Automatic)->group(mode.group);
  }
}

void ListArguments::addDoctor(CLI::App& app, Options& options) {
  CLI::App* doctor = add(app, "doctor", "say what this installation can do", Command::Doctor);
  doctor->group(installationGroup);
  doctor
      ->add_flag_callback(
          "--json", [&options] { options.format = Format::Json; },
          "print one JSON object, in UTF-8")
      ->group(outputGroup);
}

const ListArguments::PlainCommand* ListArguments::chosen() const {
  const auto found = std::ranges::find_if(
      commands, [](const PlainCommand& command) { return command.app->parsed(); });
  return found == commands.end() ? nullptr : &*found;
}

std::optional<Command> ListArguments::command() const {
  const PlainCommand* given = chosen();
  return given == nullptr ? std::nullopt : std::optional(given->command);
}

void ListArguments::applyTo(Options& options) const {
  const PlainCommand& given = *chosen();
  options.command = given.command;
  // Any bytes may come in as an argument.
  options.exclusion = utf8(utf16(options.exclusion));
  if (given.command == Command::Automatic) {
    applyMode(options, given.app->get_name());
  }
}

}  // namespace zelvreg::console
