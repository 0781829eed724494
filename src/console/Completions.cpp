#include "console/Completions.h"

#include <algorithm>
#include <array>

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

std::string bashCases(const Commands& commands, bool wantsOptions) {
  std::string text;
  for (const CompletedCommand& command : commands) {
    std::vector<std::string> words;
    if (wantsOptions) {
      for (const CompletedOption& option : command.options) {
        words.insert(words.end(), option.names.begin(), option.names.end());
      }
    } else {
      for (const CompletedWord& below : command.commands) {
        words.push_back(below.word);
      }
    }
    if (!words.empty()) {
      text += "    '" + command.path + "') echo '" + joined(words) + "' ;;\n";
    }
  }
  return text;
}

constexpr const char* bashScript =
    R"bash(# Completes commands of @PROGRAM@ in bash; made by "@PROGRAM@ completions bash".

# The commands that can follow a command.
_zelvreg_commands() {
  case $1 in
@COMMANDS@  esac
}

# Its own options.
_zelvreg_options() {
  case $1 in
@OPTIONS@  esac
}

# The kind of value that an option or a command takes, and the words that it can be.
_zelvreg_offer() {
  case $1 in
@OFFERS@  esac
}

# _zelvreg_fill KIND WORDS TYPED: names of files are quoted by bash itself.
_zelvreg_fill() {
  case $1 in
    words) mapfile -t COMPREPLY < <(compgen -W "$2" -- "$3") ;;
    list) mapfile -t COMPREPLY < <(compgen -P "${3%"${3##*,}"}" -W "$2" -- "${3##*,}") ;;
    files)
      compopt -o filenames 2>/dev/null
      mapfile -t COMPREPLY < <(compgen -f -- "$3")
      ;;
    folders)
      compopt -o filenames 2>/dev/null
      mapfile -t COMPREPLY < <(compgen -d -- "$3")
      ;;
    drive) [[ $3 != ?=* ]] || _zelvreg_fill folders '' "${3#?=}" ;;
  esac
}

_zelvreg() {
  local words=() word path= option= kind values typed i
  # Bash takes "=" for a word of its own.
  for ((i = 1; i <= COMP_CWORD; i++)); do
    word=${COMP_WORDS[i]}
    if ((${#words[@]})) && [[ $word == = || (${words[-1]} == *= && ${COMP_WORDS[i - 1]} == =) ]]; then
      words[-1]+=$word
    else
      words+=("$word")
    fi
  done
  typed=${words[-1]}
  unset 'words[-1]'
  for word in "${words[@]}"; do
    if [[ $option ]]; then
      option=
    elif [[ $word == --*=* ]]; then
      continue
    elif [[ $word == -* ]]; then
      [[ ! $(_zelvreg_offer "$word") ]] || option=$word
    elif [[ " $(_zelvreg_commands "$path") " == *" $word "* ]]; then
      path+=" $word"
      [[ $path != ' help' ]] || path=
    fi
  done
  COMPREPLY=()
  if [[ ! $option && $typed == --*=* ]]; then
    option=${typed%%=*} typed=${typed#*=}
  fi
  if [[ $option ]]; then
    read -r kind values < <(_zelvreg_offer "$option")
    _zelvreg_fill "$kind" "$values" "$typed"
  elif [[ $typed == -* ]]; then
    _zelvreg_fill words "$(_zelvreg_options "$path") $(_zelvreg_options '')" "$typed"
  else
    read -r kind values < <(_zelvreg_offer "$path")
    if [[ $kind ]]; then
      _zelvreg_fill "$kind" "$values" "$typed"
    else
      _zelvreg_fill words "$(_zelvreg_commands "$path")" "$typed"
    fi
  fi
}

complete -F _zelvreg @PROGRAM@
)bash";

std::string zshEntry(const std::string& word, const std::string& meaning) {
  return " " + quoted(word + ":" + meaning, posixQuote);
}

std::string zshCases(const Commands& commands, bool wantsOptions) {
  std::string text;
  for (const CompletedCommand& command : commands) {
    std::string entries;
    if (wantsOptions) {
      for (const CompletedOption& option : command.options) {
        for (const std::string& name : option.names) {
          entries += zshEntry(name, option.meaning);
        }
      }
    } else {
      for (const CompletedWord& below : command.commands) {
        entries += zshEntry(below.word, below.meaning);
      }
    }
    if (!entries.empty()) {
      text += "    '" + command.path + "') reply=(" + entries.substr(1) + ") ;;\n";
    }
  }
  return text;
}

constexpr const char* zshScript = R"zsh(#compdef @PROGRAM@
# Completes commands of @PROGRAM@ in zsh; made by "@PROGRAM@ completions zsh".

# Each sets reply: the commands that can follow a command, its own options, and the kind of value
# that an option or a command takes, with the words that it can be.
_zelvreg_commands() {
  reply=()
  case $1 in
@COMMANDS@  esac
}

_zelvreg_options() {
  reply=()
  case $1 in
@OPTIONS@  esac
}

_zelvreg_offer() {
  reply=()
  case $1 in
@OFFERS@  esac
}

_zelvreg_fill() {
  local -a offer=(${=1})
  case $offer[1] in
    words) compadd -- ${offer[2,-1]} ;;
    list)
      compset -P '*,'
      compadd -S '' -- ${offer[2,-1]}
      ;;
    files) _files ;;
    folders) _files -/ ;;
    drive) compset -P '?=' && _files -/ ;;
  esac
}

_zelvreg() {
  local word at= option=
  local -a reply own
  for word in ${words[2,CURRENT-1]}; do
    if [[ -n $option ]]; then
      option=
    elif [[ $word == --*=* ]]; then
      continue
    elif [[ $word == -* ]]; then
      _zelvreg_offer $word
      (( ! $#reply )) || option=$word
    else
      _zelvreg_commands "$at"
      if (( ${reply[(I)$word:*]} )); then
        at+=" $word"
        [[ $at != ' help' ]] || at=
      fi
    fi
  done
  if [[ -z $option && $words[CURRENT] == --*=* ]]; then
    option=${words[CURRENT]%%=*}
    compset -P '*='
  fi
  if [[ -n $option ]]; then
    _zelvreg_offer $option
    _zelvreg_fill "$reply"
  elif [[ $words[CURRENT] == -* ]]; then
    _zelvreg_options "$at"
    own=($reply)
    _zelvreg_options ''
    [[ -z $at ]] || reply=($own $reply)
    _describe -o option reply
  else
    _zelvreg_offer "$at"
    if (( $#reply )); then
      _zelvreg_fill "$reply"
    else
      _zelvreg_commands "$at"
      (( ! $#reply )) || _describe command reply
    fi
  fi
}

# As a file of fpath it runs when it is first needed; otherwise it is read once.
if [[ $funcstack[1] == _@PROGRAM@ ]]; then
  _zelvreg "$@"
else
  compdef _zelvreg @PROGRAM@
fi
)zsh";

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

constexpr const char* fishScript =
    R"fish(# Completes commands of @PROGRAM@ in fish; made by "@PROGRAM@ completions fish".

# Whether the command line has come to this command: its names, each with a blank in front.
function __zelvreg_is_at
    set -l paths@PATHS@
    set -l takers @TAKERS@
    set -l words (commandline -opc)
    set -l at ''
    set -l is_value no
    for word in $words[2..-1]
        if test $is_value = yes
            set is_value no
        else if string match -q -- '--*=*' $word
            continue
        else if contains -- $word $takers
            set is_value yes
        else if contains -- "$at $word" $paths
            set at "$at $word"
            test $at = ' help'; and set at ''
        end
    end
    test "$at" = $argv[1]
end

# Words with commas between, behind those that are typed already.
function __zelvreg_list
    set -l typed (string replace -r '^--[^=]*=' '' -- (commandline -ct))
    set -l before (string replace -r '[^,]*$' '' -- "$typed")
    printf '%s\n' "$before"$argv
end

# A letter, "=" and a folder.
function __zelvreg_drive
    set -l typed (string replace -r '^--[^=]*=' '' -- (commandline -ct))
    set -l letter (string match -r '^[A-Za-z]=' -- "$typed"); or return
    printf '%s\n' $letter(__fish_complete_directories (string sub -s 3 -- "$typed") '')
end

complete -c @PROGRAM@ -f
@LINES@)fish";

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
    return filled(bashScript, {{"@PROGRAM@", program},
                               {"@COMMANDS@", bashCases(commands, false)},
                               {"@OPTIONS@", bashCases(commands, true)},
                               {"@OFFERS@", offerCases(commands, "echo ", "")}});
  }
  if (shell == "zsh") {
    return filled(zshScript, {{"@PROGRAM@", program},
                              {"@COMMANDS@", zshCases(commands, false)},
                              {"@OPTIONS@", zshCases(commands, true)},
                              {"@OFFERS@", offerCases(commands, "reply=(", ")")}});
  }
  return filled(fishScript, {{"@PROGRAM@", program},
                             {"@PATHS@", fishPaths(commands)},
                             {"@TAKERS@", fishTakers(commands)},
                             {"@LINES@", fishLines(commands, program)}});
}

}  // namespace zelvreg::console
