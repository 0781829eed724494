// The result of a scan, in UTF-8, for all formats of output.
#ifndef ZELVREG_CONSOLE_SCAN_RESULT_H
#define ZELVREG_CONSOLE_SCAN_RESULT_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "console/Computer.h"
#include "console/ResultFacts.h"
#include "console/Table.h"
#include "form/Evidence.h"

namespace zelvreg {
struct Form42;
}  // namespace zelvreg

namespace zelvreg::console {

struct CategoryResult {
  std::size_t row = 0;
  std::string key;
  std::string name;
  bool isChecked = false;
  std::string problems;  // the text of the cell; it may be empty
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
  Evidence evidence;
  std::string category{};  // its key; empty for what a search has found
  // Whose it is, where that is told; empty for what is the computer's.
  std::string user{};
  std::string sid{};
};

struct ScanResult {
  std::vector<CategoryResult> categories;
  std::vector<FindingResult> findings;
  std::vector<std::string> implausible;  // why much of it is, one line each
  std::vector<HiveResult> hives;
  bool tellsUsers = false;  // several users were scanned, so tables of findings say whose they are
  ResultFacts facts{};
};

// With the computer's users, the current one first, findings say whose they are.
std::vector<FindingResult> findingsOf(const Form42& form,
                                      const std::vector<ComputerUser>& users = {});
ScanResult scanResultOf(const Form42& form, const Computer& computer,
                        const std::vector<ComputerUser>& users = {});

// The outcome of a repair, or of its rehearsal.
struct RepairResult {
  bool isRehearsal = false;
  std::size_t repaired = 0;  // rows that left the list, or that would
  // Of a repair that took place.
  std::size_t gone = 0;
  std::size_t leftAlone = 0;
  std::size_t noEffect = 0;
  // Whole paths of what would be taken, for a rehearsal; what was or would be left alone, and why.
  std::vector<std::string> takings;
  std::vector<std::pair<std::string, std::string>> refused;
};

// One JSON object by docs/schema/result-1.json, with what came of a repair where there was one. The
// same as lines: the object without its findings, with "stream": true, then a line for each
// finding.
std::string jsonText(const ScanResult& result, const std::optional<RepairResult>& repair = {});
std::string jsonLines(const ScanResult& result, const std::optional<RepairResult>& repair = {});

// The findings as CSV with a line of headings, with an apostrophe before texts that a spreadsheet
// would run; tables for a reader. `layout` is the place of the tables.
std::string csvText(const ScanResult& result);
std::string tableText(const ScanResult& result, const TableLayout& layout);
// The lines below the table of what a repair has left.
std::string repairText(const RepairResult& repair, std::size_t left);

// The same of a search, without the categories.
std::string searchJsonText(const ScanResult& result);
std::string searchTableText(const ScanResult& result, const TableLayout& layout);

}  // namespace zelvreg::console

#endif
