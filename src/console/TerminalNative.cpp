#include <sys/ioctl.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <iostream>

#include "console/Terminal.h"

namespace zelvreg::console {
namespace {

volatile std::sig_atomic_t stopRequested = 0;

bool isColored(ColorUse asked, bool isTerminal) {
  return asked == ColorUse::Always ||
         (asked == ColorUse::Auto && isTerminal &&
          environmentAllowsColor(std::getenv("NO_COLOR"), std::getenv("TERM")));
}

}  // namespace

bool isInputTerminal() { return isatty(STDIN_FILENO) != 0; }

bool isOutputTerminal() { return isatty(STDOUT_FILENO) != 0; }

bool isErrorTerminal() { return isatty(STDERR_FILENO) != 0; }

bool isOutputColored(ColorUse asked) { return isColored(asked, isOutputTerminal()); }

bool isErrorColored(ColorUse asked) { return isColored(asked, isErrorTerminal()); }

std::size_t terminalWidth() {
  winsize size{};
  if (!isOutputTerminal() || ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0) {
    return 0;
  }
  return size.ws_col;
}

std::string typedLine() {
  std::string line;
  std::getline(std::cin, line);
  return line;
}

void prepareTerminal() {
  struct sigaction action {};
  action.sa_handler = [](int) { stopRequested = 1; };
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  sigaction(SIGINT, &action, nullptr);
}

bool isStopRequested() { return stopRequested != 0; }

}  // namespace zelvreg::console
