#include "console/Completions.h"

#include <algorithm>

#include "console/CompletionScripts.h"
#include "console/CompletionTable.h"
#include "text/Text.h"

namespace zelvreg::console {
namespace {

using Commands = std::vector<CompletedCommand>;

std::string joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) {
    text += (text.empty() ? "" : " ") + word;
  }
  return text;
}

const char* nameOf(Offered kind) {
  switch (kind) {
    case Offered::Words:
      return "words";
    case Offered::List:
      return "list";
    case Offered::Files:
      return "files";
    case Offered::Folders:
      return "folders";
    case Offered::Drive:
      return "drive";
    default:
      return "nothing";
  }
}

// A text that a shell takes as it is.
std::string quoted(const std::string& text, const char* quoteInside) {
  return "'" + replaceAll(text, "'", quoteInside) + "'";
}
constexpr const char* posixQuote = "'\\''";
constexpr const char* fishQuote = "\\'";

// "'kind word word'", of an option or a command's argument.
std::string offerText(const Offer& offer) {
  return "'" + joined({nameOf(offer.kind), joined(offer.words)}) + "'";
}

// The case that tells the kind of value that options, by their names, and commands, by their paths,
// take. Options of the same name take the same.
std::string offerCases(const Commands& commands, const std::string& before,
                       const std::string& after) {
  std::string text;
  std::vector<std::string> told;
  for (const CompletedCommand& command : commands) {
    for (const CompletedOption& option : command.options) {
      const std::string& name = option.names.back();
      if (option.takesValue && std::ranges::find(told, name) == told.end()) {
        told.push_back(name);
        text += "    " + name + ") " + before + offerText(option.value) + after + " ;;\n";
      }
    }
    if (command.argument.kind != Offered::Nothing) {
      text +=
          "    '" + command.path + "') " + before + offerText(command.argument) + after + " ;;\n";
    }
  }
  return text;
}

enum class Following { Commands, Options };

// What can follow a command: the commands below it, or its own options.
std::vector<CompletedWord> following(const CompletedCommand& command, Following kind) {
  if (kind == Following::Commands) {
    return command.commands;
  }
  std::vector<CompletedWord> words;
  for (const CompletedOption& option : command.options) {
    for (const std::string& name : option.names) {
      words.push_back({name, option.meaning});
    }
  }
  return words;
}

// The cases that tell it. bash takes the words as one text, zsh each with its meaning.
template <typename Told>
std::string followingCases(const Commands& commands, Following kind, const Told& told) {
  std::string text;
  for (const CompletedCommand& command : commands) {
    const std::vector<CompletedWord> words = following(command, kind);
    if (!words.empty()) {
      text += "    '" + command.path + "') " + told(words) + " ;;\n";
    }
  }
  return text;
}

std::string bashWords(const std::vector<CompletedWord>& words) {
  std::vector<std::string> bare;
  bare.reserve(words.size());
  for (const CompletedWord& each : words) {
    bare.push_back(each.word);
  }
  return "echo '" + joined(bare) + "'";
}

std::string zshWords(const std::vector<CompletedWord>& words) {
  std::vector<std::string> entries;
  entries.reserve(words.size());
  for (const CompletedWord& each : words) {
    entries.push_back(quoted(each.word + ":" + each.meaning, posixQuote));
  }
  return "reply=(" + joined(entries) + ")";
}

// What a value is completed with, as words of a "complete" line.
std::string fishValue(const Offer& offer) {
  switch (offer.kind) {
    case Offered::Words:
      return "-x -a '" + joined(offer.words) + "'";
    case Offered::List:
      return "-x -a '(__zelvreg_list " + joined(offer.words) + ")'";
    case Offered::Files:
      return "-r -F";
    case Offered::Folders:
      return "-x -a '(__fish_complete_directories)'";
    case Offered::Drive:
      return "-x -a '(__zelvreg_drive)'";
    default:
      return "-x";
  }
}

std::string fishLine(const std::string& program, const std::string& rest) {
  return "complete -c " + program + " " + rest + "\n";
}

std::string fishCondition(const std::string& path) {
  return "-n \"__zelvreg_is_at '" + path + "'\"";
}

std::string fishOption(const CompletedOption& option) {
  std::string text;
  for (const std::string& name : option.names) {
    text += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
  }
  text += option.takesValue ? " " + fishValue(option.value) : "";
  return text + " -d " + quoted(option.meaning, fishQuote);
}

std::string fishLines(const Commands& commands, const std::string& program) {
  std::string text;
  for (const CompletedCommand& command : commands) {
    // The program's own options may follow each command.
    const std::string at = fishCondition(command.path);
    for (const CompletedOption& option : command.options) {
      text += fishLine(program, (command.path.empty() ? "" : at) + fishOption(option));
    }
    for (const CompletedWord& below : command.commands) {
      text +=
          fishLine(program, at + " -a " + below.word + " -d " + quoted(below.meaning, fishQuote));
    }
    if (command.argument.kind != Offered::Nothing) {
      text += fishLine(program, at + " " + fishValue(command.argument));
    }
  }
  return text;
}

std::string fishPaths(const Commands& commands) {
  std::string text;
  for (const CompletedCommand& command : commands) {
    text += command.path.empty() ? "" : " '" + command.path + "'";
  }
  return text;
}

std::string fishTakers(const Commands& commands) {
  std::vector<std::string> names;
  for (const CompletedCommand& command : commands) {
    for (const CompletedOption& option : command.options) {
      if (option.takesValue && std::ranges::find(names, option.names.back()) == names.end()) {
        names.push_back(option.names.back());
      }
    }
  }
  return joined(names);
}

std::string filled(std::string script,
                   const std::vector<std::pair<const char*, std::string>>& values) {
  for (const auto& [name, value] : values) {
    script = replaceAll(script, name, value);
  }
  return script;
}

}  // namespace

std::vector<std::string> completedShells() { return {"bash", "zsh", "fish"}; }

std::string completionScript(const CLI::App& app, const std::string& shell) {
  const Commands commands = completionTable(app);
  const std::string& program = app.get_name();
  if (shell == "bash") {
    return filled(completionScripts::bash,
                  {{"@PROGRAM@", program},
                   {"@COMMANDS@", followingCases(commands, Following::Commands, bashWords)},
                   {"@OPTIONS@", followingCases(commands, Following::Options, bashWords)},
                   {"@OFFERS@", offerCases(commands, "echo ", "")}});
  }
  if (shell == "zsh") {
    return filled(completionScripts::zsh,
                  {{"@PROGRAM@", program},
                   {"@COMMANDS@", followingCases(commands, Following::Commands, zshWords)},
                   {"@OPTIONS@", followingCases(commands, Following::Options, zshWords)},
                   {"@OFFERS@", offerCases(commands, "reply=(", ")")}});
  }
  return filled(completionScripts::fish, {{"@PROGRAM@", program},
                                          {"@PATHS@", fishPaths(commands)},
                                          {"@TAKERS@", fishTakers(commands)},
                                          {"@LINES@\n", fishLines(commands, program)}});
}

}  // namespace zelvreg::console
