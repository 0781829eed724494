// What a text says about the root of a key, the splitting of a full key path, and the four small
// routines by which the program keeps its own settings.
//
// The settings live in the 32-bit view: none of the opens here carries the flag of the other one.
#ifndef ZELVREG_REGISTRY_HIVES_H
#define ZELVREG_REGISTRY_HIVES_H

#include <windows.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "form/Form42.h"
#include "roots/Roots.h"
#include "runtime/Shares.h"

namespace zelvreg {

// A root as a call of the system takes it; null for what is none.
HKEY systemKey(HiveHandle hive);

// By the long name ("HKEY_LOCAL_MACHINE"), exactly; Unknown for anything else.
HiveHandle GetHiveHandle(std::string_view name);
// The same map, for the text of a chosen root.
HiveHandle HiveFromName(std::string_view name);

// Whether a scan, a search or a repair of this form may follow a text to another computer.
inline Shares sharesOf(const Form42& form) {
  return form.safeguards.asksShares ? Shares::Asked : Shares::Refused;
}

// By the short name ("HKLM") in any case. "HKDD" and "HKCC" are known and give Unknown, so that a
// request on them fails like one on an unknown hive. Any other text gives hINI if it names a file.
HiveHandle HiveFromShortName(const std::string& name, Shares shares = Shares::Refused);

// Splits a full path at its first backslash: `hive` gets the handle of what stands before, `key`
// keeps what stands behind. A text that does not begin with "HKEY_" or that ends in a backslash
// shows "Incorrect Format:" and leaves both as they were.
void ParseKey(const Dialogs& dialogs, std::string& key, HiveHandle& hive);

// Reads a value of at most 1024 units of UTF-16 into `result`. False, and an empty `result`, when
// the key or the value cannot be read. A REG_SZ gives its text. A REG_DWORD gives the decimal text
// of its bytes, last to first, written in hexadecimal without padding: exact below 256, and
// settings that other programs wrote rely on being read the same way. Any other type leaves
// `result`.
bool GetRegString(HiveHandle hive, const std::string& key, const std::string& valueName,
                  std::string& result);

// Writes a REG_SZ, making the key and its parents. True if both worked.
bool SaveRegString(HiveHandle hive, const std::string& key, const std::string& valueName,
                   const std::string& data);

// Write to an existing key, named by its full path. They fail silently. A path that ParseKey
// refuses is looked for under the hive of the path before it.
void SetRegDword(Form42& form, std::string fullKey, const std::string& valueName,
                 std::int32_t data);
void SetRegStringValue(Form42& form, std::string fullKey, const std::string& valueName,
                       const std::string& data);

}  // namespace zelvreg

#endif
