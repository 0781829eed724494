#include "machine/base/MemoryFile.h"

#include <sys/mman.h>

#include <cerrno>
#include <string>
#include <system_error>
#include <utility>

#include "machine/base/MachineError.h"

namespace zelvreg::machine {

MemoryFile::MemoryFile(std::uint64_t size) : file(memfd_create("zelvreg", MFD_CLOEXEC)) {
  void* mapped = MAP_FAILED;
  if (file.isOpen() && ftruncate(file.get(), static_cast<off_t>(size)) == 0) {
    mapped = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, file.get(), 0);
  }
  if (mapped == MAP_FAILED) {
    throw MachineError("there is no room for it in memory: " +
                       std::generic_category().message(errno));
  }
  content = {static_cast<std::byte*>(mapped), size};
}

MemoryFile::~MemoryFile() {
  if (!content.empty()) {
    munmap(content.data(), content.size());
  }
}

MemoryFile::MemoryFile(MemoryFile&& other) noexcept
    : file(std::move(other.file)), content(std::exchange(other.content, {})) {}

std::filesystem::path MemoryFile::path() const {
  return "/proc/self/fd/" + std::to_string(file.get());
}

}  // namespace zelvreg::machine
