#include <unistd.h>

#include <csignal>
#include <string_view>

#include "console/ProcessStart.h"

namespace zelvreg::console {
namespace {

constexpr int statusOfFailure = 2;

// A mapped file was cut short: its end can no longer be read.
void endAtLostPages(int /*signal*/) {
  constexpr std::string_view line =
      "zelvreg: a file was cut short while it was read, or its disk cannot be read any more; "
      "nothing more was written; check the disk, and run this again\n";
  [[maybe_unused]] const ssize_t ignored = write(STDERR_FILENO, line.data(), line.size());
  _exit(statusOfFailure);
}

}  // namespace

void beginProcess() {
  struct sigaction action {};
  action.sa_handler = endAtLostPages;
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  sigaction(SIGBUS, &action, nullptr);
  // A file that cannot grow is reported by the call that writes it, like a full disk.
  std::signal(SIGXFSZ, SIG_IGN);
}

}  // namespace zelvreg::console
