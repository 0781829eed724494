#include "images/OwnMounts.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "machine/base/FileDescriptor.h"
#include "machine/base/MachineError.h"

namespace zelvreg::images {
namespace {

using machine::FileDescriptor;
using machine::MachineError;

// Every Linux has this folder, and nobody needs what is in it. It is covered in the process's own
// view alone, so nothing is left behind however the process ends.
constexpr const char* covered = "/proc/fs";

[[noreturn]] void refuse(const char* what) {
  throw MachineError(std::string("an image cannot be mounted here: ") + what + ": " +
                     std::strerror(errno) +
                     "; run zelvreg as root, or mount the disk and give it "
                     "with --offline");
}

void write(const char* file, std::string_view text) {
  const FileDescriptor opened(open(file, O_WRONLY | O_CLOEXEC));
  if (!opened.isOpen() ||
      ::write(opened.get(), text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
    refuse(file);
  }
}

// Whether own users were needed.
bool separate() {
  const std::string user = std::to_string(geteuid());
  const std::string group = std::to_string(getegid());
  if (unshare(CLONE_NEWNS) == 0) return false;
  if (errno != EPERM || unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) refuse("no own mounts");
  write("/proc/self/setgroups", "deny");
  write("/proc/self/uid_map", "0 " + user + " 1");
  write("/proc/self/gid_map", "0 " + group + " 1");
  return true;
}

struct OwnMounts {
  OwnMounts() : hasOwnUsers(separate()) {
    // What others mount meanwhile still comes in.
    if (mount(nullptr, "/", nullptr, MS_REC | MS_SLAVE, nullptr) != 0 ||
        mount("zelvreg", covered, "tmpfs", MS_NOSUID | MS_NODEV | MS_NOEXEC, "mode=700") != 0) {
      refuse(covered);
    }
  }
  bool hasOwnUsers;
};

// A process that this one forks makes its own again.
const OwnMounts& ownMounts() {
  static std::optional<OwnMounts> mounts;
  static pid_t maker = 0;
  if (maker != getpid()) {
    mounts.emplace();
    maker = getpid();
  }
  return *mounts;
}

}  // namespace

std::filesystem::path ownMountFolder() {
  ownMounts();
  return covered;
}

bool hasOwnUsers() { return ownMounts().hasOwnUsers; }

}  // namespace zelvreg::images
