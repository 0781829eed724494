// The files in which Windows keeps what it has not yet written into a hive: names are found without
// regard to case, and a link is never followed.
#ifndef ZELVREG_MACHINE_REPLAY_LOG_FILES_H
#define ZELVREG_MACHINE_REPLAY_LOG_FILES_H

#include <cstddef>
#include <deque>
#include <filesystem>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "machine/base/MappedFile.h"
#include "machine/base/PlainFile.h"

namespace zelvreg::machine {

// The transaction logs beside a hive: its name followed by ".LOG", ".LOG1" or ".LOG2".
class LogFiles {
 public:
  // Throws MachineError, a few words with the name, if one of them or the folder cannot be read.
  explicit LogFiles(const std::filesystem::path& hive);

  // In the order of their names. They live as long as this object.
  [[nodiscard]] std::vector<std::span<const std::byte>> contents() const;

  // Taken before each file was read.
  using Stamps = std::vector<std::pair<std::filesystem::path, FileStamp>>;
  [[nodiscard]] const Stamps& stamps() const { return readStamps; }

 private:
  std::deque<MappedFile> files;
  Stamps readStamps;
};

// A file in which the registry's transaction manager may hold changes of this hive: one of its name
// that ends in ".regtrans-ms", beside it or in the folder TxR there, unless it is nothing but
// zeros; or that folder, if it cannot be looked at. None if there is no such file. Throws
// MachineError, a few words, if the folder of the hive cannot be read.
std::optional<std::filesystem::path> pendingTransactions(const std::filesystem::path& hive);

}  // namespace zelvreg::machine

#endif
