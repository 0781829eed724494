// The file of exclusions in the program's folder: one entry on each line, encoded as
// described in runtime/OwnText.h.
//
// Writing and reading are not symmetric. Lines are written as they are, and read as the runtime's
// input of fields does: a comma ends an entry, blanks before an entry are skipped, an
// entry in quotes ends with its closing quote and loses both.
#ifndef ZELVREG_EXCLUSIONS_EXCLUSION_FILE_H
#define ZELVREG_EXCLUSIONS_EXCLUSION_FILE_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zelvreg {

struct Form42;

// The entries of a file's text. A text of fewer than 10 characters has none, whatever it holds.
std::vector<std::string> exclusionsIn(std::string_view text);

// The entries of the file; none if there is no file, std::nullopt if there is one but it cannot be
// read.
std::optional<std::vector<std::string>> readExclusions(const Form42& form);

// Appends a line for each entry, in one write, and creates the file if there is none. If it cannot
// be written, the file is unchanged and the result is false. Without entries nothing is written.
bool appendExclusions(const Form42& form, const std::vector<std::string>& entries);

// Deletes the file. False if it is still there.
bool deleteExclusions(const Form42& form);

// Replaces the file with these lines. False if it is unchanged.
bool writeExclusions(const Form42& form, const std::vector<std::string>& lines);

}  // namespace zelvreg

#endif
