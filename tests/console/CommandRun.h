// The program from its command line on, on a folder of this system or on the running computer.
#ifndef ZELVREG_TESTS_CONSOLE_COMMAND_RUN_H
#define ZELVREG_TESTS_CONSOLE_COMMAND_RUN_H

#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "console/Commands.h"

namespace zelvreg::console {

class CommandRun {
 public:
  // Its exit status with these arguments, which may name a target. What throws comes out, as it
  // does to `main`.
  int on(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "zelvreg");
    std::vector<const char*> texts;
    for (const std::string& argument : arguments) {
      texts.push_back(argument.c_str());
    }
    out.str("");
    error.str("");
    const auto parsed = parseCommandLine(static_cast<int>(texts.size()), texts.data());
    const auto computer = Computer::open(parsed.options.target);
    const int status = runCommand(parsed.options, *computer, {.out = out, .error = error});
    computer->close();
    return status;
  }
  int on(const char* targetOption, const std::string& folder, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {targetOption, folder});
    return on(std::move(arguments));
  }
  // The same as `main` does it: 2, with its line on `error`, for what throws.
  int ended(const char* targetOption, const std::string& folder,
            std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {targetOption, folder});
    return ended(std::move(arguments));
  }
  int ended(std::vector<std::string> arguments) {
    try {
      return on(std::move(arguments));
    } catch (const std::runtime_error& refusal) {
      error << refusal.what() << "\n";
      return failed;
    }
  }
  int onMachine(const std::string& folder, std::vector<std::string> arguments) {
    return on("--machine", folder, std::move(arguments));
  }

  // What the last run said.
  std::ostringstream out;
  std::ostringstream error;
};

}  // namespace zelvreg::console

#endif
