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

WideKey::WideKey(HiveHandle hive, const std::u16string& path, REGSAM access, DWORD options)
    : pair(hive, wideText(path), access | KEY_WOW64_64KEY, options) {}

WideKey WideKey::make(HiveHandle hive, const std::u16string& path, REGSAM access) {
  return makeIn(systemKey(hive), path, access, REG_OPTION_NON_VOLATILE);
}

WideKey WideKey::openBelow(const WideKey& parent, const std::u16string& name, REGSAM access) {
  return WideKey(OpenPair(parent.pair, wideText(name), access | KEY_WOW64_64KEY));
}

WideKey WideKey::makeBelow(const WideKey& parent, const std::u16string& name, REGSAM access,
                           DWORD options) {
  return makeIn(parent.pair.handle(), name, access, options);
}

WideKey WideKey::makeIn(HKEY parent, const std::u16string& path, REGSAM access, DWORD options) {
  HKEY made = nullptr;
  const LONG status = RegCreateKeyExW(parent, wideText(path), 0, nullptr, options,
                                      access | KEY_WOW64_64KEY, nullptr, &made, nullptr);
  return WideKey(OpenPair(status == ERROR_SUCCESS ? made : nullptr, status));
}

Presence WideKey::presence() const { return presenceBy(pair.openStatus()); }

Presence WideKey::presenceOf(const std::u16string& name) const {
  return isOpen() ? presenceBy(RegQueryValueExW(pair.keyOf(wideText(name)), wideText(name), nullptr,
                                                nullptr, nullptr, nullptr))
                  : presence();
}

std::optional<std::vector<std::u16string>> WideKey::subkeys() const {
  std::vector<std::u16string> names;
  std::u16string name(longestKeyName + 1, u'\0');
  for (DWORD index = 0;; ++index) {
    auto size = static_cast<DWORD>(name.size());
    const OpenPair::Place place = pair.subkeyAt(index);
    const LONG listed = RegEnumKeyExW(place.key, place.index, roomIn(name), &size, nullptr, nullptr,
                                      nullptr, nullptr);
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
    const OpenPair::Place place = pair.valueAt(index);
    const LONG listed = RegEnumValueW(place.key, place.index, reinterpret_cast<LPWSTR>(name.get()),
                                      &nameSize, nullptr, &type, data.data(), &size);
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
  if (!isOpen()) {
    return std::nullopt;
  }
  HKEY key = pair.keyOf(wideText(name));
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
  return isOpen() &&
         RegSetValueExW(pair.handle(), wideText(value.name), 0, value.type, guarded.data(),
                        static_cast<DWORD>(value.data.size())) == ERROR_SUCCESS;
}

bool WideKey::deleteValue(const std::u16string& name) const {
  if (!isOpen()) {
    return false;
  }
  const LONG deleted = RegDeleteValueW(pair.handle(), wideText(name));
  return deleted == ERROR_SUCCESS || deleted == ERROR_FILE_NOT_FOUND;
}

std::vector<BYTE> WideKey::security(SECURITY_INFORMATION what) const {
  std::array<BYTE, 256> usual;
  auto size = static_cast<DWORD>(usual.size());
  HKEY key = pair.handle();
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
  return isOpen() && RegSetKeySecurity(pair.handle(), what, given) == ERROR_SUCCESS;
}

std::optional<WideValue> valueAt(HiveHandle hive, const std::u16string& path,
                                 const std::u16string& name) {
  const WideKey key(hive, path, KEY_QUERY_VALUE);
  return key.isOpen() ? key.value(name) : std::nullopt;
}

}  // namespace zelvreg
