#include <sys/ioctl.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <string_view>

#include "console/Terminal.h"

namespace zelvreg::console {
namespace {

volatile std::sig_atomic_t stopRequested = 0;

constexpr int statusOfFailure = 2;

// A mapped file was cut short: its end can no longer be read.
void endAtLostPages(int /*signal*/) {
  constexpr std::string_view line =
      "zelvreg: a file was cut short while it was read, or its disk cannot be read any more; "
      "nothing more was written; check the disk, and run this again\n";
  [[maybe_unused]] const ssize_t ignored = write(STDERR_FILENO, line.data(), line.size());
  _exit(statusOfFailure);
}

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
  action.sa_handler = endAtLostPages;
  sigaction(SIGBUS, &action, nullptr);
  // A file that cannot grow is reported by the call that writes it, like a full disk.
  std::signal(SIGXFSZ, SIG_IGN);
}

bool isStopRequested() { return stopRequested != 0; }

}  // namespace zelvreg::console
