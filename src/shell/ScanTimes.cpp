#include "shell/ScanTimes.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "scan/Settings.h"
#include "text/Numbers.h"

namespace zelvreg {
namespace {

constexpr const char* valueName = "scantimes";
constexpr std::string_view unknown = "-";
// Nobody waits longer for a scan, in milliseconds.
constexpr std::int64_t longest = 7LL * 24 * 60 * 60 * 1000;

}  // namespace

ScanTimes readScanTimes() {
  const std::string stored = readSetting(settings::regscan, valueName);
  std::string_view rest = stored;
  ScanTimes times;
  for (auto& time : times) {
    const std::string_view text = rest.substr(0, rest.find(' '));
    rest.remove_prefix(std::min(rest.size(), text.size() + 1));
    if (text == unknown) {
      continue;
    }
    const auto number = decimalNumber(text, 0, longest);
    if (!number) {
      return {};
    }
    time = std::chrono::milliseconds(*number);
  }
  return rest.empty() ? times : ScanTimes();
}

void keepScanTimes(const ScanTimes& times) {
  std::string text;
  for (const auto& time : times) {
    text += text.empty() ? "" : " ";
    text += time ? decimal(time->count()) : std::string(unknown);
  }
  keepSetting(settings::regscan, valueName, text);
}

}  // namespace zelvreg
