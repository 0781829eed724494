// The splitting of a full key path, and the four small routines by which the program keeps its own
// settings.
//
// The settings live in the 32-bit view: none of the opens here carries the flag of the other one.
#ifndef ZELVREG_REGISTRY_HIVES_H
#define ZELVREG_REGISTRY_HIVES_H

#include <cstdint>
#include <string>

#include "roots/Roots.h"
#include "runtime/Shares.h"

namespace zelvreg {

class Dialogs;
struct Form42;

// Whether a scan, a search or a repair of this form may follow a text to another computer.
Shares sharesOf(const Form42& form);

// Splits a full path at its first backslash: `hive` gets the handle of what comes before it, `key`
// keeps the rest after it. A text that does not begin with "HKEY_" or that ends in a backslash
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

// Write to an existing key, named by its full path. A path that ParseKey refuses is looked for
// under the hive of the path before it. The first one tells whether it worked.
bool SetRegDword(Form42& form, std::string fullKey, const std::string& valueName,
                 std::int32_t data);
void SetRegStringValue(Form42& form, std::string fullKey, const std::string& valueName,
                       const std::string& data);

}  // namespace zelvreg

#endif
