// A file of the host in memory, mapped and not copied.
#ifndef ZELVREG_MACHINE_BASE_MAPPED_FILE_H
#define ZELVREG_MACHINE_BASE_MAPPED_FILE_H

#include <cstddef>
#include <filesystem>
#include <string_view>

namespace zelvreg::machine {

// The bytes of a file for as long as this object lives. They begin at an even address.
class MappedFile {
 public:
  // Throws MachineError if the file cannot be read.
  explicit MappedFile(const std::filesystem::path& file);
  ~MappedFile();
  MappedFile(const MappedFile&) = delete;
  MappedFile& operator=(const MappedFile&) = delete;
  [[nodiscard]] std::string_view bytes() const { return {start, size}; }

 private:
  const char* start = nullptr;
  std::size_t size = 0;
};

}  // namespace zelvreg::machine

#endif
