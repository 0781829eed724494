#include "evidence/Launchers.h"

#include <algorithm>
#include <array>

#include "evidence/CommandText.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

LaunchTarget unclear() { return {TargetIs::Unclear, {}}; }

// Takes the first word of `rest`: the text between quotes, or up to a blank.
std::string takeWord(std::string_view& rest) {
  rest = trim(rest);
  const bool isQuoted = rest.starts_with('"');
  const std::size_t start = isQuoted ? 1 : 0;
  const std::size_t end = std::min(rest.find(isQuoted ? '"' : ' ', start), rest.size());
  std::string word(rest.substr(start, end - start));
  rest.remove_prefix(std::min(end + (isQuoted ? 1 : 0), rest.size()));
  rest = trim(rest);
  return word;
}

// The rest without the switches in front of it.
std::string_view withoutSwitches(std::string_view rest, std::string_view signs = "/-") {
  rest = trim(rest);
  while (!rest.empty() && signs.find(rest.front()) != std::string_view::npos) {
    takeWord(rest);
  }
  return rest;
}

LaunchTarget target(TargetIs kind, std::string_view text) {
  text = trim(text);
  return text.empty() ? unclear() : LaunchTarget{kind, std::string(text)};
}

// --- One for each launcher: what its arguments name. ---

bool hasFolder(std::string_view command) {
  const std::string program = commandParts(command).program;
  return program.find_first_of("\\/:") != std::string::npos;
}

// The first text in quotes is the title of the window. A folder to start in may hold the program.
LaunchTarget ofStart(std::string_view rest) {
  bool hasTitle = false;
  bool startsInFolder = false;
  rest = trim(rest);
  while (rest.starts_with('/') || (rest.starts_with('"') && !hasTitle)) {
    hasTitle = hasTitle || rest.starts_with('"');
    const std::string word = lowerCase(takeWord(rest));
    if (word == "/d") {
      takeWord(rest);
    }
    startsInFolder = startsInFolder || word.starts_with("/d");
  }
  return startsInFolder && !hasFolder(rest) ? unclear() : target(TargetIs::Command, rest);
}

// The command interpreter takes away the quotes around a whole command.
std::string_view withoutOuterQuotes(std::string_view command) {
  command = trim(command);
  const bool isWrapped =
      command.starts_with("\"\"") || (command.starts_with('"') && command.ends_with("\"\""));
  if (isWrapped && command.size() > 2 && command.ends_with('"')) {
    command.remove_prefix(1);
    command.remove_suffix(1);
  }
  return command;
}

// A word without a folder and without the ending of a program may be one of the interpreter's own
// commands.
LaunchTarget ofInterpretedCommand(std::string_view command) {
  constexpr std::array<std::string_view, 6> endings{".exe", ".com", ".bat", ".cmd", ".msc", ".vbs"};
  command = withoutOuterQuotes(command);
  const bool isQuoted = command.starts_with('"');
  if (command.find_first_of(isQuoted ? "&|^" : "&|<>^()@") != std::string_view::npos) {
    return unclear();
  }
  std::string_view rest = command;
  const std::string word = isQuoted ? std::string() : lowerCase(takeWord(rest));
  if (word == "start") {
    return ofStart(rest);
  }
  if (word == "call") {
    return target(TargetIs::Command, rest);
  }
  const std::string program = lowerCase(commandParts(command).program);
  const bool isProgram =
      hasFolder(command) || std::ranges::any_of(endings, [&](std::string_view ending) {
        return program.ends_with(ending);
      });
  return isProgram ? target(TargetIs::Command, command) : unclear();
}

LaunchTarget ofInterpreter(std::string_view rest) {
  rest = trim(rest);
  while (rest.starts_with('/')) {
    const char letter = rest.size() > 1 ? static_cast<char>(rest[1] | 0x20) : ' ';
    if (letter == 'c' || letter == 'k' || letter == 'r') {
      return ofInterpretedCommand(rest.substr(2));
    }
    takeWord(rest);
  }
  return unclear();
}

LaunchTarget ofLibraryHost(std::string_view rest) {
  rest = withoutSwitches(rest);
  if (rest.starts_with('"')) {
    return target(TargetIs::Library, takeWord(rest));
  }
  return target(TargetIs::Library, rest.substr(0, rest.find(',')));
}

LaunchTarget ofRegistrar(std::string_view rest) {
  return target(TargetIs::Library, withoutSwitches(rest));
}

// The package follows its switch, with or without a blank.
LaunchTarget ofInstaller(std::string_view rest) {
  constexpr std::array<std::string_view, 9> switches{"i",  "x",      "a",         "p",      "j",
                                                     "jm", "update", "uninstall", "package"};
  if (const std::string_view code = guidIn(rest); !code.empty()) {
    return {TargetIs::Product, std::string(code)};
  }
  while (!trim(rest).empty()) {
    const std::string word = takeWord(rest);
    if (!word.starts_with('/') && !word.starts_with('-')) {
      continue;
    }
    const std::string name = lowerCase(std::string_view(word).substr(1));
    const bool isRepair = name.starts_with('f') && name.find(':') == std::string::npos;
    if (isRepair || std::ranges::find(switches, name) != switches.end()) {
      return target(TargetIs::Command, rest);
    }
    if (name.size() > 2 && (name[0] == 'i' || name[0] == 'x') && name[2] == ':') {
      return target(TargetIs::Command, std::string_view(word).substr(2));
    }
  }
  return unclear();
}

LaunchTarget ofScriptHost(std::string_view rest) {
  rest = withoutSwitches(rest);
  return target(TargetIs::Command, rest);
}

// Anything but a path is an item of the shell or an address.
LaunchTarget ofShell(std::string_view rest) {
  rest = trim(rest);
  while (rest.starts_with('/')) {
    const auto comma = rest.find(',');
    rest = comma == std::string_view::npos ? std::string_view() : trim(rest.substr(comma + 1));
  }
  rest = rest.substr(0, rest.find(",/"));
  const bool isItem = contains(rest, "::") || contains(rest, "://") ||
                      findIgnoringCase(rest, "shell:") == 0 || !hasFolder(rest);
  return isItem ? unclear() : target(TargetIs::Command, rest);
}

LaunchTarget ofPowerShell(std::string_view rest) {
  constexpr std::array<std::string_view, 8> valued{
      "-executionpolicy", "-ep",          "-ex", "-exec",
      "-version",         "-windowstyle", "-w",  "-psconsolefile"};
  while (!trim(rest).empty()) {
    const std::string word = takeWord(rest);
    const std::string lower = lowerCase(word);
    if (lower == "-file" || lower == "-f") {
      return target(TargetIs::Command, rest);
    }
    if (std::ranges::find(valued, lower) != valued.end()) {
      takeWord(rest);
    } else if (lower.starts_with("-c") || lower.starts_with("-e")) {
      return unclear();
    } else if (!lower.starts_with('-')) {
      return lower.ends_with(".ps1") ? target(TargetIs::Command, word) : unclear();
    }
  }
  return unclear();
}

LaunchTarget ofServiceHost(std::string_view rest) {
  while (!trim(rest).empty()) {
    if (lowerCase(takeWord(rest)) == "-k") {
      return target(TargetIs::ServiceGroup, takeWord(rest));
    }
  }
  return unclear();
}

LaunchTarget ofSurrogate(std::string_view rest) {
  return target(TargetIs::Application, guidIn(rest));
}

LaunchTarget ofVirtualMachine(std::string_view rest) {
  while (!trim(rest).empty()) {
    if (lowerCase(takeWord(rest)) == "-jar") {
      return target(TargetIs::Command, rest);
    }
  }
  return unclear();
}

LaunchTarget ofViewer(std::string_view rest) {
  return contains(rest, "://") || findIgnoringCase(rest, "javascript:") == 0
             ? unclear()
             : target(TargetIs::Command, rest);
}

// A part of the control panel is a file only by its ending.
LaunchTarget ofControlPanel(std::string_view rest) {
  return containsIgnoringCase(rest, ".cpl") ? target(TargetIs::Command, rest) : unclear();
}

struct Launcher {
  std::string_view name;
  LaunchTarget (*targetOf)(std::string_view arguments);
};

constexpr std::array launchers{
    Launcher{"cmd", ofInterpreter},       Launcher{"start", ofStart},
    Launcher{"rundll32", ofLibraryHost},  Launcher{"regsvr32", ofRegistrar},
    Launcher{"msiexec", ofInstaller},     Launcher{"wscript", ofScriptHost},
    Launcher{"cscript", ofScriptHost},    Launcher{"explorer", ofShell},
    Launcher{"powershell", ofPowerShell}, Launcher{"pwsh", ofPowerShell},
    Launcher{"svchost", ofServiceHost},   Launcher{"dllhost", ofSurrogate},
    Launcher{"java", ofVirtualMachine},   Launcher{"javaw", ofVirtualMachine},
    Launcher{"mshta", ofViewer},          Launcher{"hh", ofViewer},
    Launcher{"control", ofControlPanel},  Launcher{"mmc", ofViewer},
};

}  // namespace

std::optional<LaunchTarget> launchTarget(std::string_view program, std::string_view arguments) {
  constexpr std::size_t longestName = 14;  // with ".exe"
  const std::string_view file = fileNameIn(program);
  std::string name = file.size() > longestName ? std::string() : lowerCase(file);
  if (name.ends_with(".exe")) {
    name.resize(name.size() - 4);
  }
  const auto* found = std::ranges::find(launchers, name, &Launcher::name);
  if (found == launchers.end() || trim(arguments).empty()) {
    return std::nullopt;
  }
  return found->targetOf(arguments);
}

}  // namespace zelvreg
