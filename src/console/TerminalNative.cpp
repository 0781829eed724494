#include <sys/ioctl.h>
#include <unistd.h>

#include <csignal>

#include "console/Terminal.h"

namespace zelvreg::console {
namespace {

volatile std::sig_atomic_t stopRequested = 0;

}  // namespace

bool isInputTerminal() { return isatty(STDIN_FILENO) != 0; }

bool isOutputTerminal() { return isatty(STDOUT_FILENO) != 0; }

bool isErrorTerminal() { return isatty(STDERR_FILENO) != 0; }

std::size_t terminalWidth() {
  winsize size{};
  if (!isOutputTerminal() || ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0) {
    return 0;
  }
  return size.ws_col;
}

void prepareTerminal() {
  struct sigaction action {};
  action.sa_handler = [](int) { stopRequested = 1; };
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  sigaction(SIGINT, &action, nullptr);
}

bool isStopRequested() { return stopRequested != 0; }

}  // namespace zelvreg::console
