// Keys and values by their names in UTF-16, in the 64-bit view, for what is exported and must be
// restored exactly.
#ifndef ZELVREG_KEYS_WIDE_KEY_H
#define ZELVREG_KEYS_WIDE_KEY_H

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "keys/NameOrder.h"
#include "keys/OpenPair.h"
#include "roots/Roots.h"

namespace zelvreg {

// A value's name and, bit for bit, its data. The default value's name is empty.
struct WideValue {
  std::u16string name;
  DWORD type = REG_NONE;
  std::vector<BYTE> data;
};

// Its data as a text, up to the first NUL; meant for texts, whatever the type says.
std::string textOf(const WideValue& value);

// What of a key's security is kept: all but the list of what is audited.
inline constexpr SECURITY_INFORMATION wholeSecurity =
    OWNER_SECURITY_INFORMATION | GROUP_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;

// Whether a key is there, and if so, whether it could be opened.
enum class Presence : std::uint8_t { Open, Absent, Refused };

// An open key that closes itself.
class WideKey {
 public:
  // The flag of the 64-bit view is added to `access`. A path that no key can have is absent.
  WideKey(HiveHandle hive, const std::u16string& path, REGSAM access, DWORD options = 0);
  // The same for a subkey of an open key, by its name.
  static WideKey openBelow(const WideKey& parent, const std::u16string& name, REGSAM access);
  // The same, making the key with all above it where it is missing.
  static WideKey make(HiveHandle hive, const std::u16string& path, REGSAM access);
  // The same for a subkey of an open key, by its name.
  static WideKey makeBelow(const WideKey& parent, const std::u16string& name, REGSAM access,
                           DWORD options);
  [[nodiscard]] Presence presence() const;
  [[nodiscard]] bool isOpen() const { return pair.handle() != nullptr; }
  // Whether its access list is what kept it from opening.
  [[nodiscard]] bool isDenied() const { return pair.openStatus() == ERROR_ACCESS_DENIED; }

  // Names and values in the order in which the system lists them; none if an entry cannot be read.
  [[nodiscard]] std::optional<std::vector<std::u16string>> subkeys() const;
  [[nodiscard]] std::optional<std::vector<WideValue>> values() const;

  // Whether there is a value of this name. If that cannot be known, it counts as refused.
  [[nodiscard]] Presence presenceOf(const std::u16string& name) const;
  // One value by its name; none when it is not there or cannot be read.
  [[nodiscard]] std::optional<WideValue> value(const std::u16string& name) const;

  // False when the key refuses it or is not open.
  [[nodiscard]] bool setValue(const WideValue& value) const;
  // True also if there was no such value.
  [[nodiscard]] bool deleteValue(const std::u16string& name) const;

  // Owner, group and access list, or those of them that are asked for, as a self-relative
  // descriptor; empty if they cannot be read.
  [[nodiscard]] std::vector<BYTE> security(SECURITY_INFORMATION what = wholeSecurity) const;
  // Sets the parts of such a descriptor that `what` names.
  [[nodiscard]] bool setSecurity(const std::vector<BYTE>& descriptor,
                                 SECURITY_INFORMATION what) const;

 private:
  explicit WideKey(OpenPair opened) : pair(std::move(opened)) {}
  static WideKey makeIn(HKEY parent, const std::u16string& path, REGSAM access, DWORD options);

  OpenPair pair;
};

// One value of a key by its path; std::nullopt if either does not exist or cannot be read.
std::optional<WideValue> valueAt(HiveHandle hive, const std::u16string& path,
                                 const std::u16string& name);

}  // namespace zelvreg

#endif
