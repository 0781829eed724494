// The rows of a result of `scan --json` that somebody has reviewed.
#ifndef ZELVREG_CONSOLE_REVIEWED_RESULT_H
#define ZELVREG_CONSOLE_REVIEWED_RESULT_H

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "console/ScanResult.h"

namespace zelvreg::console {

// Its findings except those whose "checked" is false. If it is no such result, throws
// std::runtime_error with one line that begins with `name`, the file's name.
std::vector<FindingResult> reviewedFindings(std::string_view json, const std::string& name);

// The rows of the form that are among the findings, each finding once.
struct ReviewedRows {
  std::set<std::size_t> rows;
  std::set<std::size_t> reviewedAsUnsure;  // those that the result called unsure already
};
// `users` are the computer's, the current one first: a finding is meant for its user alone.
ReviewedRows reviewedRows(const Form42& form, const std::vector<FindingResult>& reviewed,
                          const std::vector<ComputerUser>& users = {});

}  // namespace zelvreg::console

#endif
