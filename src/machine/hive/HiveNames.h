// Names of a hive that libhivex cannot give: those with half of a character, which does not exist
// in the UTF-8 that it speaks. Windows keeps them like any other.
#ifndef ZELVREG_MACHINE_HIVE_HIVE_NAMES_H
#define ZELVREG_MACHINE_HIVE_HIVE_NAMES_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "machine/base/FileDescriptor.h"

namespace zelvreg::machine {

// For cells in which libhivex has found nothing else that is wrong.
class HiveNames {
 public:
  // The file that libhivex has read, too.
  explicit HiveNames(FileDescriptor hiveFile) : file(std::move(hiveFile)) {}

  // The name in the cell of a key or of a value, in UTF-8 that keeps halves of characters. None if
  // the name has none, or cannot be read.
  [[nodiscard]] std::optional<std::string> ofKey(std::size_t node) const;
  [[nodiscard]] std::optional<std::string> ofValue(std::size_t record) const;

 private:
  // Where in a cell its name stands, its length in bytes, and what says that it is not UTF-16.
  struct Layout {
    std::size_t name;
    std::size_t length;
    std::size_t flags;
    std::uint16_t narrowFlag;
  };
  [[nodiscard]] std::optional<std::string> read(std::size_t cell, const Layout& layout) const;

  FileDescriptor file;
};

}  // namespace zelvreg::machine

#endif
