#include <fcntl.h>
#include <unistd.h>

#include <stdexcept>

#include "console/AppendedFile.h"

namespace zelvreg::console {

AppendedFile::AppendedFile(const std::string& path)
    : handle(open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOCTTY, 0644)) {
  if (handle < 0) {
    throw std::runtime_error(path + " cannot be written; check the folder and the free disk space");
  }
}

AppendedFile::~AppendedFile() { close(static_cast<int>(handle)); }

bool AppendedFile::append(std::string_view bytes) {
  return write(static_cast<int>(handle), bytes.data(), bytes.size()) ==
         static_cast<ssize_t>(bytes.size());
}

std::uint32_t processNumber() { return static_cast<std::uint32_t>(getpid()); }

}  // namespace zelvreg::console
