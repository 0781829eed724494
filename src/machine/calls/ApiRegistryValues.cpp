// The calls that read, list, write and delete values. Data go as they are stored.
#include <windows.h>

#include <cstring>
#include <span>

#include "machine/calls/ApiRegistry.h"
#include "machine/calls/ApiSupport.h"
#include "roots/ValueTypes.h"

namespace zelvreg::machine {
namespace {

bool isClosed(const BYTE* data, std::size_t size) {
  return size >= sizeof(char16_t) && data[size - 1] == 0 && data[size - 2] == 0;
}

// Gives a value's type and bytes by the size protocol that all reads share: `dataSize` holds the
// room and gets the size needed. Text is closed by a NUL that does not count, where there is room.
LONG putBytes(const RegistryValue& value, LPDWORD type, LPBYTE data, LPDWORD dataSize) {
  if (type != nullptr) {
    *type = value.type;
  }
  if (dataSize == nullptr) {
    return ERROR_SUCCESS;
  }
  const std::size_t room = *dataSize;
  const std::size_t size = value.dataSize;
  *dataSize = static_cast<DWORD>(size);
  if (data == nullptr) {
    return ERROR_SUCCESS;
  }
  if (size > room) {
    return ERROR_MORE_DATA;
  }
  if (size > 0) {
    std::memcpy(data, value.data, size);
  }
  if (isText(value.type) && !isClosed(data, size) && size + sizeof(char16_t) <= room) {
    std::memset(data + size, 0, sizeof(char16_t));
  }
  return ERROR_SUCCESS;
}

// A terminator right after the data that was not counted is included.
DWORD sizeWithTerminator(DWORD type, const BYTE* data, DWORD size) {
  if (!isText(type) || data == nullptr || size == 0) {
    return size;
  }
  const std::size_t units = size / sizeof(char16_t);
  char16_t last = 0;
  char16_t next = 0;
  if (units > 0) {
    std::memcpy(&last, data + (units - 1) * sizeof last, sizeof last);
  }
  if (last != 0) {
    std::memcpy(&next, data + units * sizeof next, sizeof next);
  }
  return last != 0 && next == 0 ? size + static_cast<DWORD>(sizeof next) : size;
}

}  // namespace
}  // namespace zelvreg::machine

using namespace zelvreg::machine;

LSTATUS RegQueryValueExW(HKEY key, LPCWSTR valueName, LPDWORD reserved, LPDWORD type, LPBYTE data,
                         LPDWORD dataSize) {
  if (reserved != nullptr || (data != nullptr && dataSize == nullptr)) {
    return ERROR_INVALID_PARAMETER;
  }
  const RegistryCall call(ApiCall::RegQueryValue);
  const RegistryValue* value = nullptr;
  const LONG status = findNamedValue(call, key, textOf(valueName), value);
  return status != ERROR_SUCCESS ? status : putBytes(*value, type, data, dataSize);
}

LSTATUS RegEnumValueW(HKEY key, DWORD index, LPWSTR name, LPDWORD nameSize, LPDWORD reserved,
                      LPDWORD type, LPBYTE data, LPDWORD dataSize) {
  const bool hasName = name != nullptr && nameSize != nullptr;
  if (!hasName || reserved != nullptr || (data != nullptr && dataSize == nullptr)) {
    return ERROR_INVALID_PARAMETER;
  }
  const RegistryCall call(ApiCall::RegEnumValue);
  const RegistryValue* value = nullptr;
  LONG status = findValueAt(call, key, index, value);
  if (status == ERROR_SUCCESS) {
    status = putName(value->name(), name, *nameSize);
  }
  return status != ERROR_SUCCESS ? status : putBytes(*value, type, data, dataSize);
}

LSTATUS RegSetValueExW(HKEY key, LPCWSTR valueName, DWORD /*reserved*/, DWORD type,
                       const BYTE* data, DWORD dataSize) {
  const RegistryCall call(ApiCall::RegSetValue);
  RegistryKey* target = nullptr;
  const bool hasData = data != nullptr || dataSize == 0;
  const LONG status = findValueTarget(call, key, textOf(valueName), hasData, target);
  if (status != ERROR_SUCCESS) {
    return status;
  }
  call.registry().setValue(
      *target, textOf(valueName), type,
      {reinterpret_cast<const std::byte*>(data), sizeWithTerminator(type, data, dataSize)});
  return ERROR_SUCCESS;
}

LSTATUS RegDeleteValueW(HKEY key, LPCWSTR valueName) {
  const RegistryCall call(ApiCall::RegDeleteValue);
  return deleteNamedValue(call, key, textOf(valueName));
}
