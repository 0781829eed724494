// What a run has done, step by step, for whoever looks after many computers.
//
// Each step is a line of the log file, in UTF-8: the time in UTC, the number of the process, and
// what was done. Runs add to the file and may do so at the same time. Control characters are
// replaced, so that a name of the registry makes no line of its own.
#ifndef ZELVREG_CONSOLE_RUN_LOG_H
#define ZELVREG_CONSOLE_RUN_LOG_H

#include <chrono>
#include <string>

#include "console/AppendedFile.h"

namespace zelvreg::console {

class RunLog {
 public:
  // Throws std::runtime_error with one line if the file cannot be opened.
  explicit RunLog(const std::string& path) : file(path) {}

  void note(const std::string& step);
  // The last line: the exit status, and how long it took.
  void end(int status);

  // Whether each line could be written.
  [[nodiscard]] bool isWhole() const { return isWritten; }

 private:
  AppendedFile file;
  bool isWritten = true;
  std::chrono::steady_clock::time_point startedAt = std::chrono::steady_clock::now();
};

}  // namespace zelvreg::console

#endif
