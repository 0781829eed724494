#include "images/ImagePrograms.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "machine/base/FileDescriptor.h"
#include "machine/base/MachineError.h"

namespace zelvreg::images {
namespace {

struct Needed {
  const char* program;
  const char* package;  // of Debian
};

constexpr std::array needed{
    Needed{"qemu-img", "qemu-utils"},
    Needed{"qemu-storage-daemon", "qemu-system-common"},
    Needed{"ntfs-3g", "ntfs-3g"},
};

bool isThere(const char* program, std::string_view folders) {
  while (!folders.empty()) {
    const std::string_view folder = folders.substr(0, folders.find(':'));
    folders.remove_prefix(std::min(folder.size() + 1, folders.size()));
    if (access((std::string(folder) + "/" + program).c_str(), X_OK) == 0) return true;
  }
  return false;
}

}  // namespace

std::string missingPrograms(std::string_view folders) {
  std::string programs;
  std::string packages;
  for (const Needed& entry : needed) {
    if (isThere(entry.program, folders)) continue;
    programs += (programs.empty() ? "" : ", ") + std::string(entry.program);
    packages += " " + std::string(entry.package);
  }
  return programs.empty() ? ""
                          : "an image needs programs that are not here: " + programs +
                                "; install them (Debian: apt-get install" + packages +
                                ", or ./run --image in a checkout)";
}

std::string missingPrograms() {
  const char* folders = std::getenv("PATH");
  return missingPrograms(folders == nullptr ? "" : folders);
}

std::string missingKernelSupport() {
  if (machine::FileDescriptor(open("/dev/fuse", O_RDWR | O_CLOEXEC)).isOpen()) return "";
  return std::string("an image cannot be mounted here: /dev/fuse: ") + std::strerror(errno) +
         "; run zelvreg as root, or as somebody who may open that device, or "
         "mount the disk and give it with --offline";
}

void requirePrograms() {
  for (const std::string& line : {missingPrograms(), missingKernelSupport()}) {
    if (!line.empty()) throw machine::MachineError(line);
  }
}

}  // namespace zelvreg::images
