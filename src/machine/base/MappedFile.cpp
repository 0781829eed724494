#include "machine/base/MappedFile.h"

#include <sys/mman.h>
#include <sys/stat.h>

#include <cerrno>
#include <system_error>

#include "machine/base/MachineError.h"
#include "machine/base/PlainFile.h"

namespace zelvreg::machine {

MappedFile::MappedFile(const std::filesystem::path& file) {
  const auto fail = [&] {
    throw MachineError(file.string() +
                       ": cannot be read: " + std::generic_category().message(errno));
  };
  const FileDescriptor opened = openPlainFile(file);
  if (!opened.isOpen()) {
    fail();
  }
  struct stat status {};
  void* mapped = nullptr;
  const bool isKnown = fstat(opened.get(), &status) == 0;
  if (isKnown && status.st_size > 0) {
    size = static_cast<std::size_t>(status.st_size);
    mapped = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, opened.get(), 0);
  }
  if (!isKnown || mapped == MAP_FAILED) {
    fail();
  }
  start = static_cast<const char*>(mapped);
}

MappedFile::~MappedFile() {
  if (start != nullptr) {
    munmap(const_cast<char*>(start), size);
  }
}

}  // namespace zelvreg::machine
