// What the library tells of the JSON of a result while it reads it.
#ifndef ZELVREG_FLEET_RESULT_EVENTS_H
#define ZELVREG_FLEET_RESULT_EVENTS_H

#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "fleet/ResultReader.h"

namespace zelvreg::fleet {

// Keeps the members of a result that reports tell of, and hands on its findings one by one. The
// names of its calls are those that the library asks for; each says whether to read on.
class ResultEvents {
 public:
  using Json = nlohmann::json;
  enum class Kind : std::uint8_t { Result, Finding };

  // Of one value: a whole result, or one finding of a stream. `onFinding` outlives it.
  ResultEvents(Kind valueKind, const OnFinding& findingListener)
      : kind(valueKind), onFinding(findingListener) {}

  bool null() { return take(nullptr); }
  bool boolean(bool value) { return take(value); }
  bool number_integer(Json::number_integer_t value) { return take(value); }
  bool number_unsigned(Json::number_unsigned_t value) { return take(value); }
  bool number_float(Json::number_float_t value, const std::string&) { return take(value); }
  bool string(std::string& value);
  static bool binary(const Json::binary_t&) { return true; }
  bool start_object(std::size_t);
  bool key(std::string& key);
  bool end_object();
  bool start_array(std::size_t);
  bool end_array();
  bool parse_error(std::size_t, const std::string&, const Json::exception&);

  // The members that are kept. Read their strings with textIn().
  [[nodiscard]] const Json& head() const { return kept; }
  [[nodiscard]] std::uint64_t findings() const { return findingCount; }
  // Why reading was ended, as BadResult tells it; empty if it is because this is no JSON.
  [[nodiscard]] const std::string& reason() const { return wrong; }

 private:
  bool fail(const std::string& why);
  bool take(Json value);
  bool enter(Json container);
  bool leave();
  bool takeField(const std::string& text);
  bool endFinding();
  [[nodiscard]] bool isInFinding() const { return isFinding && depth == findingDepth; }
  // Directly in the list of findings.
  [[nodiscard]] bool isBetweenFindings() const { return isInList && depth == listDepth; }

  static constexpr std::size_t listDepth = 2;

  Kind kind;
  const OnFinding& onFinding;
  Json kept = Json::object();
  std::vector<Json*> building;  // containers in `kept` that are not closed
  std::size_t keptSize = 0;
  std::string name;  // of the next value
  std::size_t depth = 0;
  bool isKept = false;     // in a member that is kept
  bool isInList = false;   // in the list of findings
  bool isFinding = false;  // in one of them
  std::size_t findingDepth = 0;
  unsigned fieldsSeen = 0;
  SeenFinding finding;
  std::uint64_t findingCount = 0;
  std::string wrong;
};

}  // namespace zelvreg::fleet

#endif
