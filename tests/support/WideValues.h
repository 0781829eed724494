// Values by their wide names and bit for bit, for tests of what must not lose anything.
#ifndef ZELVREG_TESTS_SUPPORT_WIDE_VALUES_H
#define ZELVREG_TESTS_SUPPORT_WIDE_VALUES_H

#include <string>
#include <string_view>
#include <vector>

#include "keys/WideKey.h"

namespace zelvreg {

inline bool operator==(const WideValue& first, const WideValue& second) {
  return first.name == second.name && first.type == second.type && first.data == second.data;
}

}  // namespace zelvreg

namespace zelvreg::fixture {

inline std::vector<BYTE> bytes(std::string_view text) { return {text.begin(), text.end()}; }

// The bytes of a wide text in memory.
std::vector<BYTE> bytes(std::u16string_view text);

// A key with its values and those of all keys below it, in the order of the system.
struct KeyContent {
  std::u16string path;  // below the root
  std::vector<WideValue> values;

  bool operator==(const KeyContent&) const = default;
};
std::vector<KeyContent> contentOf(HiveHandle hive, const std::u16string& path);

// Sets values in turn, making the key.
void setValues(HiveHandle hive, const std::u16string& path, const std::vector<WideValue>& values);

// A text as a file of the registry editor's holds it: UTF-16LE with a mark.
std::string utf16File(std::u16string_view text);
// The text of such a file.
std::u16string textOfUtf16File(std::string_view file);

// Values of every sort that a registry can hold: texts without a terminator, with several, with one
// in their middle, of an odd length, and all types with data that do not suit them.
std::vector<WideValue> unusualValues();

}  // namespace zelvreg::fixture

#endif
