// The Windows calls that delete, move and make files and folders, and those on attributes.
#include <fcntl.h>
#include <sys/stat.h>
#include <windows.h>

#include <cerrno>
#include <cstdio>
#include <string>

#include "machine/Machine.h"
#include "machine/base/FileDescriptor.h"
#include "machine/base/FileTraits.h"
#include "machine/base/PlainFile.h"
#include "machine/calls/ApiSupport.h"
#include "machine/calls/FileAccess.h"
#include "machine/files/DiskAttributes.h"
#include "unicode/Unicode.h"

namespace {

using namespace zelvreg;
using namespace zelvreg::machine;

constexpr LONG notSameDevice = 17;

// Where `to` puts the file `from`: the same file again is a new spelling of its name.
void respell(Place& to, const Place& from, std::u16string_view text) {
  if (to.file != from.file) return;
  const PathName name = parsePath(text, PathName());
  if (name.names.empty()) return;
  const std::size_t last = name.names.find_last_of(u'\\');
  to.file = to.folder() + "/" + utf8(std::u16string_view(name.names).substr(last + 1));
}

// Whether what is there may give way to the file that is moved over it.
LONG mayReplace(const Machine& machine, const Place& to, const Place& from, DWORD flags) {
  if (to.file == from.file) return ERROR_SUCCESS;
  if ((flags & MOVEFILE_REPLACE_EXISTING) == 0) return ERROR_ALREADY_EXISTS;
  return to.isFolder || from.isFolder ? ERROR_ACCESS_DENIED : mayDelete(machine, to);
}

// A new file takes over what is known of the one it replaces, such as who may read it, unless
// the new one was made with a list of its own. 0 or the error number.
int keepTraits(const Machine& machine, const Place& from, const Place& to) {
  const bool isReplaced = to.exists() && to.file != from.file;
  if (!isReplaced || machine.drives().records().hasSecurity(from.path())) return 0;
  const FileDescriptor old = openPlainFile(to.file);
  const FileDescriptor file = openPlainFile(from.file);
  return old.isOpen() && file.isOpen() ? copyTraits(old.get(), file.get()) : errno;
}

void writeOutFolder(const std::string& folder) {
  const FileDescriptor handle(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (handle.isOpen()) fsync(handle.get());
}

// A file's own list, or that of its folder, lets its attributes be read. Folders above that deny
// everything are passed through, as by everybody on Windows.
bool mayBeSeen(const Machine& machine, const Place& place) {
  return !machine.drives().records().hasAnySecurity() ||
         grantedOn(machine, place.path(), fileReadAttributes) != 0 ||
         grantedOn(machine, parentPath(place.path()), fileReadData) != 0;
}

// Whether moving a file takes more than its name in these rights.
LONG mayMove(const Machine& machine, const Place& from, const Place& to, DWORD flags) {
  if (!from.exists()) return from.error;
  const ACCESS_MASK right = from.isFolder ? fileAppendData : fileWriteData;
  const LONG refusal =
      to.exists() ? mayReplace(machine, to, from, flags) : mayMake(machine, to, right);
  if (refusal != ERROR_SUCCESS) return refusal;
  if (from.drive != to.drive) return notSameDevice;
  return grantedOn(machine, from.path(), DELETE_ACCESS) != 0 ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
}

}  // namespace

extern "C" {

BOOL DeleteFileW(LPCWSTR path) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return FALSE;
  if (const auto fault = machine->faults().next(ApiCall::DeleteFile)) return failed(*fault);
  const Place place = machine->drives().find(textOf(path));
  if (!place.exists()) return failed(place.error);
  if (place.isFolder) return failed(ERROR_ACCESS_DENIED);
  const LONG refusal = mayDelete(*machine, place);
  if (refusal != ERROR_SUCCESS) return failed(refusal);
  if (unlink(place.file.c_str()) != 0) return failed(errorCodeOf(errno));
  machine->drives().changed(place.folder());
  machine->drives().records().remove(place.path());
  return TRUE;
}

BOOL MoveFileExW(LPCWSTR fromPath, LPCWSTR toPath, DWORD flags) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return FALSE;
  if (const auto fault = machine->faults().next(ApiCall::MoveFile)) return failed(*fault);
  const Place from = machine->drives().find(textOf(fromPath));
  const std::u16string_view toText = textOf(toPath);
  Place to = machine->drives().find(toText);
  const LONG refusal = mayMove(*machine, from, to, flags);
  if (refusal != ERROR_SUCCESS) return failed(refusal);
  if (const int error = keepTraits(*machine, from, to); error != 0)
    return failed(errorCodeOf(error));
  respell(to, from, toText);
  if (rename(from.file.c_str(), to.file.c_str()) != 0) return failed(errorCodeOf(errno));
  if ((flags & MOVEFILE_WRITE_THROUGH) != 0) writeOutFolder(to.folder());
  machine->drives().changed(from.folder());
  machine->drives().changed(to.folder());
  machine->drives().records().move(from.path(), to.path());
  return TRUE;
}

BOOL CreateDirectoryW(LPCWSTR path, const SECURITY_ATTRIBUTES* security) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return FALSE;
  if (const auto fault = machine->faults().next(ApiCall::CreateDirectory)) return failed(*fault);
  const Place place = machine->drives().find(textOf(path));
  if (place.exists()) return failed(ERROR_ALREADY_EXISTS);
  const LONG refusal = mayMake(*machine, place, fileAppendData);
  if (refusal != ERROR_SUCCESS) return failed(refusal);
  if (mkdir(place.file.c_str(), modeOfNew(security, true)) != 0) return failed(errorCodeOf(errno));
  wasMade(*machine, place, true, security);
  return TRUE;
}

DWORD GetFileAttributesW(LPCWSTR path) {
  const auto refused = [](LONG code) {
    failed(code);
    return INVALID_FILE_ATTRIBUTES;
  };
  Machine* machine = machineInForce();
  if (machine == nullptr) return INVALID_FILE_ATTRIBUTES;
  if (const auto fault = machine->faults().next(ApiCall::GetFileAttributes)) return refused(*fault);
  const Place place = machine->drives().find(textOf(path));
  if (!place.exists()) return refused(place.error);
  if (!mayBeSeen(*machine, place)) return refused(ERROR_ACCESS_DENIED);
  return attributesAt(*machine, place);
}

// Drives are fixed disks, unless one is said to be another kind; of a letter without a folder
// nothing is known, or there is no such drive.
UINT GetDriveTypeW(LPCWSTR root) {
  Machine* machine = machineInForce();
  if (machine == nullptr || root == nullptr) return DRIVE_UNKNOWN;
  const std::u16string_view path = root;
  if (const UINT type = machine->drives().typeOf(path); type != 0) return type;
  // Asked before each file that is looked for, almost always with the root itself.
  const bool isRoot = path.size() == 3 && path[1] == u':' && isSeparator(path[2]);
  const bool isThere =
      isRoot ? machine->drives().hasDrive(path[0]) : machine->drives().findTrue(path).exists();
  if (isThere) return DRIVE_FIXED;
  return machine->drives().isUnknown(path) ? DRIVE_UNKNOWN : DRIVE_NO_ROOT_DIR;
}

BOOL SetFileAttributesW(LPCWSTR path, DWORD attributes) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return FALSE;
  if (const auto fault = machine->faults().next(ApiCall::SetFileAttributes)) return failed(*fault);
  const Place place = machine->drives().find(textOf(path));
  if (!place.exists()) return failed(place.error);
  if (grantedOn(*machine, place.path(), fileWriteAttributes) == 0)
    return failed(ERROR_ACCESS_DENIED);
  machine->drives().records().setAttributes(place.path(), place.isFolder, attributes);
  if (DiskAttributes* disk = machine->diskAttributes()) disk->ask(place.file, attributes);
  return TRUE;
}
}
