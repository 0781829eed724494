#include "machine/calls/FileAccess.h"

#include <sys/xattr.h>

#include <cerrno>

#include "machine/Machine.h"
#include "machine/files/DiskAttributes.h"
#include "machine/security/Accounts.h"

namespace zelvreg::machine {

namespace {

constexpr LONG writeProtected = 19;
constexpr LONG notSameDevice = 17;
constexpr std::size_t driveRootLength = 3;  // "C:\"

bool hasList(const SECURITY_ATTRIBUTES* given) {
  return given != nullptr && given->lpSecurityDescriptor != nullptr;
}

// A driver of NTFS may give to everybody what is new on a disk. What the program keeps there holds
// what a repair took, so it is the administrators' alone, as the rest of the system's programs.
void closeOnDisk(const std::string& file, bool isFolder) {
  const char* name = "system.ntfs_acl";
  if (getxattr(file.c_str(), name, nullptr, 0) <= 0) return;
  const SecurityDescriptor closed =
      parseSddl(isFolder ? "O:BAG:BAD:P(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)"
                         : "O:BAG:BAD:P(A;;FA;;;SY)(A;;FA;;;BA)");
  const Bytes bytes = selfRelative(
      closed, OWNER_SECURITY_INFORMATION | GROUP_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION);
  setxattr(file.c_str(), name, bytes.data(), bytes.size(), 0);
}

}  // namespace

LONG errorCodeOf(int systemError) {
  switch (systemError) {
    case ENOENT:
      return ERROR_FILE_NOT_FOUND;
    case ENOTDIR:
      return ERROR_PATH_NOT_FOUND;
    case EACCES:
    case EPERM:
    case EISDIR:
      return ERROR_ACCESS_DENIED;
    case EEXIST:
      return ERROR_ALREADY_EXISTS;
    case ENOTEMPTY:
      return ERROR_DIR_NOT_EMPTY;
    case ENOSPC:
    case EDQUOT:
      return ERROR_DISK_FULL;
    case ENAMETOOLONG:
      return ERROR_INVALID_NAME;
    case EROFS:
      return writeProtected;
    case EXDEV:
      return notSameDevice;
    case ENOMEM:
      return ERROR_NOT_ENOUGH_MEMORY;
    default:
      return ERROR_GEN_FAILURE;
  }
}

std::string parentPath(const std::string& path) {
  const std::size_t end = path.find_last_of('\\');
  return end < driveRootLength ? path.substr(0, driveRootLength) : path.substr(0, end);
}

ACCESS_MASK grantedOn(const Machine& machine, const std::string& path, ACCESS_MASK desired) {
  return grantedAccess(machine.drives().records().security(path), machine.token(), desired,
                       fileRights);
}

DWORD attributesAt(const Machine& machine, const Place& place) {
  constexpr DWORD shown = 0x7FFF & ~FILE_ATTRIBUTE_NORMAL;
  const DiskAttributes* disk = machine.diskAttributes();
  const auto kept = disk != nullptr && !place.isLent ? disk->of(place.file) : std::nullopt;
  if (!kept) return machine.drives().attributes(place);
  const DWORD kind = place.isFolder ? FILE_ATTRIBUTE_DIRECTORY : 0;
  const DWORD attributes = (*kept & shown & ~FILE_ATTRIBUTE_DIRECTORY) | kind;
  return attributes == 0 ? FILE_ATTRIBUTE_NORMAL : attributes;
}

LONG mayDelete(const Machine& machine, const Place& place) {
  if (place.isLent || (attributesAt(machine, place) & FILE_ATTRIBUTE_READONLY) != 0) {
    return ERROR_ACCESS_DENIED;
  }
  if (grantedOn(machine, place.path(), DELETE_ACCESS) != 0) return ERROR_SUCCESS;
  const bool byFolder = grantedOn(machine, parentPath(place.path()), fileDeleteChild) != 0;
  return byFolder ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
}

LONG mayMake(const Machine& machine, const Place& place, ACCESS_MASK right) {
  if (!place.canBeMade()) return place.error;
  const bool granted = grantedOn(machine, parentPath(place.path()), right) != 0;
  return granted ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
}

mode_t modeOfNew(const SECURITY_ATTRIBUTES* given, bool isFolder) {
  const mode_t mode = isFolder ? 0777 : 0666;
  constexpr mode_t ofUser = 0700;
  return hasList(given) ? mode & ofUser : mode;
}

void wasMade(const Machine& machine, const Place& place, bool isFolder,
             const SECURITY_ATTRIBUTES* given) {
  Drives& drives = machine.drives();
  drives.changed(place.folder());
  if (machine.isOfflineDisk()) closeOnDisk(place.file, isFolder);
  FileRecords& records = drives.records();
  if (hasList(given)) {
    constexpr SECURITY_INFORMATION all =
        OWNER_SECURITY_INFORMATION | GROUP_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;
    records.setSecurity(place.path(), replaceParts({}, readDescriptor(given->lpSecurityDescriptor),
                                                   all, fileRights));
    return;
  }
  const std::string parent = parentPath(place.path());
  if (!records.hasSecurity(parent)) return;
  records.setSecurity(place.path(), inheritFrom(records.security(parent), isFolder, fileRights,
                                                machine.token().sids.front()));
}

}  // namespace zelvreg::machine
