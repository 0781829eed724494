// Reading a file in the registry editor's export format as the changes that it asks for.
#ifndef ZELVREG_REGISTRY_REGISTRY_TEXT_READER_H
#define ZELVREG_REGISTRY_REGISTRY_TEXT_READER_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "registry/Hives.h"
#include "registry/RegistryTextDecoder.h"
#include "registry/WideKey.h"

namespace zelvreg {

// One change. Values belong to the key of the last MakeKey before them.
struct RegistryChange {
  enum class Kind : std::uint8_t { MakeKey, DeleteKey, SetValue, DeleteValue };
  Kind kind = Kind::MakeKey;
  std::size_t line = 0;                   // where it begins
  HiveHandle hive = HiveHandle::Unknown;  // of a key
  std::u16string path;                    // of a key, below its root
  WideValue value;                        // of a value; its name alone for DeleteValue
};

struct RegistryChanges {
  std::vector<RegistryChange> list;
  std::optional<RegistryTextFault> fault;  // if there is one, the list is not whole
};

// Texts are given their terminator. Roots go by their long names, in any case. A comment may stand
// in a line of its own or behind a value.
RegistryChanges readRegistryText(std::string_view bytes);

}  // namespace zelvreg

#endif
