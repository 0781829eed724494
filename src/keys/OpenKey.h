// An open key that closes itself.
#ifndef ZELVREG_KEYS_OPEN_KEY_H
#define ZELVREG_KEYS_OPEN_KEY_H

#include <windows.h>

#include <string>
#include <utility>

#include "keys/ActingUser.h"
#include "keys/RootHandles.h"
#include "text/Wide.h"

namespace zelvreg {

// The rights that the direct routines ask for.
inline constexpr REGSAM workOn64BitView =
    319;                                       // query, set, create, enumerate, notify, link, 0x100
inline constexpr REGSAM workOn32BitView = 63;  // the same without the flag of the 64-bit view
inline constexpr REGSAM queryOn32BitView = 1;
inline constexpr REGSAM writeOn32BitView = 0x20006;
inline constexpr REGSAM settingsAccess = 0x2003F;

class OpenKey {
 public:
  OpenKey() = default;
  OpenKey(HiveHandle hive, const std::string& path, REGSAM access)
      : status(RegOpenKeyExW(systemKey(hive), Wide(path).get(), 0, access, &key)) {
    if (status != ERROR_SUCCESS) {
      key = nullptr;
    }
  }
  OpenKey(OpenKey&& other) noexcept
      : key(std::exchange(other.key, nullptr)), status(other.status) {}
  OpenKey(const OpenKey&) = delete;
  OpenKey& operator=(const OpenKey&) = delete;
  OpenKey& operator=(OpenKey&&) = delete;
  ~OpenKey() { close(); }

  [[nodiscard]] bool isOpen() const { return key != nullptr; }
  // What the call that opened it returned.
  [[nodiscard]] LONG openStatus() const { return status; }
  [[nodiscard]] HKEY handle() const { return key; }

  // What the call that closes it returns; 0 if it is closed already.
  LONG close() {
    HKEY open = std::exchange(key, nullptr);
    return open == nullptr ? ERROR_SUCCESS : RegCloseKey(open);
  }
  // Leaves the handle open for good, unless that would keep another user's keys loaded.
  void abandon() {
    if (actingUser().empty()) {
      key = nullptr;
    }
    close();
  }

 private:
  HKEY key = nullptr;
  LONG status = ERROR_SUCCESS;
};

}  // namespace zelvreg

#endif
