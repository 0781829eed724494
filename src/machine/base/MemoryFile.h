// A file that is in memory alone, for what is read and written by its path.
#ifndef ZELVREG_MACHINE_BASE_MEMORY_FILE_H
#define ZELVREG_MACHINE_BASE_MEMORY_FILE_H

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>

#include "machine/base/FileDescriptor.h"

namespace zelvreg::machine {

class MemoryFile {
 public:
  // So many bytes, all zero. Memory is taken for those that are written. Throws MachineError.
  explicit MemoryFile(std::uint64_t size);
  ~MemoryFile();
  MemoryFile(MemoryFile&& other) noexcept;
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  MemoryFile& operator=(MemoryFile&&) = delete;

  [[nodiscard]] std::span<std::byte> bytes() const { return content; }
  // By which this process, and those that it forks, open it for as long as this object lives.
  [[nodiscard]] std::filesystem::path path() const;

 private:
  FileDescriptor file;
  std::span<std::byte> content;
};

}  // namespace zelvreg::machine

#endif
