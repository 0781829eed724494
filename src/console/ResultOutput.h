// How the commands that scan give their result: in the form that was asked for, and as a report.
#ifndef ZELVREG_CONSOLE_RESULT_OUTPUT_H
#define ZELVREG_CONSOLE_RESULT_OUTPUT_H

#include "console/CommandLine.h"
#include "console/Commands.h"
#include "console/ScanResult.h"

namespace zelvreg {
struct Form42;
}  // namespace zelvreg

namespace zelvreg::console {

// Prints what is left on the form, with what came of a repair where there was one.
void printResult(const ScanResult& result, const Options& options, const Streams& streams,
                 const std::optional<RepairResult>& repair = {});

// The text report, where one was asked for. Throws std::runtime_error with one line.
void writeReport(const Form42& form, const Options& options);

}  // namespace zelvreg::console

#endif
