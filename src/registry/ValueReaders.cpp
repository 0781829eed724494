// The two older readers of RegistryValues.h, which also understand INI files.
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

void listIniSection(const std::string& file, const std::string& section, std::string& pairs,
                    LONG& rc) {
  std::array<char16_t, 8192> buffer;
  const DWORD length = GetPrivateProfileSectionW(
      Wide(section).get(), roomIn(buffer), static_cast<DWORD>(buffer.size()), Wide(file).get());
  pairs = utf8({buffer.data(), length});
  rc = static_cast<LONG>(length);
}

// Appends "name=data" with its NUL for the types that have a text. The answer of the reading.
LONG appendPair(HKEY key, const std::string& name, DWORD type, DWORD size, std::string& pairs) {
  if (type == REG_SZ) {
    ValueData data;
    const LONG status = data.read(key, name);
    if (status == ERROR_SUCCESS) {
      pairs.append(name).append("=").append(utf8(data.units()));
    }
    return status;
  }
  if (type == REG_DWORD || (type == REG_BINARY && size < 3)) {
    Variant number;
    const LONG status = readNumber(key, name, number);
    if (status == ERROR_SUCCESS) {
      pairs.append(name).append("=").append(textOf(number)).push_back('\0');
    }
    return status;
  }
  return ERROR_SUCCESS;
}

// The code of the reading that failed, or success when the walk came to its end or was stopped.
LONG collectPairs(Form42& form, HKEY key, std::string& pairs) {
  for (DWORD index = 0; !isStopAsked(form); ++index) {
    std::array<char16_t, 2048> buffer;
    auto nameSize = static_cast<DWORD>(buffer.size());
    DWORD size = 2048;
    DWORD type = REG_NONE;
    if (RegEnumValueW(key, index, roomIn(buffer), &nameSize, nullptr, &type, nullptr, &size) !=
        ERROR_SUCCESS) {
      closeNameList(pairs);
      return ERROR_SUCCESS;
    }
    const std::string name = utf8({buffer.data(), nameSize});
    if (const LONG status = appendPair(key, name, type, size, pairs); status != ERROR_SUCCESS) {
      return status;
    }
    form.Label3.caption = name;
    form.Label3.refresh();
    if (!trim(name).empty()) {
      form.List1.add(trim(name));
    }
  }
  return ERROR_SUCCESS;
}

}  // namespace

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
  rc = readKind(open.handle(), valueName, upperCase(kind), result);
  if (rc != ERROR_SUCCESS) {
    open.abandon();
    return;
  }
  rc = open.close();
}

void fEnumValue_old(Form42& form, const std::string& hive, const std::string& key,
                    std::string& pairs, LONG& rc) {
  const HiveHandle handle = HiveFromShortName(hive, sharesOf(form));
  if (handle == HiveHandle::Unknown) {
    rc = hiveRefused;
    return;
  }
  if (handle == HiveHandle::hINI) {
    listIniSection(hive, key, pairs, rc);
    return;
  }
  OpenKey open(handle, key, workOn64BitView);
  rc = open.openStatus();
  if (!open.isOpen()) {
    return;
  }
  rc = collectPairs(form, open.handle(), pairs);
  if (rc != ERROR_SUCCESS) {
    open.abandon();
    return;
  }
  rc = open.close();
}

}  // namespace zelvreg
