// The calls that read, list, write and delete values by narrow names.
#include <windows.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <string>

#include "machine/ApiRegistry.h"

namespace zelvreg::machine {
namespace {

static_assert(std::endian::native == std::endian::little, "stored text is UTF-16LE");

// The stored text in the code page; an odd last byte is no character.
std::string narrowText(const CodePage& page, std::span<const std::byte> bytes) {
  std::string narrow(bytes.size() / sizeof(char16_t), '\0');
  for (std::size_t index = 0; index < narrow.size(); ++index) {
    char16_t unit = 0;
    std::memcpy(&unit, bytes.data() + index * sizeof unit, sizeof unit);
    if (unit >= 0x80) {
      std::u16string wide(narrow.size(), u'\0');
      std::memcpy(wide.data(), bytes.data(), wide.size() * sizeof unit);
      return page.encode(wide);
    }
    narrow[index] = static_cast<char>(unit);
  }
  return narrow;
}

// Gives a value's type and bytes by the size protocol that all reads share: `dataSize` holds the
// room and gets the size needed. Text is closed by a NUL that does not count, where there is room.
LONG putData(const CodePage& page, const RegistryValue& value, LPDWORD type, LPBYTE data,
             LPDWORD dataSize) {
  if (type != nullptr) {
    *type = value.type;
  }
  if (dataSize == nullptr) {
    return ERROR_SUCCESS;
  }
  std::string narrow;
  const void* bytes = value.data;
  std::size_t size = value.dataSize;
  if (isText(value.type)) {
    narrow = narrowText(page, value.bytes());
    bytes = narrow.data();
    size = narrow.size();
  }
  const std::size_t room = *dataSize;
  *dataSize = static_cast<DWORD>(size);
  if (data == nullptr) {
    return ERROR_SUCCESS;
  }
  if (size > room) {
    return ERROR_MORE_DATA;
  }
  if (size > 0) {
    std::memcpy(data, bytes, size);
  }
  const bool isOpenText = isText(value.type) && (size == 0 || data[size - 1] != 0);
  if (isOpenText && size < room) {
    data[size] = 0;
  }
  return ERROR_SUCCESS;
}

LONG queryValue(HKEY key, LPCSTR valueName, LPDWORD type, LPBYTE data, LPDWORD dataSize) {
  const RegistryCall call(ApiCall::RegQueryValue);
  if (call.status() != ERROR_SUCCESS) {
    return call.status();
  }
  const WideText name(call.codePage(), valueName);
  const RegistryValue* value = nullptr;
  const LONG status = findNamedValue(call, key, name.view(), value);
  return status != ERROR_SUCCESS ? status : putData(call.codePage(), *value, type, data, dataSize);
}

LONG enumerateValue(HKEY key, DWORD index, LPSTR name, LPDWORD nameSize, LPDWORD type, LPBYTE data,
                    LPDWORD dataSize) {
  const RegistryCall call(ApiCall::RegEnumValue);
  const RegistryValue* value = nullptr;
  LONG status = findValueAt(call, key, index, value);
  if (status != ERROR_SUCCESS) {
    return status;
  }
  std::size_t length = 0;
  status = putName(call.codePage(), value->name(), name, *nameSize, length);
  if (status != ERROR_SUCCESS) {
    return status;
  }
  *nameSize = static_cast<DWORD>(length);
  return putData(call.codePage(), *value, type, data, dataSize);
}

LONG setValue(HKEY key, LPCSTR valueName, DWORD type, const BYTE* data, DWORD dataSize) {
  const RegistryCall call(ApiCall::RegSetValue);
  if (call.status() != ERROR_SUCCESS) {
    return call.status();
  }
  const WideText name(call.codePage(), valueName);
  RegistryKey* target = nullptr;
  const bool hasData = data != nullptr || dataSize == 0;
  const LONG status = findValueTarget(call, key, name.view(), hasData, target);
  if (status != ERROR_SUCCESS) {
    return status;
  }
  if (!isText(type)) {
    call.registry().setValue(*target, name.view(), type,
                             {reinterpret_cast<const std::byte*>(data), dataSize});
    return ERROR_SUCCESS;
  }
  // Text that has no terminator is stored without one.
  const std::string_view narrow =
      data == nullptr ? std::string_view()
                      : std::string_view(reinterpret_cast<const char*>(data), dataSize);
  const std::u16string wide = call.codePage().decode(narrow);
  call.registry().setValue(*target, name.view(), type, std::as_bytes(std::span(wide)));
  return ERROR_SUCCESS;
}

LONG deleteValue(HKEY key, LPCSTR valueName) {
  const RegistryCall call(ApiCall::RegDeleteValue);
  if (call.status() != ERROR_SUCCESS) {
    return call.status();
  }
  const WideText name(call.codePage(), valueName);
  return deleteNamedValue(call, key, name.view());
}

}  // namespace
}  // namespace zelvreg::machine

LSTATUS RegQueryValueExA(HKEY key, LPCSTR valueName, LPDWORD reserved, LPDWORD type, LPBYTE data,
                         LPDWORD dataSize) {
  if (reserved != nullptr || (data != nullptr && dataSize == nullptr)) {
    return ERROR_INVALID_PARAMETER;
  }
  return zelvreg::machine::queryValue(key, valueName, type, data, dataSize);
}

LSTATUS RegEnumValueA(HKEY key, DWORD index, LPSTR name, LPDWORD nameSize, LPDWORD reserved,
                      LPDWORD type, LPBYTE data, LPDWORD dataSize) {
  const bool hasName = name != nullptr && nameSize != nullptr;
  if (!hasName || reserved != nullptr || (data != nullptr && dataSize == nullptr)) {
    return ERROR_INVALID_PARAMETER;
  }
  return zelvreg::machine::enumerateValue(key, index, name, nameSize, type, data, dataSize);
}

LSTATUS RegSetValueExA(HKEY key, LPCSTR valueName, DWORD /*reserved*/, DWORD type, const BYTE* data,
                       DWORD dataSize) {
  // A terminator that stands right behind the data and was not counted is taken along.
  if (zelvreg::machine::isText(type) && data != nullptr && dataSize > 0 &&
      data[dataSize - 1] != 0 && data[dataSize] == 0) {
    ++dataSize;
  }
  return zelvreg::machine::setValue(key, valueName, type, data, dataSize);
}

LSTATUS RegDeleteValueA(HKEY key, LPCSTR valueName) {
  return zelvreg::machine::deleteValue(key, valueName);
}
