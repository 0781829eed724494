// What a scan left on the form, in UTF-8, for all forms of output.
#ifndef ZELVREG_CONSOLE_SCAN_RESULT_H
#define ZELVREG_CONSOLE_SCAN_RESULT_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "form/Form42.h"

namespace zelvreg::console {

struct CategoryResult {
  std::size_t row = 0;
  std::string key;
  std::string name;
  bool isChecked = false;
  std::string problems;  // the cell as it stands; it may be empty
  std::string status;
};

struct FindingResult {
  std::string location;
  std::string badValue;
  std::string kindCode;
  std::string rootName;
  std::string subKey;
  std::string iconKey;
  bool isChecked = false;
};

struct ScanResult {
  std::vector<CategoryResult> categories;
  std::vector<FindingResult> findings;
};

ScanResult scanResultOf(const Form42& form);

// One JSON object, with the number of repaired findings where there was a repair; the findings as
// CSV with a line of headings; tables for a reader. `width` is the number of columns of the
// terminal, or 0 where cells are not to be shortened.
std::string jsonText(const ScanResult& result, std::optional<std::int64_t> repaired = {});
std::string csvText(const ScanResult& result);
std::string tableText(const ScanResult& result, std::size_t width);

// The same of a search, which has no categories.
std::string searchJsonText(const std::vector<FindingResult>& findings);
std::string searchTableText(const std::vector<FindingResult>& findings, std::size_t width);

}  // namespace zelvreg::console

#endif
