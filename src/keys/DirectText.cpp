#include "keys/DirectText.h"

#include <array>

#include "keys/OpenKey.h"
#include "keys/ValueData.h"
#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg {
LONG readText(HiveHandle hive, const std::string& key, const std::string& valueName, REGSAM view,
              std::string& value, DWORD& type) {
  value.clear();
  type = REG_NONE;
  const OpenKey open(hive, key, KEY_QUERY_VALUE | view);
  if (!open.isOpen()) {
    return open.openStatus();
  }
  ValueData data;
  const LONG status = data.read(open.keyOf(valueName), valueName);
  type = data.type();
  if (data.isSingleText()) {
    value = data.text();
  }
  return status;
}

std::string expandedText(const std::string& text) {
  const std::string_view seen = untilNul(text);
  // Most texts name no variable. What is no ASCII is left to the system all the same, since bytes
  // that are no character become one on the way there.
  if (seen.find('%') == std::string_view::npos && asciiLength(seen) == seen.size()) {
    std::string same;
    same.reserve(seen.size() + 1);
    same.append(seen).push_back('\0');
    return same;
  }
  const Wide source(text);
  std::array<char16_t, 512> usual;
  const DWORD size = ExpandEnvironmentStringsW(source.get(), roomIn(usual), usual.size());
  if (size <= usual.size()) {
    return utf8({usual.data(), size});
  }
  std::u16string expanded(size, u'\0');
  expanded.resize(ExpandEnvironmentStringsW(source.get(), roomIn(expanded), size));
  return utf8(expanded);
}

LONG readExpandedText(HiveHandle hive, const std::string& key, const std::string& valueName,
                      REGSAM view, std::string& value) {
  std::string text;
  DWORD type = REG_NONE;
  const LONG status = readText(hive, key, valueName, view, text, type);
  if (status == ERROR_SUCCESS) {
    value = untilNul(expandedText(text));
  }
  return status;
}

}  // namespace zelvreg
