// The rows of a result of `scan --json` that somebody has reviewed.
#ifndef ZELVREG_CONSOLE_REVIEWED_RESULT_H
#define ZELVREG_CONSOLE_REVIEWED_RESULT_H

#include <string>
#include <string_view>
#include <vector>

#include "console/ScanResult.h"

namespace zelvreg::console {

// Its findings except those whose "checked" is false. If it is no such result, throws
// std::runtime_error with one line that begins with `name`, the file's name.
std::vector<FindingResult> reviewedFindings(std::string_view json, const std::string& name);

// Ticks the rows of the form that are among the findings, each finding once, and unticks all
// others. Returns how many of the findings are no longer there.
std::size_t tickReviewed(Form42& form, const std::vector<FindingResult>& reviewed);

}  // namespace zelvreg::console

#endif
