// Reads results of scans and repairs as docs/schema/result-1.json describes them, one finding after
// the other.
#ifndef ZELVREG_FLEET_RESULT_READER_H
#define ZELVREG_FLEET_RESULT_READER_H

#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>

#include "fleet/Merged.h"
#include "json/JsonSource.h"

namespace zelvreg::fleet {

// Texts are cut to this many bytes, so that no result can fill the memory.
inline constexpr std::size_t longestText = 2000;

// There are sixteen categories. No result can make up so many that counting them fills the memory.
inline constexpr std::size_t mostCategories = 100;

// The text, or as much of its start as that allows, with an ellipsis behind it.
std::string shortText(std::string text);

struct SeenFinding {
  std::string category = {};
  std::string badValue = {};
  std::string rootName = {};
  std::string subKey = {};
  std::string user = {};
  std::string sid = {};
  std::size_t confidence = 0;  // index into `confidences`
};
using OnFinding = std::function<void(const SeenFinding&)>;

// A user of a computer.
struct SeenUser {
  std::string name = {};
  std::string sid = {};
};
using OnUser = std::function<void(const SeenUser&)>;

struct ResultListener {
  OnFinding onFinding = [](const SeenFinding&) {};
  OnUser onUser = [](const SeenUser&) {};
};

// Why a file is no result, as the end of a line that begins with its name.
class BadResult : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

inline constexpr const char* notAResult =
    "is no result of a scan; give what scan --json printed, whole";
inline constexpr const char* cutShort = "is cut short; copy it again, or scan that computer again";

// Reads the next result of a source, in which another value begins: one object, or an object with
// "stream": true and a line for each finding. Its `file` is left empty. Throws BadResult; what was
// told until then does not count.
ComputerSummary readResult(JsonSource& source, const ResultListener& listener);

}  // namespace zelvreg::fleet

#endif
