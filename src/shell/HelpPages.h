// The pages of the help in their order, as the program asks for them and tools/manual makes them.
// help/en/NAME.md and help/de/NAME.md are the pages.
#ifndef ZELVREG_SHELL_HELP_PAGES_H
#define ZELVREG_SHELL_HELP_PAGES_H

#include <array>
#include <string_view>

namespace zelvreg {

struct HelpPage {
  std::string_view name;
  // By which the program and Windows' viewer ask for the page; the book button asks for 4.
  int context;
  // 1 for a page that stands below the last one with 0.
  int depth;
};

inline constexpr std::array helpPages{
    HelpPage{"start", 4, 0},
    HelpPage{"first-scan", 5, 0},
    HelpPage{"install", 6, 0},
    HelpPage{"window", 10, 0},
    HelpPage{"options", 11, 1},
    HelpPage{"scan", 12, 1},
    HelpPage{"results", 13, 1},
    HelpPage{"repair", 14, 1},
    HelpPage{"undo", 15, 1},
    HelpPage{"exclusions", 16, 1},
    HelpPage{"exclusion", 17, 1},
    HelpPage{"search", 18, 1},
    HelpPage{"messages", 19, 1},
    HelpPage{"language", 20, 1},
    HelpPage{"about", 21, 1},
    HelpPage{"translate", 22, 1},
    HelpPage{"keyboard", 23, 1},
    HelpPage{"appearance", 24, 1},
    HelpPage{"categories", 40, 0},
    HelpPage{"fonts", 41, 1},
    HelpPage{"dlls", 42, 1},
    HelpPage{"app-paths", 43, 1},
    HelpPage{"help-files", 44, 1},
    HelpPage{"icons", 45, 1},
    HelpPage{"file-classes", 46, 1},
    HelpPage{"com-classes", 47, 1},
    HelpPage{"user-classes", 48, 1},
    HelpPage{"global-classes", 49, 1},
    HelpPage{"machine-classes", 50, 1},
    HelpPage{"firewall", 51, 1},
    HelpPage{"file-extensions", 52, 1},
    HelpPage{"uninstall", 53, 1},
    HelpPage{"startup", 54, 1},
    HelpPage{"recent-lists", 55, 1},
    HelpPage{"mui-cache", 56, 1},
    HelpPage{"safety", 60, 0},
    HelpPage{"evidence", 61, 1},
    HelpPage{"safety-export", 62, 1},
    HelpPage{"console", 70, 0},
    HelpPage{"offline", 71, 1},
    HelpPage{"every-user", 72, 1},
    HelpPage{"modes", 73, 1},
    HelpPage{"reports", 74, 1},
    HelpPage{"policies", 75, 1},
    HelpPage{"problems", 80, 0},
};

}  // namespace zelvreg

#endif
