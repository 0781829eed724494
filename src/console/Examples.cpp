#include "console/Examples.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "console/Help.h"
#include "console/TargetArguments.h"

namespace zelvreg::console {
namespace {

struct Example {
  const char* command;  // whose help shows it, by the names that lead there; the program's is empty
  const char* call;     // behind the program and the computer
  const char* meaning;
  bool isOnComputer = true;
};

constexpr std::array examples{
    Example{"", "scan", "lists what is dead, and changes nothing"},
    Example{"", "fix --dry-run", "shows what a repair would take"},
    Example{"", "fix", "repairs what is surely or likely dead, after asking"},
    Example{"", "undo restore 1", "takes the first repair of the list back"},
    Example{"", "doctor", "says what this installation can do", false},
    Example{"scan", "scan --only fonts,dlls", "looks at two of the sixteen categories"},
    Example{"scan", "scan --full", "shows long texts whole"},
    Example{"scan", "scan --json >result.json", "keeps the result for fix --from"},
    Example{"fix", "fix --dry-run", "shows what a repair would take, and changes nothing"},
    Example{"fix", "fix --min-confidence sure --yes", "repairs only what is surely dead"},
    Example{"fix", "fix --from result.json", "repairs what a result of scan --json has checked"},
    Example{"detect", "detect", "prints one line; ends with 1 if there is something to repair"},
    Example{"search", "search ':\\'", "lists every dead path"},
    Example{"search", "search Acme --in HKLM --keys --values",
            "lists keys and values whose names contain a text"},
    Example{"merge", "merge results", "shows what the results in a folder say together", false},
    Example{"merge", "merge results --html report.html --csv references.csv",
            "writes a page for a browser, and a table of all references", false},
    Example{"merge", "merge results --anonymous --json -",
            "prints one JSON object, with other names for computers and users", false},
    Example{"images", "images /store --results results", "scans every image in a folder", false},
    Example{"images", "images images.txt --results results --user all",
            "scans those of a list, with the keys of every user", false},
    Example{"undo", "undo list", "lists the repairs that can be undone, with their numbers"},
    Example{"undo", "undo restore 1", "takes the first one back"},
    Example{"undo restore", "undo restore 1", "takes the first repair of undo list back"},
    Example{"undo restore", "undo restore 1 --journal", "does so from its journal"},
    Example{"exclude", "exclude list", "lists what every scan leaves out"},
    Example{"exclude", "exclude add 'HKEY_LOCAL_MACHINE\\SOFTWARE\\Acme'",
            "leaves out all findings below that key"},
    Example{"languages", "languages use german", "makes German the language of the window"},
    Example{"completions", "completions bash >~/.local/share/bash-completion/completions/zelvreg",
            "for bash, with its package of completions", false},
    Example{"completions", "completions zsh >~/.zfunc/_zelvreg",
            "for zsh, where fpath has that folder", false},
    Example{"completions", "completions fish >~/.config/fish/completions/zelvreg.fish", "for fish",
            false},
    Example{"help", "help undo restore", "the same as undo restore --help", false},
    Example{"w4", "w4", "what a suite calls to list what is dead"},
};

std::string pathOf(const CLI::App& app) {
  const std::string name = fullNameOf(app);
  return name.substr(name.find(' ') == std::string::npos ? name.size() : name.find(' ') + 1);
}

std::string examplesOf(std::string_view command) {
  std::string text;
  for (const Example& example : examples) {
    if (command == example.command) {
      const std::string call = example.isOnComputer
                                   ? TargetArguments::callOf(example.call)
                                   : TargetArguments::program() + (" " + std::string(example.call));
      text += "  " + call + "\n      " + example.meaning + "\n";
    }
  }
  return text.empty() ? "" : "Examples\n" + text;
}

constexpr const char* statuses =
    "\nExit status\n"
    "  0   nothing was found\n"
    "  1   something was found; after fix, something that it should have repaired is there\n"
    "  2   something went wrong; one line on standard error says what, and what to do\n";

}  // namespace

void addFooters(CLI::App& app) {
  std::string footer = examplesOf(pathOf(app));
  footer += footer.empty() ? "" : "\n";
  if (app.get_parent() == nullptr) {
    footer = examplesOf("") + statuses + "\n" + TargetArguments::manual();
  } else {
    footer += std::string("More\n") + TargetArguments::advice() + "  " +
              TargetArguments::program() + " --help lists what every command takes.\n";
  }
  footer.resize(footer.size() - 1);
  app.footer(footer);
  for (CLI::App* command : app.get_subcommands({})) {
    addFooters(*command);
  }
}

std::string shortHelp() {
  const std::string program = TargetArguments::program();
  std::string text = "\n" + program +
                     " finds entries of the Windows registry that name something that is gone.\n\n";
  for (const std::string_view call : {"scan", "fix", "undo list"}) {
    const auto* const example = std::ranges::find(
        examples, call, [](const Example& one) { return std::string_view(one.call); });
    text += "  " + TargetArguments::callOf(example->call) + "\n      " + example->meaning + "\n";
  }
  return text + "\n" + program + " --help lists all commands and options, " + program +
         " COMMAND --help those of one.\n";
}

}  // namespace zelvreg::console
