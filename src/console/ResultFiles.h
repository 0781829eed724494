// The files in which results are.
#ifndef ZELVREG_CONSOLE_RESULT_FILES_H
#define ZELVREG_CONSOLE_RESULT_FILES_H

#include <filesystem>
#include <istream>
#include <string>
#include <vector>

#include "fleet/Merging.h"

namespace zelvreg::console {

// What standard input brings, in a file, because it is read twice. Only the user may read it, and
// nothing is left of it.
class SpooledInput {
 public:
  SpooledInput() = default;
  ~SpooledInput();
  SpooledInput(const SpooledInput&) = delete;
  SpooledInput& operator=(const SpooledInput&) = delete;

  // The file. Throws std::runtime_error with one line.
  const std::filesystem::path& take(std::istream& input);

 private:
  std::filesystem::path folder;
  std::filesystem::path file;
};

// The sources that arguments name, each file once: files, the results in folders (*.json, *.jsonl,
// and *.error, which says why there is none), and "-" for `input`. What is not there is among them,
// and cannot be opened. `spooled` outlives them. Throws std::runtime_error with one line.
std::vector<fleet::ResultSource> resultSources(const std::vector<std::string>& arguments,
                                               std::istream& input, SpooledInput& spooled);

}  // namespace zelvreg::console

#endif
