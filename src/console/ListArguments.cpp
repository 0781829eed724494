#include "console/ListArguments.h"

#include <algorithm>
#include <cstdint>

#include "console/SafeguardArguments.h"
#include "unicode/Unicode.h"

namespace zelvreg::console {
namespace {

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
  CLI::App* app = parent.add_subcommand(name, description);
  commands.push_back({app, command});
  return app;
}

CLI::App* ListArguments::addForEntry(CLI::App& list, const char* name, const char* description,
                                     Command command, Options& options) {
  CLI::App* app = add(list, name, description, command);
  app->add_option("n", options.entry, "row of the list, from 1")->required();
  return app;
}

void ListArguments::addUndo(CLI::App& app, Options& options) {
  CLI::App* undo = app.add_subcommand("undo", "list, restore and remove undo journals");
  undo->require_subcommand(1);
  addJournal(*add(*undo, "list", "list the repairs that can be undone", Command::ListUndo),
             options);
  addJournal(*addForEntry(*undo, "restore", "undo a repair", Command::RestoreUndo, options),
             options);
  CLI::App* restoreExport =
      add(*undo, "restore-export", "restore all that a repair took, from its safety export",
          Command::RestoreExport);
  restoreExport->add_option("file", options.exportFile, "the .reg file in backup\\registry")
      ->required();
  addForEntry(*undo, "remove", "remove a journal", Command::RemoveUndo, options);
  add(*undo, "on", "write a journal at each repair", Command::UndoOn);
  add(*undo, "off", "write no journals", Command::UndoOff);
}

void ListArguments::addExclude(CLI::App& app, Options& options) {
  CLI::App* exclude = app.add_subcommand("exclude", "list, add and remove exclusions");
  exclude->require_subcommand(1);
  add(*exclude, "list", "list the exclusions", Command::ListExclusions);
  CLI::App* addition =
      add(*exclude, "add", "drop findings whose key begins with a text", Command::AddExclusion);
  addition->add_option("key", options.exclusion, "the text, with the root's long name")->required();
  addForEntry(*exclude, "remove", "remove an exclusion", Command::RemoveExclusion, options);
}

void ListArguments::addLanguages(CLI::App& app, Options& options) {
  CLI::App* languages =
      app.add_subcommand("languages", "list the languages, choose one, or check a file");
  CLI::App* use =
      add(*languages, "use", "choose a language for this computer", Command::UseLanguage);
  use->add_option("tag", options.language, "the language's tag, as the list shows it")->required();
  CLI::App* check = add(*languages, "check", "check a language file", Command::CheckLanguage);
  check->add_option("file", options.languageFile, "the file, zelvreg-TAG.lang")->required();
  check
      ->add_option("--charset", options.charset,
                   "the charset of its language; else that of its line in data.lang beside it")
      ->check(CLI::Range(0, 255));
  check->add_flag(
      "--json", [&options](std::int64_t) { options.format = Format::Json; },
      "print one JSON object, in UTF-8");
  check->add_flag("--exit-zero", options.exitsZero, "end with 0 even if problems were found");
  // Behind its subcommands: with one of them, both count as parsed.
  commands.push_back({languages, Command::ListLanguages});
}

// The program's automatic modes, by the one argument that it takes.
void ListArguments::addModes(CLI::App& app) {
  for (const char* mode : {"w4", "w4-c4", "r", "r-c", "d"}) {
    add(app, mode, "", Command::Automatic)->group("");
  }
}

const ListArguments::PlainCommand* ListArguments::chosen() const {
  const auto found = std::ranges::find_if(
      commands, [](const PlainCommand& command) { return command.app->parsed(); });
  return found == commands.end() ? nullptr : &*found;
}

bool ListArguments::isParsed(Command command) const {
  const PlainCommand* given = chosen();
  return given != nullptr && given->command == command;
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
