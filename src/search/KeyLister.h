// The subkeys and values of a key, read straight through the system's calls for the registry
// search.
//
// Nothing here fails: a key that cannot be opened gives the sentinel or the default. Names are
// listed in the view of the 32-bit process; only ReadValueText reads the 64-bit view. So a value
// that both views have is found by its name in the one and judged by its text in the other, which
// is the one that a repair works on.
#ifndef ZELVREG_SEARCH_KEY_LISTER_H
#define ZELVREG_SEARCH_KEY_LISTER_H

#include <windows.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "keys/OpenKey.h"
#include "keys/ValueData.h"
#include "keys/Variant.h"
#include "roots/Roots.h"
#include "search/NameStack.h"
#include "widgets/ListView.h"

namespace zelvreg {

struct Form42;

// A list with only this name means that nothing was read. A first key or value that really has two
// blanks as its name is taken for it.
inline constexpr std::string_view nothingRead = "  ";

// What the listers keep from call to call.
struct ListerState {
  // 1 while the first level of a walk is listed: only then is the number of names shown.
  int counter = 0;
  // Room for the longest name that a value can have, allocated when first needed.
  std::vector<char16_t> valueName;
};

// The names of a key's values, and their types in the same order.
struct ValueNames {
  std::vector<std::string> names{std::string(nothingRead)};
  std::vector<DWORD> types{REG_NONE};
  // What ended the list: ERROR_NO_MORE_ITEMS, or the code of the call that failed.
  LONG ended = ERROR_NO_MORE_ITEMS;
};

// Whether a root has a subkey.
bool HasSubkeys(HiveHandle root);

// Opens a key for both of its lists; an empty key is the root itself.
OpenKey openForLists(HiveHandle root, const std::string& key);

// Adds the names of a key's subkeys; nothing if none is read. Serves the queue at each name.
void ListSubkeys(Form42& form, ListerState& lister, const OpenKey& open, NameStack& names);

// The names by themselves.
std::vector<std::string> ListSubkeys(Form42& form, ListerState& lister, HiveHandle root,
                                     const std::string& key);

// What a list of values shows of one: its name in the row's own text, its type, and its data.
inline constexpr std::size_t valueTypeColumn = 1;
inline constexpr std::size_t valueDataColumn = 3;
enum class ShowsValues : bool { No, Yes };

// The values of a key; a backslash at its end is dropped. `list` is filled only when they are to be
// shown; it needs four columns.
ValueNames ListValues(ListerState& lister, HiveHandle root, std::string key, ShowsValues shows,
                      ListView& list);
// The same without a list.
ValueNames ListValues(ListerState& lister, HiveHandle root, const std::string& key);
// In the place of what `values` held.
void ListValues(ListerState& lister, const OpenKey& open, ValueNames& values);

// Reads texts of one key, which is opened once.
class ValueTexts {
 public:
  ValueTexts(HiveHandle root, const std::string& key);

  // Whether the value could be read.
  bool read(const std::string& valueName);
  // The text of the value that was read last, up to its first NUL, a REG_EXPAND_SZ with its
  // variables expanded; data of any other type are read as text.
  [[nodiscard]] std::string text() const;
  // Its data; none if it could not be read.
  [[nodiscard]] const ValueData& data() const { return value; }

 private:
  OpenKey open;
  ValueData value;
};

// One such text; `fallback` if it cannot be read.
std::string ReadValueText(HiveHandle root, const std::string& key, const std::string& valueName,
                          const std::string& fallback);

// A REG_DWORD; `fallback` for any other type.
std::int32_t ReadValueDword(HiveHandle root, const std::string& key, const std::string& valueName,
                            std::int32_t fallback);

// The bytes of a REG_BINARY, one zero byte if it has none; `fallback` for any other type.
Variant ReadValueBytes(HiveHandle root, const std::string& key, const std::string& valueName,
                       const Variant& fallback);

// With its variables expanded. The result ends in a NUL that belongs to it.
std::string ExpandEnvText(const std::string& text);

// The text before its first NUL.
std::string CutAtNul(std::string_view text);

// The path up to its last backslash, without it; empty for a path that has none. Part of the path
// that was given.
std::string_view ParentKeyPath(std::string_view key);

}  // namespace zelvreg

#endif
