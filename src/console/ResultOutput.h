// How the commands that scan print their result: in the chosen format, and as a report.
#ifndef ZELVREG_CONSOLE_RESULT_OUTPUT_H
#define ZELVREG_CONSOLE_RESULT_OUTPUT_H

#include "console/CommandLine.h"
#include "console/Commands.h"
#include "console/ScanResult.h"

namespace zelvreg {
struct Form42;
}  // namespace zelvreg

namespace zelvreg::console {

// Whether what is printed or written tells the facts of a result and whose each finding is.
bool tellsFacts(const Options& options);

// Prints what is left on the form, with the outcome of a repair if there was one, and writes the
// page for a browser if one was asked for. Throws std::runtime_error with one line.
void printResult(const ScanResult& result, const Options& options, const Streams& streams,
                 const std::optional<RepairResult>& repair = {});

// The text report on a form, with the evidence if that was asked for.
std::string reportOf(const Form42& form, const Options& options);

// Writes the text report, if one was asked for. Throws std::runtime_error with one line.
void writeReport(const std::string& text, const Options& options);

}  // namespace zelvreg::console

#endif
