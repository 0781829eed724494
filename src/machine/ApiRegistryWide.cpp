// The registry calls by wide names. Data go as they are stored.
#include <shlwapi.h>
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <span>

#include "machine/ApiRegistry.h"
#include "machine/ApiSupport.h"

namespace zelvreg::machine {
namespace {

// As putName(), for a name that needs no code page.
LONG putWideName(std::u16string_view name, LPWSTR buffer, DWORD& size) {
  if (name.size() >= size) {
    return ERROR_MORE_DATA;
  }
  std::ranges::copy(name, buffer);
  buffer[name.size()] = u'\0';
  size = static_cast<DWORD>(name.size());
  return ERROR_SUCCESS;
}

bool isClosed(const BYTE* data, std::size_t size) {
  return size >= sizeof(char16_t) && data[size - 1] == 0 && data[size - 2] == 0;
}

// The size protocol of the narrow reads. Text is closed by a NUL that does not count, where there
// is room.
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

// A terminator that stands right behind the data and was not counted is taken along.
DWORD sizeWithTerminator(DWORD type, const BYTE* data, DWORD size) {
  if (!isText(type) || data == nullptr || size == 0) {
    return size;
  }
  const std::size_t units = size / sizeof(char16_t);
  char16_t last = 0;
  char16_t behind = 0;
  if (units > 0) {
    std::memcpy(&last, data + (units - 1) * sizeof last, sizeof last);
  }
  if (last != 0) {
    std::memcpy(&behind, data + units * sizeof behind, sizeof behind);
  }
  return last != 0 && behind == 0 ? size + static_cast<DWORD>(sizeof behind) : size;
}

// In the classes root this is one key of the two: the user's if it is there.
LONG deleteAt(HKEY key, LPCWSTR subKey, REGSAM view, Below below) {
  const RegistryCall call(ApiCall::RegDeleteKey);
  return call.status() != ERROR_SUCCESS
             ? call.status()
             : deletePath(call, {.key = key, .path = textOf(subKey), .access = view}, below);
}

}  // namespace
}  // namespace zelvreg::machine

using namespace zelvreg::machine;

LSTATUS RegOpenKeyExW(HKEY key, LPCWSTR subKey, DWORD options, REGSAM access, PHKEY result) {
  const RegistryCall call(ApiCall::RegOpenKey);
  const LONG status = beginOpen(call, options, result);
  if (status != ERROR_SUCCESS) {
    return status;
  }
  const CallPath path{.key = key,
                      .path = textOf(subKey),
                      .access = access,
                      .usesPrivileges = (options & REG_OPTION_BACKUP_RESTORE) != 0};
  const PathQuestion question{
      .root = key, .viewFlags = access & viewFlags, .options = options, .path = path.path};
  Registry& registry = call.registry();
  if (const auto* known = registry.pathMemo().find(question, registry.generation())) {
    return openFoundKey(call, *known, path, result);
  }
  return openPath(call, path, options, result, &question);
}

LSTATUS RegOpenKeyW(HKEY key, LPCWSTR subKey, PHKEY result) {
  return RegOpenKeyExW(key, subKey, 0, MAXIMUM_ALLOWED, result);
}

LSTATUS RegCreateKeyExW(HKEY key, LPCWSTR subKey, DWORD reserved, LPWSTR /*className*/,
                        DWORD options, REGSAM access, const SECURITY_ATTRIBUTES* security,
                        PHKEY result, LPDWORD disposition) {
  if (reserved != 0 || (options & ~REG_OPTION_BACKUP_RESTORE) != REG_OPTION_NON_VOLATILE) {
    return ERROR_INVALID_PARAMETER;
  }
  const RegistryCall call(ApiCall::RegCreateKey);
  return call.status() != ERROR_SUCCESS
             ? call.status()
             : createPath(call,
                          {.key = key,
                           .path = textOf(subKey),
                           .access = access,
                           .usesPrivileges = (options & REG_OPTION_BACKUP_RESTORE) != 0},
                          security, result, disposition);
}

LSTATUS RegDeleteKeyExW(HKEY key, LPCWSTR subKey, REGSAM view, DWORD reserved) {
  if (subKey == nullptr || reserved != 0) {
    return ERROR_INVALID_PARAMETER;
  }
  return deleteAt(key, subKey, view, Below::Refuses);
}

LSTATUS RegDeleteKeyW(HKEY key, LPCWSTR subKey) { return RegDeleteKeyExW(key, subKey, 0, 0); }

LSTATUS SHDeleteKeyW(HKEY key, LPCWSTR subKey) {
  return deleteAt(key, subKey, 0, Below::GoesAlong);
}

LSTATUS RegEnumKeyW(HKEY key, DWORD index, LPWSTR name, DWORD nameSize) {
  return RegEnumKeyExW(key, index, name, &nameSize, nullptr, nullptr, nullptr, nullptr);
}

LSTATUS RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, LPDWORD nameSize, LPDWORD reserved,
                      LPWSTR /*className*/, LPDWORD /*classSize*/, FILETIME* /*lastWrite*/) {
  if (name == nullptr || nameSize == nullptr || reserved != nullptr) {
    return ERROR_INVALID_PARAMETER;
  }
  const RegistryCall call(ApiCall::RegEnumKey);
  const RegistryKey* subkey = nullptr;
  const LONG status = findSubkey(call, key, index, subkey);
  return status != ERROR_SUCCESS ? status : putWideName(subkey->name(), name, *nameSize);
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
    status = putWideName(value->name(), name, *nameSize);
  }
  return status != ERROR_SUCCESS ? status : putBytes(*value, type, data, dataSize);
}

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
