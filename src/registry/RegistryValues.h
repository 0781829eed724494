// Reading and writing single values of any type, directly.
#ifndef ZELVREG_REGISTRY_REGISTRY_VALUES_H
#define ZELVREG_REGISTRY_REGISTRY_VALUES_H

#include <optional>
#include <string>
#include <string_view>

#include "keys/Variant.h"
#include "roots/Roots.h"

namespace zelvreg {

struct Form42;

// A fault that a routine raises. Callers ignore it, so it is returned beside the result.
struct RuntimeError {
  int number = 0;
  std::string text;
};

// What reading or writing gave, and the fault that was raised on the way, if any.
struct ReadResult {
  Variant value;
  std::optional<RuntimeError> error;
};
struct WriteResult {
  bool isWritten = false;
  std::optional<RuntimeError> error;
};

// Reads in the 64-bit view. Text loses one character, its terminator, and keeps variables; a
// REG_MULTI_SZ loses two and keeps NULs between its texts. An absent key or value gives `fallback`;
// an absent value or another type also raises 1001.
ReadResult GetRegistryValue(HiveHandle hive, const std::string& key, const std::string& valueName,
                            Variant fallback = {});

// What it gives of the data of a REG_SZ or a REG_EXPAND_SZ.
std::string textOfData(std::u16string_view units);

// Writes to an existing key in the 32-bit view. Text becomes a REG_SZ. The data of
// numbers and bytes are the characters of a decimal text: of the number, cut or filled with NULs
// to 4 bytes; of the first byte, cut or filled to the array's length. What is read back relies on
// that. Other types raise 1001.
WriteResult SetRegistryValue(HiveHandle hive, const std::string& key, const std::string& valueName,
                             const Variant& value);

// Whether the key can be opened for work in the 64-bit view.
bool RegKeyExists(HiveHandle hive, const std::string& key);

// Reads "S"trings, "B"ooleans and "D" numbers in the 32-bit view. `result` is `fallback` unless the
// read worked. `rc` is 0, 99 for a refused hive text, or the failing call's code, after which the
// key stays open. On an INI file "S" reads up to 255 characters; any other kind puts the number
// read into `rc` and leaves `result`.
void fReadValue(const std::string& hive, const std::string& key, const std::string& valueName,
                const std::string& kind, const Variant& fallback, Variant& result, LONG& rc);

// Reads a value of at most 32 bytes as a number, whatever its type. The answer of the call;
// `result` stays as it was if that failed.
LONG readNumber(HKEY key, const std::string& valueName, Variant& result);

}  // namespace zelvreg

#endif
