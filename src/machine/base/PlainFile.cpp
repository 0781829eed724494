#include "machine/base/PlainFile.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>

#include "machine/base/MachineError.h"

namespace zelvreg::machine {

FileDescriptor openPlainFile(const std::filesystem::path& file) {
  // Asked before opening, since a device may act when it is opened, and again of what was opened.
  struct stat status {};
  if (stat(file.c_str(), &status) != 0) return FileDescriptor();
  if (S_ISREG(status.st_mode)) {
    FileDescriptor opened(open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!opened.isOpen() || fstat(opened.get(), &status) != 0) return FileDescriptor();
    if (S_ISREG(status.st_mode)) return opened;
  }
  errno = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
  return FileDescriptor();
}

std::string readWholeFile(const std::filesystem::path& file) {
  const FileDescriptor in = openPlainFile(file);
  struct stat status {};
  if (in.isOpen()) fstat(in.get(), &status);
  std::string content;
  std::array<char, 65536> buffer{};
  for (;;) {
    const ssize_t size = in.isOpen() ? read(in.get(), buffer.data(), buffer.size()) : -1;
    if (size == 0) {
      if (content.size() >= static_cast<std::uint64_t>(status.st_size)) return content;
      throw MachineError(file.string() + " was cut short while it was read; try again");
    }
    if (size < 0 && in.isOpen() && errno == EINTR) continue;
    if (size < 0) {
      const std::string reason =
          errno == EINVAL ? "it is a pipe or a device" : std::strerror(errno);
      throw MachineError(file.string() + " cannot be read: " + reason +
                         "; check that it is a file and that you may read it");
    }
    content.append(buffer.data(), static_cast<std::size_t>(size));
  }
}

std::size_t readAt(const FileDescriptor& file, std::uint64_t offset, void* bytes,
                   std::size_t size) {
  std::size_t total = 0;
  while (total < size) {
    const ssize_t got = pread(file.get(), static_cast<char*>(bytes) + total, size - total,
                              static_cast<off_t>(offset + total));
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) break;
    total += static_cast<std::size_t>(got);
  }
  return total;
}

std::string placeOf(const std::filesystem::filesystem_error& failure,
                    const std::filesystem::path& above) {
  return failure.path1().empty() ? "a folder in " + above.string() : failure.path1().string();
}

FileStamp stampOf(const std::filesystem::path& file) {
  struct stat now {};
  if (lstat(file.c_str(), &now) != 0) return {};
  return {static_cast<std::int64_t>(now.st_ino), now.st_size, now.st_mtim.tv_sec,
          now.st_mtim.tv_nsec};
}

}  // namespace zelvreg::machine
