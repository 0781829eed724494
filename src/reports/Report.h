// The text report of the results.
#ifndef ZELVREG_REPORTS_REPORT_H
#define ZELVREG_REPORTS_REPORT_H

#include <string>

namespace zelvreg {

struct Form42;

// All rows of View2, ticked or not; lines end in CR LF. runtime/OwnText.h describes how
// it is encoded in a file.
std::string reportText(const Form42& form);

// A section about the same rows, to follow the report: how sure each is, why, and what was looked
// for.
std::string evidenceText(const Form42& form);

// Asks for a file name, writes the report there and opens it in the system's viewer. Without rows,
// or without a name, nothing happens.
void saverep(Form42& form);

// Opens a file in the system's viewer; `result` is the system's answer. Nothing calls it.
void StartDoc(const std::string& file, long& result);

}  // namespace zelvreg

#endif
