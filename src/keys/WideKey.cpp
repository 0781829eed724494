#include "keys/WideKey.h"

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

#include "keys/RootHandles.h"
#include "roots/NameLimits.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

static_assert(sizeof(WCHAR) == sizeof(char16_t), "the system's wide text is UTF-16");

Presence presenceBy(LONG status) {
  switch (status) {
    case ERROR_SUCCESS:
      return Presence::Open;
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_BAD_PATHNAME:
    case ERROR_INVALID_PARAMETER:
    case ERROR_INVALID_NAME:
    case ERROR_KEY_DELETED:
      return Presence::Absent;
    default:
      return Presence::Refused;
  }
}

int compare(const std::u16string& first, const std::u16string& second) {
  return CompareStringOrdinal(wideText(first), static_cast<int>(first.size()), wideText(second),
                              static_cast<int>(second.size()), TRUE);
}

}  // namespace

std::string textOf(const WideValue& value) {
  std::array<char16_t, 264> usual;
  const std::size_t size = value.data.size() / sizeof(char16_t);
  if (size > usual.size()) {
    return utf8(untilNul(unitsOf(value.data)));
  }
  std::copy_n(value.data.begin(), size * sizeof(char16_t), reinterpret_cast<BYTE*>(usual.data()));
  return utf8(untilNul(std::u16string_view(usual.data(), size)));
}

bool NameOrder::operator()(const std::u16string& first, const std::u16string& second) const {
  return compare(first, second) == CSTR_LESS_THAN;
}

bool isSameName(const std::u16string& first, const std::u16string& second) {
  return compare(first, second) == CSTR_EQUAL;
}

WideKey::WideKey(HiveHandle hive, const std::u16string& path, REGSAM access, DWORD options)
    : WideKey(systemKey(hive), path, access, options) {}

WideKey::WideKey(HKEY parent, const std::u16string& path, REGSAM access, DWORD options)
    : status(RegOpenKeyExW(parent, wideText(path), options, access | KEY_WOW64_64KEY, &key)) {
  if (status != ERROR_SUCCESS) {
    key = nullptr;
  }
}

WideKey WideKey::make(HiveHandle hive, const std::u16string& path, REGSAM access) {
  return makeIn(systemKey(hive), path, access, REG_OPTION_NON_VOLATILE);
}

WideKey WideKey::openBelow(const WideKey& parent, const std::u16string& name, REGSAM access) {
  if (parent.isOpen()) {
    return {parent.key, name, access, 0};
  }
  WideKey unopened;
  unopened.status = parent.status;
  return unopened;
}

WideKey WideKey::makeBelow(const WideKey& parent, const std::u16string& name, REGSAM access,
                           DWORD options) {
  return makeIn(parent.key, name, access, options);
}

WideKey WideKey::makeIn(HKEY parent, const std::u16string& path, REGSAM access, DWORD options) {
  WideKey made;
  made.status = RegCreateKeyExW(parent, wideText(path), 0, nullptr, options,
                                access | KEY_WOW64_64KEY, nullptr, &made.key, nullptr);
  if (made.status != ERROR_SUCCESS) {
    made.key = nullptr;
  }
  return made;
}

WideKey::WideKey(WideKey&& other) noexcept
    : key(std::exchange(other.key, nullptr)), status(other.status) {}

WideKey::~WideKey() {
  if (key != nullptr) {
    RegCloseKey(key);
  }
}

Presence WideKey::presence() const { return presenceBy(status); }

Presence WideKey::presenceOf(const std::u16string& name) const {
  return key == nullptr ? presence()
                        : presenceBy(RegQueryValueExW(key, wideText(name), nullptr, nullptr,
                                                      nullptr, nullptr));
}

std::optional<std::vector<std::u16string>> WideKey::subkeys() const {
  std::vector<std::u16string> names;
  std::u16string name(longestKeyName + 1, u'\0');
  for (DWORD index = 0;; ++index) {
    auto size = static_cast<DWORD>(name.size());
    const LONG listed =
        RegEnumKeyExW(key, index, roomIn(name), &size, nullptr, nullptr, nullptr, nullptr);
    if (listed == ERROR_NO_MORE_ITEMS) {
      return names;
    }
    if (listed != ERROR_SUCCESS) {
      return std::nullopt;
    }
    names.emplace_back(name, 0, size);
  }
}

std::optional<std::vector<WideValue>> WideKey::values() const {
  std::vector<WideValue> values;
  // Most keys have few values: to clear so much room would take longer than to read them.
  constexpr DWORD nameRoom = longestValueName + 1;
  const auto name = std::make_unique_for_overwrite<char16_t[]>(nameRoom);
  std::vector<BYTE> data(4096);
  for (DWORD index = 0;;) {
    DWORD nameSize = nameRoom;
    auto size = static_cast<DWORD>(data.size());
    DWORD type = REG_NONE;
    const LONG listed = RegEnumValueW(key, index, reinterpret_cast<LPWSTR>(name.get()), &nameSize,
                                      nullptr, &type, data.data(), &size);
    if (listed == ERROR_MORE_DATA && size > data.size()) {
      data.resize(size);
      continue;
    }
    if (listed == ERROR_NO_MORE_ITEMS) {
      return values;
    }
    if (listed != ERROR_SUCCESS) {
      return std::nullopt;
    }
    values.push_back(
        {std::u16string(name.get(), nameSize), type, {data.begin(), data.begin() + size}});
    ++index;
  }
}

std::optional<WideValue> WideKey::value(const std::u16string& name) const {
  if (key == nullptr) {
    return std::nullopt;
  }
  // Nearly all values fit, so the memory from the heap is as large as the data.
  std::array<BYTE, 512> usual;
  WideValue value{.name = name, .type = REG_NONE, .data = {}};
  auto size = static_cast<DWORD>(usual.size());
  LONG read = RegQueryValueExW(key, wideText(name), nullptr, &value.type, usual.data(), &size);
  if (read == ERROR_SUCCESS) {
    value.data.assign(usual.data(), usual.data() + size);
    return value;
  }
  while (read == ERROR_MORE_DATA && size > value.data.size()) {
    value.data.resize(size);
    read = RegQueryValueExW(key, wideText(name), nullptr, &value.type, value.data.data(), &size);
  }
  value.data.resize(size);
  return read == ERROR_SUCCESS ? std::optional(std::move(value)) : std::nullopt;
}

bool WideKey::setValue(const WideValue& value) const {
  // The system also takes a terminator that follows the data, so something else follows them.
  constexpr std::array<BYTE, 2> guard{0xFF, 0xFF};
  std::vector<BYTE> guarded = value.data;
  guarded.insert(guarded.end(), guard.begin(), guard.end());
  return key != nullptr && RegSetValueExW(key, wideText(value.name), 0, value.type, guarded.data(),
                                          static_cast<DWORD>(value.data.size())) == ERROR_SUCCESS;
}

bool WideKey::deleteValue(const std::u16string& name) const {
  if (key == nullptr) {
    return false;
  }
  const LONG deleted = RegDeleteValueW(key, wideText(name));
  return deleted == ERROR_SUCCESS || deleted == ERROR_FILE_NOT_FOUND;
}

std::vector<BYTE> WideKey::security(SECURITY_INFORMATION what) const {
  std::array<BYTE, 256> usual;
  auto size = static_cast<DWORD>(usual.size());
  LONG read =
      key == nullptr ? ERROR_INVALID_HANDLE : RegGetKeySecurity(key, what, usual.data(), &size);
  if (read == ERROR_SUCCESS) {
    return {usual.data(), usual.data() + size};
  }
  std::vector<BYTE> descriptor;
  if (read == ERROR_INSUFFICIENT_BUFFER) {
    descriptor.resize(size);
    read = RegGetKeySecurity(key, what, descriptor.data(), &size);
  }
  descriptor.resize(read == ERROR_SUCCESS ? size : 0);
  return descriptor;
}

bool WideKey::setSecurity(const std::vector<BYTE>& descriptor, SECURITY_INFORMATION what) const {
  // The call only reads, though its type does not say so.
  auto* given = const_cast<BYTE*>(descriptor.data());
  return key != nullptr && RegSetKeySecurity(key, what, given) == ERROR_SUCCESS;
}

std::optional<WideValue> valueAt(HiveHandle hive, const std::u16string& path,
                                 const std::u16string& name) {
  const WideKey key(hive, path, KEY_QUERY_VALUE);
  return key.isOpen() ? key.value(name) : std::nullopt;
}

}  // namespace zelvreg
