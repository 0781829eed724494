// What a bare walk reads for each category: plain loops, as data.
#ifndef ZELVREG_BENCH_WALK_TABLE_H
#define ZELVREG_BENCH_WALK_TABLE_H

#include <windows.h>

#include <cstdint>
#include <span>
#include <vector>

namespace zelvreg::bench {

// Which keys' values are read: the key's own, or those of each subkey, or those of the first subkey
// of each subkey.
enum class At : std::uint8_t { Key, Subkeys, FirstOfSubkeys };

// What of a value names the file that is tested.
enum class Names : std::uint8_t {
  Nothing,
  ByName,          // the value's name
  ByNameMade,      // the same, and its attributes are set first
  ByNameInFolder,  // the value's name, in the folder that the data name
  ByFont,          // the data, in the folder of fonts
  ByPath,          // the data, without quotes, arguments and the number of an icon
  ByPathOrFolder,  // the same, asked for as a folder too
  ByRule,          // the program in a firewall rule
  ByLibrary,       // no file: the data name a key under CLSID or TypeLib
};

struct Loop {
  HKEY root;
  const char16_t* key;
  At at;
  const char16_t* below;  // what follows the subkey's name
  const char16_t* value;  // the one value to read; null for all named ones
  Names names;
};

// The loops of a category row, counted from 1.
std::span<const Loop> loopsOf(std::size_t row);

}  // namespace zelvreg::bench

#endif
