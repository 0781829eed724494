// Short forms of the registry calls for tests: what a program would see. All text is UTF-8.
#ifndef ZELVREG_TESTS_MACHINE_REGISTRY_CALLS_H
#define ZELVREG_TESTS_MACHINE_REGISTRY_CALLS_H

#include <windows.h>

#include <array>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "text/Wide.h"

namespace zelvreg::fixture {

inline constexpr REGSAM read32 = KEY_READ;
inline constexpr REGSAM read64 = KEY_READ | KEY_WOW64_64KEY;
inline constexpr REGSAM all32 = KEY_ALL_ACCESS;
inline constexpr REGSAM all64 = KEY_ALL_ACCESS | KEY_WOW64_64KEY;

// An open key, closed with this object. `status` is what the opening call answered.
class OpenedKey {
  HKEY key = nullptr;  // before `status`, which is set by the call that sets it

 public:
  OpenedKey(HKEY parent, const char* path, REGSAM access)
      : status(path == nullptr ? RegOpenKeyExW(parent, nullptr, 0, access, &key)
                               : RegOpenKeyExW(parent, Wide(path).get(), 0, access, &key)) {}
  OpenedKey(OpenedKey&& other) noexcept
      : key(std::exchange(other.key, nullptr)), status(other.status) {}
  OpenedKey(const OpenedKey&) = delete;
  OpenedKey& operator=(const OpenedKey&) = delete;
  ~OpenedKey() {
    if (key != nullptr) {
      RegCloseKey(key);
    }
  }

  static OpenedKey create(HKEY parent, const char* path, REGSAM access) {
    OpenedKey made;
    made.status = RegCreateKeyExW(parent, Wide(path).get(), 0, nullptr, 0, access, nullptr,
                                  &made.key, &made.disposition);
    return made;
  }

  operator HKEY() const { return key; }  // NOLINT(google-explicit-constructor)

  LONG status = ERROR_SUCCESS;
  DWORD disposition = 0;

 private:
  OpenedKey() = default;
};

inline LONG openStatus(HKEY root, const char* path, REGSAM access) {
  return OpenedKey(root, path, access).status;
}

inline std::vector<std::string> subkeys(HKEY key) {
  std::vector<std::string> names;
  std::array<char16_t, 256> name{};
  for (DWORD index = 0;
       RegEnumKeyW(key, index, name.data(), static_cast<DWORD>(name.size())) == ERROR_SUCCESS;
       ++index) {
    names.push_back(utf8(name.data()));
  }
  return names;
}

inline std::vector<std::string> valueNames(HKEY key) {
  std::vector<std::string> names;
  for (DWORD index = 0;; ++index) {
    std::array<char16_t, 256> name{};
    auto size = static_cast<DWORD>(name.size());
    if (RegEnumValueW(key, index, name.data(), &size, nullptr, nullptr, nullptr, nullptr) !=
        ERROR_SUCCESS) {
      return names;
    }
    names.push_back(utf8({name.data(), size}));
  }
}

// A value's text with its NULs, or its bytes; "(error N)" if the call answers N.
inline std::string data(HKEY key, const char* name) {
  DWORD size = 0;
  DWORD type = REG_NONE;
  LONG status = RegQueryValueExW(key, Wide(name).get(), nullptr, &type, nullptr, &size);
  std::string bytes(size, '\0');
  if (status == ERROR_SUCCESS) {
    status = RegQueryValueExW(key, Wide(name).get(), nullptr, nullptr,
                              reinterpret_cast<BYTE*>(bytes.data()), &size);
  }
  if (status != ERROR_SUCCESS) {
    return "(error " + std::to_string(status) + ")";
  }
  if (type != REG_SZ && type != REG_EXPAND_SZ && type != REG_MULTI_SZ) {
    return bytes;
  }
  std::u16string units(size / sizeof(char16_t), u'\0');
  std::memcpy(units.data(), bytes.data(), units.size() * sizeof(char16_t));
  return utf8(units);
}

// The same up to the first NUL.
inline std::string text(HKEY key, const char* name) {
  const std::string all = data(key, name);
  return all.substr(0, all.find('\0'));
}

// The default value of the key at a path; "(error N)" if the open answers N.
inline std::string defaultText(HKEY root, const char* path, REGSAM access) {
  const OpenedKey key(root, path, access);
  return key.status == ERROR_SUCCESS ? text(key, "") : "(error " + std::to_string(key.status) + ")";
}

inline LONG setText(HKEY key, const char* name, std::string_view content) {
  const std::u16string units = utf16(content);
  return RegSetValueExW(key, Wide(name).get(), 0, REG_SZ,
                        reinterpret_cast<const BYTE*>(units.data()),
                        static_cast<DWORD>(units.size() * sizeof(char16_t)));
}

}  // namespace zelvreg::fixture

#endif
