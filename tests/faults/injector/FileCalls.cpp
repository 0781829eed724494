#include "FileCalls.h"

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/fs.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <filesystem>
#include <utility>
#include <vector>

namespace zelvreg::faults {
namespace {

// How a call names its file: by a path from the present folder, by a path from an open folder (in
// the argument before), by a descriptor, or not at all.
enum class Names { Path, PathFrom, Descriptor, None };

constexpr int none = -1;

struct Entry {
  std::uint64_t call;
  const char* kind;
  Names names;
  int argument;        // that names it
  int size = none;     // the argument that says how many bytes
  bool grows = false;  // takes space of the disk
  int second = none;   // the argument that names another file in the same way
};

constexpr std::array entries{
    Entry{SYS_open, "open", Names::Path, 0},
    Entry{SYS_openat, "open", Names::PathFrom, 1},
    Entry{SYS_openat2, "open", Names::PathFrom, 1},
    Entry{SYS_creat, "create", Names::Path, 0, none, true},
    Entry{SYS_close, "close", Names::Descriptor, 0},
    Entry{SYS_read, "read", Names::Descriptor, 0, 2},
    Entry{SYS_pread64, "read", Names::Descriptor, 0, 2},
    Entry{SYS_readv, "read", Names::Descriptor, 0},
    Entry{SYS_preadv, "read", Names::Descriptor, 0},
    Entry{SYS_write, "write", Names::Descriptor, 0, 2, true},
    Entry{SYS_pwrite64, "write", Names::Descriptor, 0, 2, true},
    Entry{SYS_writev, "write", Names::Descriptor, 0, none, true},
    Entry{SYS_pwritev, "write", Names::Descriptor, 0, none, true},
    Entry{SYS_sendfile, "write", Names::Descriptor, 0, 3, true},
    Entry{SYS_copy_file_range, "write", Names::Descriptor, 2, 4, true},
    Entry{SYS_ioctl, "clone", Names::Descriptor, 0, none, true},
    Entry{SYS_ftruncate, "truncate", Names::Descriptor, 0, none, true},
    Entry{SYS_truncate, "truncate", Names::Path, 0, none, true},
    Entry{SYS_fallocate, "truncate", Names::Descriptor, 0, none, true},
    Entry{SYS_mmap, "map", Names::Descriptor, 4},
    Entry{SYS_msync, "sync", Names::Descriptor, 0},
    Entry{SYS_fsync, "sync", Names::Descriptor, 0},
    Entry{SYS_fdatasync, "sync", Names::Descriptor, 0},
    Entry{SYS_syncfs, "sync", Names::Descriptor, 0},
    Entry{SYS_stat, "stat", Names::Path, 0},
    Entry{SYS_lstat, "stat", Names::Path, 0},
    Entry{SYS_fstat, "stat", Names::Descriptor, 0},
    Entry{SYS_newfstatat, "stat", Names::PathFrom, 1},
    Entry{SYS_statx, "stat", Names::PathFrom, 1},
    Entry{SYS_access, "access", Names::Path, 0},
    Entry{SYS_faccessat, "access", Names::PathFrom, 1},
    Entry{SYS_faccessat2, "access", Names::PathFrom, 1},
    Entry{SYS_statfs, "statfs", Names::Path, 0},
    Entry{SYS_fstatfs, "statfs", Names::Descriptor, 0},
    Entry{SYS_readlink, "readlink", Names::Path, 0},
    Entry{SYS_readlinkat, "readlink", Names::PathFrom, 1},
    Entry{SYS_getdents64, "list", Names::Descriptor, 0},
    Entry{SYS_rename, "rename", Names::Path, 0, none, false, 1},
    Entry{SYS_renameat, "rename", Names::PathFrom, 1, none, false, 3},
    Entry{SYS_renameat2, "rename", Names::PathFrom, 1, none, false, 3},
    Entry{SYS_link, "link", Names::Path, 0, none, true, 1},
    Entry{SYS_linkat, "link", Names::PathFrom, 1, none, true, 3},
    Entry{SYS_symlink, "link", Names::Path, 1, none, true},
    Entry{SYS_symlinkat, "link", Names::PathFrom, 2, none, true},
    Entry{SYS_unlink, "unlink", Names::Path, 0},
    Entry{SYS_unlinkat, "unlink", Names::PathFrom, 1},
    Entry{SYS_rmdir, "unlink", Names::Path, 0},
    Entry{SYS_mkdir, "mkdir", Names::Path, 0, none, true},
    Entry{SYS_mkdirat, "mkdir", Names::PathFrom, 1, none, true},
    Entry{SYS_flock, "lock", Names::Descriptor, 0},
    Entry{SYS_fcntl, "lock", Names::Descriptor, 0},
    Entry{SYS_chmod, "mode", Names::Path, 0},
    Entry{SYS_fchmod, "mode", Names::Descriptor, 0},
    Entry{SYS_fchmodat, "mode", Names::PathFrom, 1},
    Entry{SYS_chown, "owner", Names::Path, 0},
    Entry{SYS_fchown, "owner", Names::Descriptor, 0},
    Entry{SYS_fchownat, "owner", Names::PathFrom, 1},
    Entry{SYS_utimensat, "times", Names::PathFrom, 1},
    Entry{SYS_getxattr, "getxattr", Names::Path, 0},
    Entry{SYS_lgetxattr, "getxattr", Names::Path, 0},
    Entry{SYS_fgetxattr, "getxattr", Names::Descriptor, 0},
    Entry{SYS_listxattr, "getxattr", Names::Path, 0},
    Entry{SYS_llistxattr, "getxattr", Names::Path, 0},
    Entry{SYS_flistxattr, "getxattr", Names::Descriptor, 0},
    Entry{SYS_setxattr, "setxattr", Names::Path, 0, none, true},
    Entry{SYS_lsetxattr, "setxattr", Names::Path, 0, none, true},
    Entry{SYS_fsetxattr, "setxattr", Names::Descriptor, 0, none, true},
    Entry{SYS_removexattr, "setxattr", Names::Path, 0},
    Entry{SYS_fremovexattr, "setxattr", Names::Descriptor, 0},
    Entry{SYS_chdir, "chdir", Names::Path, 0},
    Entry{SYS_mount, "mount", Names::Path, 1},
    Entry{SYS_umount2, "mount", Names::Path, 0},
    Entry{SYS_execve, "exec", Names::Path, 0},
    Entry{SYS_fork, "start", Names::None, none},
    Entry{SYS_clone, "start", Names::None, none},
};

bool isBelow(const std::string& path, std::string_view folder) {
  return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

std::string fileOf(const Tracee& tracee, const Entry& entry, int argument) {
  const auto number = [&tracee](int index) { return static_cast<int>(tracee.argument(index)); };
  switch (entry.names) {
    case Names::Path:
      return tracee.pathFrom(AT_FDCWD, tracee.argument(argument));
    case Names::PathFrom:
      return tracee.pathFrom(number(argument - 1), tracee.argument(argument));
    case Names::Descriptor:
      return tracee.pathOf(number(argument));
    case Names::None:
      break;
  }
  return "";
}

// A thread is part of its process.
bool isProcess(std::uint64_t flags) { return (flags & CLONE_THREAD) == 0; }

// Calls that do many things, of which one is about a file.
bool isOther(const Tracee& tracee) {
  const std::uint64_t second = tracee.argument(1);
  switch (tracee.call()) {
    case SYS_fcntl:
      return second != F_SETLK && second != F_SETLKW && second != F_OFD_SETLK &&
             second != F_OFD_SETLKW;
    case SYS_ioctl:
      return second != FICLONE && second != FICLONERANGE;
    case SYS_mmap:
      return (tracee.argument(3) & MAP_ANONYMOUS) != 0;
    case SYS_clone:
      return !isProcess(tracee.argument(0));
    default:
      return false;
  }
}

// What the program does for itself besides: processes that it starts, and files of its own mounts.
bool isOwnMatter(const Entry& entry, const std::string& path, const Counted& counted) {
  return entry.names == Names::None || entry.call == SYS_execve ||
         (!counted.mounts.empty() && isBelow(path, counted.mounts));
}

const std::string& ownProgram() {
  static const std::string program = std::filesystem::read_symlink("/proc/self/exe").string();
  return program;
}

// What was asked to be made, as well as opened.
bool makesFile(const Tracee& tracee) {
  return (tracee.call() == SYS_openat && (tracee.argument(2) & O_CREAT) != 0) ||
         (tracee.call() == SYS_open && (tracee.argument(1) & O_CREAT) != 0);
}

}  // namespace

bool stopAtFileCalls() {
  std::vector<sock_filter> filter{
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
  };
  for (const Entry& entry : entries) {
    filter.push_back(
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<std::uint32_t>(entry.call), 0, 1));
    filter.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRACE));
  }
  filter.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
  sock_fprog program{.len = static_cast<unsigned short>(filter.size()), .filter = filter.data()};
  const auto install = [&program] {
    return prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
  };
  // Who is no administrator may do so only after giving up all that a program could add.
  return install() || (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && install());
}

std::optional<FileCall> fileCall(const Tracee& tracee, const Counted& counted) {
  const auto* const entry = std::ranges::find(entries, tracee.call(), &Entry::call);
  if (entry == entries.end() || isOther(tracee)) {
    return std::nullopt;
  }
  const std::string program = tracee.program();
  const bool isOwn = program == counted.program;
  if (program == ownProgram()) {
    return std::nullopt;  // not yet that which it is to become
  }
  std::string path = fileOf(tracee, *entry, entry->argument);
  const bool isOnDisk =
      isBelow(path, counted.below) ||
      (entry->second != none && isBelow(fileOf(tracee, *entry, entry->second), counted.below));
  if (!isOnDisk && !(isOwn && isOwnMatter(*entry, path, counted))) {
    return std::nullopt;
  }
  const bool isMade = makesFile(tracee);
  return FileCall{.kind = (isOwn ? "" : std::filesystem::path(program).filename().string() + "/") +
                          (isMade ? "create" : entry->kind),
                  .path = std::move(path),
                  .bytes = entry->size == none ? 0 : tracee.argument(entry->size),
                  .sizeArgument = entry->size,
                  .isOnDisk = isOnDisk,
                  .takesSpace = isOnDisk && (entry->grows || isMade),
                  .isDoneEvenIfItFails = entry->call == SYS_close};
}

}  // namespace zelvreg::faults
