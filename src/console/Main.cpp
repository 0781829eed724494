#include <algorithm>
#include <cstdio>
#include <exception>
#include <iostream>
#include <vector>

#include "console/Arguments.h"
#include "console/Commands.h"
#include "console/DisplayText.h"
#include "console/LanguageCheckCommand.h"
#include "console/Terminal.h"

namespace {

using namespace zelvreg::console;

int runOnComputer(const Options& options, const Streams& streams) {
  const auto computer = Computer::open(options.target, accessFor(options.command));
  const int status = runCommand(options, *computer, streams);
  computer->close();
  return status;
}

int runProgram(int count, const char* const* arguments) {
  const std::vector<std::string> typed = typedArguments(count, arguments);
  std::vector<const char*> texts(typed.size());
  std::ranges::transform(typed, texts.begin(),
                         [](const std::string& argument) { return argument.c_str(); });
  const ParsedCommandLine parsed = parseCommandLine(static_cast<int>(texts.size()), texts.data());
  if (parsed.help) {
    std::cout << *parsed.help;
    return nothingFound;
  }
  const Streams streams{.out = std::cout,
                        .error = std::cerr,
                        .width = terminalWidth(),
                        .showsProgress = isErrorTerminal()};
  const int status = needsNoComputer(parsed.options.command)
                         ? checkLanguage(parsed.options, streams)
                         : runOnComputer(parsed.options, streams);
  if (!std::cout.flush()) {
    throw std::runtime_error("the output could not be written; check where it goes");
  }
  return status;
}

}  // namespace

int main(int count, char** arguments) {
  // Errors of the command line are printed to it too.
  prepareTerminal();
  try {
    return runProgram(count, arguments);
  } catch (const std::exception& error) {
    // It may contain names of files and computers.
    std::cerr << "zelvreg: " << printable(error.what()) << "\n";
    return failed;
  }
}
