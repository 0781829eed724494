// Results of made-up computers, as scans print them.
#ifndef ZELVREG_TESTS_FLEET_MADE_RESULT_H
#define ZELVREG_TESTS_FLEET_MADE_RESULT_H

#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "fleet/Merging.h"
#include "json/JsonText.h"

namespace zelvreg::fleet {

using Json = nlohmann::ordered_json;

inline Json madeFinding(const std::string& badValue, const std::string& category = "dll",
                        const std::string& confidence = "sure") {
  return {{"location", "l"},
          {"badValue", badValue},
          {"kindCode", "2"},
          {"rootName", "HKEY_X"},
          {"subKey", "Key"},
          {"iconKey", "a"},
          {"checked", true},
          {"category", category},
          {"confidence", confidence},
          {"reasons", {"absent"}},
          {"tested", {badValue}},
          {"user", ""},
          {"sid", ""}};
}

// All that a scan tells beside its findings.
inline Json madeHead(const std::string& name, std::size_t findings) {
  return {{"schema", 1},
          {"program", {{"name", "zelvreg"}, {"version", "0.9.0"}}},
          {"command", "scan"},
          {"computer",
           {{"name", name},
            {"identity", "identity of " + name},
            {"windows", {{"product", "Windows 10 Pro"}, {"version", "10.0.19045"}}},
            {"bits", 64},
            {"codePage", 1252}}},
          {"started", "2026-11-23T06:53:29Z"},
          {"seconds", 1.5},
          {"complete", true},
          {"users", Json::array()},
          {"warnings", Json::array()},
          {"implausible", Json::array()},
          {"hives", Json::array()},
          {"total", findings}};
}

inline Json madeResult(const std::string& name, const std::vector<Json>& findings) {
  Json result = madeHead(name, findings.size());
  result["findings"] = findings;
  return result;
}

// The same as a stream.
inline std::string madeLines(const std::string& name, const std::vector<Json>& findings) {
  Json head = madeHead(name, findings.size());
  head["stream"] = true;
  std::string text = lineOfJson(head);
  for (const Json& finding : findings) {
    text += lineOfJson(finding);
  }
  return text;
}

inline ResultSource madeSource(const std::string& file, const std::string& text) {
  const bool isNote = file.ends_with(".error");
  return {.path = "folder/" + file, .file = file, .isFailureNote = isNote, .open = [text] {
            return std::make_unique<std::istringstream>(text);
          }};
}

// What mergeResults tells.
struct Told {
  std::vector<std::string> bad;
  std::vector<std::string> superseded;

  [[nodiscard]] MergeListener listener() {
    return {.onBadSource = [this](const std::string& line) { bad.push_back(line); },
            .onSuperseded = [this](const std::string& line) { superseded.push_back(line); }};
  }
};

}  // namespace zelvreg::fleet

#endif
