#include <algorithm>
#include <cstdio>
#include <exception>
#include <iostream>
#include <vector>

#include "console/Arguments.h"
#include "console/Commands.h"
#include "console/DetectCommand.h"
#include "console/DisplayText.h"
#include "console/Doctor.h"
#include "console/FormUse.h"
#include "console/ImagesCommand.h"
#include "console/LanguageCheckCommand.h"
#include "console/MergeCommand.h"
#include "console/ProcessStart.h"
#include "console/Terminal.h"
#include "form/Version.h"
#include "scan/EventLog.h"

namespace {

using namespace zelvreg::console;

// Where no terminal tells, a help is as wide as most of them.
HelpLayout helpLayout(const Paint& paint) {
  const HelpLayout usual{.paint = paint};
  const std::size_t width = terminalWidth();
  return {.width = width > 0 ? width : usual.width, .paint = paint};
}

int runOnComputer(const Options& options, const Streams& streams) {
  if (options.command == Command::Detect) {
    const auto open = [&options] {
      return Computer::open(options.target, accessFor(options.command));
    };
    return detect(options, open, streams);
  }
  const auto computer = Computer::open(options.target, accessFor(options.command));
  noteComputer(streams);
  const int status = runCommand(options, *computer, streams);
  computer->close();
  return status;
}

int runWithoutComputer(const Options& options, const Streams& streams) {
  switch (options.command) {
    case Command::Doctor:
      return runDoctor(doctorProbes(streams), options.format, streams);
    case Command::Merge:
      return merge(options.merge, std::cin, streams);
    case Command::ScanImages:
      return scanImages(options, std::cin, streams);
    default:
      return checkLanguage(options, streams);
  }
}

int run(const Options& options, const Streams& streams) {
  if (needsNoComputer(options.command)) {
    return runWithoutComputer(options, streams);
  }
  try {
    return runOnComputer(options, streams);
  } catch (const std::exception& failure) {
    zelvreg::reportEvent(zelvreg::LoggedEvent::CommandFailed, {failure.what()});
    throw;
  }
}

// The same with its begin and its end in the log, if there is one.
int runNoted(const Options& options, const Streams& streams,
             const std::vector<std::string>& typed) {
  if (!streams.log) {
    return run(options, streams);
  }
  std::string call = std::string("started zelvreg ") + zelvreg::programVersion() + ":";
  for (std::size_t index = 1; index < typed.size(); ++index) {
    call += " " + typed[index];
  }
  streams.log->note(call);
  int status = failed;
  try {
    status = run(options, streams);
  } catch (const std::exception& failure) {
    streams.log->note(std::string("failed: ") + failure.what());
    streams.log->end(failed);
    throw;
  }
  streams.log->end(status);
  if (!streams.log->isWhole()) {
    throw std::runtime_error(options.logFile +
                             " lacks lines that could not be written; check the free disk space");
  }
  return status;
}

int runProgram(const std::vector<std::string>& typed, ColorUse color) {
  std::vector<const char*> texts(typed.size());
  std::ranges::transform(typed, texts.begin(),
                         [](const std::string& argument) { return argument.c_str(); });
  const Paint paint(isOutputColored(color));
  const ParsedCommandLine parsed =
      parseCommandLine(static_cast<int>(texts.size()), texts.data(), helpLayout(paint));
  if (parsed.help) {
    std::cout << *parsed.help;
    return nothingFound;
  }
  const Options& options = parsed.options;
  Streams streams{.out = std::cout,
                  .error = std::cerr,
                  .tables = {.width = terminalWidth(), .isFull = options.isFull, .paint = paint},
                  .showsProgress = isErrorTerminal()};
  if (!options.logFile.empty()) {
    streams.log = std::make_shared<RunLog>(options.logFile);
  }
  const int status = runNoted(options, streams, typed);
  if (!std::cout.flush()) {
    throw std::runtime_error("the output could not be written; check where it goes");
  }
  return status;
}

// The line may contain names of files and computers.
void tellFailure(const char* line, ColorUse color) {
  std::cerr << Paint(isErrorColored(color)).in(Ink::Error, "zelvreg:") << " " << printable(line)
            << "\n";
}

}  // namespace

int main(int count, char** arguments) {
  beginProcess();
  // Errors of the command line are printed to it too.
  prepareTerminal();
  ColorUse color = ColorUse::Auto;
  try {
    const std::vector<std::string> typed = typedArguments(count, arguments);
    color = colorAskedFor(typed);
    return runProgram(typed, color);
  } catch (const UsageError& error) {
    tellFailure(error.what(), color);
    std::cerr << error.below;
    return failed;
  } catch (const std::exception& error) {
    tellFailure(error.what(), color);
    return failed;
  }
}
