#include "registry/DirectText.h"

#include <array>

#include "registry/RegistryKey.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

LONG query(const RegistryKey& key, const std::string& valueName, DWORD& type, char* data,
           DWORD& size) {
  return RegQueryValueExA(key.handle(), valueName.c_str(), nullptr, &type,
                          reinterpret_cast<BYTE*>(data), &size);
}

}  // namespace

LONG readText(HiveHandle hive, const std::string& key, const std::string& valueName, REGSAM view,
              std::string& value, DWORD& type) {
  value.clear();
  type = REG_NONE;
  const RegistryKey open(hive, key, KEY_QUERY_VALUE | view);
  if (!open.isOpen()) {
    return open.openStatus();
  }
  std::array<char, 1024> buffer{};
  auto size = static_cast<DWORD>(buffer.size());
  std::string longText;
  const char* data = buffer.data();
  LONG status = query(open, valueName, type, buffer.data(), size);
  if (status == ERROR_MORE_DATA) {
    longText.resize(size);
    status = query(open, valueName, type, longText.data(), size);
    data = longText.data();
  }
  if (status == ERROR_SUCCESS && (type == REG_SZ || type == REG_EXPAND_SZ)) {
    value = untilNul({data, size});
  }
  return status;
}

LONG readExpandedText(HiveHandle hive, const std::string& key, const std::string& valueName,
                      REGSAM view, std::string& value) {
  std::string text;
  DWORD type = REG_NONE;
  const LONG status = readText(hive, key, valueName, view, text, type);
  if (status == ERROR_SUCCESS) {
    value.resize(ExpandEnvironmentStringsA(text.c_str(), nullptr, 0));
    ExpandEnvironmentStringsA(text.c_str(), value.data(), static_cast<DWORD>(value.size()));
    value.resize(std::min(value.find('\0'), value.size()));
  }
  return status;
}

}  // namespace zelvreg
