#include "machine/base/FileTraits.h"

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zelvreg::machine {
namespace {

constexpr mode_t permissionBits = 07777;

// The drivers of NTFS do not list these. The attributes come last: they may bar further changes.
constexpr std::array unlisted{"system.ntfs_crtime", "system.ntfs_acl", "system.ntfs_security",
                              "system.ntfs_attrib"};

std::optional<std::string> read(int file, const char* name) {
  for (;;) {
    const ssize_t size = fgetxattr(file, name, nullptr, 0);
    if (size < 0) return std::nullopt;
    std::string value(static_cast<std::size_t>(size), '\0');
    const ssize_t got = fgetxattr(file, name, value.data(), value.size());
    if (got >= 0) {
      value.resize(static_cast<std::size_t>(got));
      return value;
    }
    if (errno != ERANGE) return std::nullopt;
  }
}

std::vector<std::string> namesOf(int file) {
  std::vector<std::string> names;
  const ssize_t size = flistxattr(file, nullptr, 0);
  std::string list(size > 0 ? static_cast<std::size_t>(size) : 0, '\0');
  const ssize_t got = list.empty() ? 0 : flistxattr(file, list.data(), list.size());
  std::string_view rest(list.data(), got > 0 ? static_cast<std::size_t>(got) : 0);
  while (!rest.empty()) {
    const std::string_view name = rest.substr(0, rest.find('\0'));
    names.emplace_back(name);
    rest.remove_prefix(std::min(rest.size(), name.size() + 1));
  }
  names.insert(names.end(), unlisted.begin(), unlisted.end());
  return names;
}

// Labels of the system's own security modules, which it gives by rules of its own, and a time that
// decides nothing.
bool mayDiffer(std::string_view name) {
  return name.starts_with("security.") || name.starts_with("trusted.") || name == unlisted.front();
}

int copyOwnerAndMode(int from, int to) {
  struct stat old {};
  struct stat now {};
  if (fstat(from, &old) != 0 || fstat(to, &now) != 0) return errno;
  if (old.st_uid != now.st_uid || old.st_gid != now.st_gid) {
    // Giving a file to its old owner takes rights that an ordinary user need not have.
    [[maybe_unused]] const int ignored = fchown(to, old.st_uid, old.st_gid);
  }
  if (((old.st_mode ^ now.st_mode) & permissionBits) == 0) return 0;
  return fchmod(to, old.st_mode & permissionBits) == 0 ? 0 : errno;
}

}  // namespace

int copyTraits(int from, int to) {
  // Some drivers make an access list of the mode, which the true list then replaces.
  if (const int error = copyOwnerAndMode(from, to); error != 0) return error;
  for (const std::string& name : namesOf(from)) {
    const std::optional<std::string> value = read(from, name.c_str());
    if (!value || value == read(to, name.c_str())) continue;
    const bool isSet = fsetxattr(to, name.c_str(), value->data(), value->size(), 0) == 0;
    if (!isSet && !mayDiffer(name)) return errno;
  }
  return 0;
}

int copyTimes(int from, int to) {
  struct stat old {};
  if (fstat(from, &old) != 0) return errno;
  const std::array<timespec, 2> times{old.st_atim, old.st_mtim};
  return futimens(to, times.data()) == 0 ? 0 : errno;
}

}  // namespace zelvreg::machine
