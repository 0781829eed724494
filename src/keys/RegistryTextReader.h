// Reading a file in the registry editor's export format as the changes that it asks for.
#ifndef ZELVREG_KEYS_REGISTRY_TEXT_READER_H
#define ZELVREG_KEYS_REGISTRY_TEXT_READER_H

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "keys/WideKey.h"
#include "regfile/Lines.h"
#include "roots/Roots.h"

namespace zelvreg {

// One change. Values belong to the key of the last MakeKey before them.
struct RegistryChange {
  enum class Kind : std::uint8_t { MakeKey, DeleteKey, SetValue, DeleteValue };
  Kind kind = Kind::MakeKey;
  std::size_t line = 0;                   // where it begins
  HiveHandle hive = HiveHandle::Unknown;  // of a key
  std::u16string path;                    // of a key, below its root
  WideValue value;                        // of a value; its name alone for DeleteValue
  // Of a key that is made, where the file notes them: its security descriptor, which is whole, and
  // where the values that follow stood among all values, from 0 and rising.
  std::vector<BYTE> security;
  std::vector<std::size_t> positions;
};

struct RegistryChanges {
  bool isSafetyExport = false;  // the file says so
  std::string user;  // the identifier of the user whose HKEY_CURRENT_USER is meant, if it says so
  std::vector<RegistryChange> list;
  std::optional<regfile::Fault> fault;  // if there is one, the list is not whole
};

// REGEDIT4 is taken to be in the computer's code page. Texts are given their terminator. Roots go
// by their long names, in any case. A comment may stand in a line of its own or after a value;
// those of RegistryTextNotes.h are understood.
RegistryChanges readRegistryText(std::string_view bytes);

}  // namespace zelvreg

#endif
