// The older reader of RegistryValues.h, which also understands INI files.
#include <array>
#include <cstring>

#include "form/Form42.h"
#include "keys/OpenKey.h"
#include "keys/RootHandles.h"
#include "keys/ValueData.h"
#include "registry/Hives.h"
#include "registry/RegistryValues.h"
#include "registry/SubkeyEnumerators.h"
#include "text/Characters.h"
#include "text/Numbers.h"
#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

void readIniValue(const std::string& file, const std::string& section, const std::string& key,
                  const std::string& kind, const Variant& fallback, Variant& result, LONG& rc) {
  if (kind != "S") {
    const int number = leadingInteger(textOf(fallback));
    rc = static_cast<LONG>(
        GetPrivateProfileIntW(Wide(section).get(), Wide(key).get(), number, Wide(file).get()));
    return;
  }
  std::array<char16_t, 256> buffer;
  const DWORD length =
      GetPrivateProfileStringW(Wide(section).get(), Wide(key).get(), Wide(textOf(fallback)).get(),
                               roomIn(buffer), static_cast<DWORD>(buffer.size()), Wide(file).get());
  result = utf8({buffer.data(), length});
  rc = ERROR_SUCCESS;
}

LONG readString(HKEY key, const std::string& valueName, Variant& result) {
  ValueData data;
  const LONG status = data.read(key, valueName);
  // Cutting the last character of an empty text faults, which leaves the result as it was.
  if (status == ERROR_SUCCESS && !data.units().empty()) {
    result = std::string(withoutLast(utf8(data.units()), 1));
  }
  return status;
}

// Reads at most `Size` bytes; a longer value answers that there is more.
template <std::size_t Size>
LONG readBytes(HKEY key, const std::string& valueName, std::array<BYTE, Size>& data) {
  DWORD size = Size;
  DWORD type = REG_NONE;
  return RegQueryValueExW(key, Wide(valueName).get(), nullptr, &type, data.data(), &size);
}

LONG readBoolean(HKEY key, const std::string& valueName, Variant& result) {
  std::array<BYTE, 2> data{};
  const LONG status = readBytes(key, valueName, data);
  if (status == ERROR_SUCCESS) {
    result = data.front() != 0;
  }
  return status;
}

LONG readKind(HKEY key, const std::string& valueName, const std::string& kind, Variant& result) {
  if (kind == "S") {
    return readString(key, valueName, result);
  }
  if (kind == "B") {
    return readBoolean(key, valueName, result);
  }
  if (kind == "D") {
    return readNumber(key, valueName, result);
  }
  return ERROR_SUCCESS;
}

}  // namespace

LONG readNumber(HKEY key, const std::string& valueName, Variant& result) {
  std::array<BYTE, 32> data{};
  const LONG status = readBytes(key, valueName, data);
  if (status == ERROR_SUCCESS) {
    std::int32_t number = 0;
    std::memcpy(&number, data.data(), sizeof(number));
    result = number;
  }
  return status;
}

void fReadValue(const std::string& hive, const std::string& key, const std::string& valueName,
                const std::string& kind, const Variant& fallback, Variant& result, LONG& rc) {
  result = fallback;
  const HiveHandle handle = HiveFromShortName(hive);
  if (handle == HiveHandle::Unknown) {
    rc = hiveRefused;
    return;
  }
  if (handle == HiveHandle::hINI) {
    readIniValue(hive, key, valueName, upperCase(kind), fallback, result, rc);
    return;
  }
  OpenKey open(handle, key, queryOn32BitView);
  rc = open.openStatus();
  if (!open.isOpen()) {
    return;
  }
  rc = readKind(open.keyOf(valueName), valueName, upperCase(kind), result);
  if (rc != ERROR_SUCCESS) {
    open.abandon();
    return;
  }
  rc = open.close();
}

}  // namespace zelvreg
