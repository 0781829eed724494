// The rows of a result that somebody has looked through, as `scan --json` printed it.
#ifndef ZELVREG_CONSOLE_REVIEWED_RESULT_H
#define ZELVREG_CONSOLE_REVIEWED_RESULT_H

#include <string>
#include <string_view>
#include <vector>

#include "console/ScanResult.h"

namespace zelvreg::console {

// Its findings but for those whose "checked" is false. Throws std::runtime_error with one line, in
// which `name` stands for the file, for what is no such result.
std::vector<FindingResult> reviewedFindings(std::string_view json, const std::string& name);

// Ticks the rows of the form that are among the findings, each finding once, and unticks all
// others. How many of the findings are no longer there.
std::size_t tickReviewed(Form42& form, const std::vector<FindingResult>& reviewed);

}  // namespace zelvreg::console

#endif
