// The Windows calls that open, read and write files.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <windows.h>

#include <cerrno>
#include <cstring>

#include "machine/Machine.h"
#include "machine/calls/ApiSupport.h"
#include "machine/calls/FileAccess.h"
#include "machine/files/OpenFiles.h"

namespace {

using namespace zelvreg::machine;

HANDLE failedOpen(LONG code) {
  failed(code);
  return INVALID_HANDLE_VALUE;
}

// Whether a file goes on where reading has found its end: it was cut short in the meantime, or its
// disk gives no more.
bool isBeforeEnd(int file) {
  struct stat status {};
  return fstat(file, &status) == 0 && S_ISREG(status.st_mode) &&
         lseek(file, 0, SEEK_CUR) < status.st_size;
}

bool makesEmpty(DWORD disposition) { return disposition == CREATE_ALWAYS; }

// Whether a file that is there may be opened so. ERROR_SUCCESS or the answer.
LONG mayOpen(const Machine& machine, const Place& place, DWORD access, DWORD disposition,
             DWORD attributes) {
  if (disposition == CREATE_NEW) return ERROR_FILE_EXISTS;
  if (place.isFolder) return ERROR_ACCESS_DENIED;
  const DWORD has = attributesAt(machine, place);
  const bool writes = (fileRights.map(access) & (fileWriteData | fileAppendData)) != 0;
  const bool readsOnly = place.isLent || (has & FILE_ATTRIBUTE_READONLY) != 0;
  if (readsOnly && (writes || makesEmpty(disposition))) {
    return ERROR_ACCESS_DENIED;
  }
  // A hidden or a system file is made anew only by one who says that it is to be one.
  constexpr DWORD special = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
  if (makesEmpty(disposition) && (has & special & ~attributes) != 0) return ERROR_ACCESS_DENIED;
  const ACCESS_MASK desired = access | (makesEmpty(disposition) ? fileWriteData : 0);
  if (desired == 0) return ERROR_SUCCESS;
  return grantedOn(machine, place.path(), desired) != 0 ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
}

// The rights that the handle gives for reading and writing. A new file is its maker's in full.
OpenFile rightsOf(const Machine& machine, const Place& place, DWORD access) {
  const ACCESS_MASK granted = place.exists() && access != 0
                                  ? grantedOn(machine, place.path(), access)
                                  : fileRights.map(access);
  OpenFile file;
  file.mayRead = (granted & fileReadData) != 0;
  file.mayWrite = (granted & (fileWriteData | fileAppendData)) != 0;
  return file;
}

int openFlags(const OpenFile& file, const Place& place, DWORD disposition) {
  int flags = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
  const bool writes = file.mayWrite || makesEmpty(disposition);
  flags |= !writes ? O_RDONLY : file.mayRead ? O_RDWR : O_WRONLY;
  if (!place.exists()) return flags | O_CREAT | O_EXCL;
  return makesEmpty(disposition) ? flags | O_TRUNC : flags;
}

OpenFile* fileOf(HANDLE handle) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return nullptr;
  OpenFile* file = machine->openFiles().file(handle);
  if (file == nullptr) failed(ERROR_INVALID_HANDLE);
  return file;
}

}  // namespace

extern "C" {

HANDLE CreateFileW(LPCWSTR path, DWORD access, DWORD, const SECURITY_ATTRIBUTES* security,
                   DWORD disposition, DWORD flags, HANDLE) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return INVALID_HANDLE_VALUE;
  if (const auto fault = machine->faults().next(ApiCall::CreateFile)) return failedOpen(*fault);
  if (disposition < CREATE_NEW || disposition > OPEN_ALWAYS) {
    return failedOpen(ERROR_INVALID_PARAMETER);
  }
  const Place place = machine->drives().find(textOf(path));
  if (!place.exists() && disposition == OPEN_EXISTING) return failedOpen(place.error);
  const LONG refusal = place.exists() ? mayOpen(*machine, place, access, disposition, flags)
                                      : mayMake(*machine, place, fileWriteData);
  if (refusal != ERROR_SUCCESS) return failedOpen(refusal);
  OpenFile file = rightsOf(*machine, place, access);
  const mode_t mode = modeOfNew(security, false);
  file.file = FileDescriptor(open(place.file.c_str(), openFlags(file, place, disposition), mode));
  if (!file.file.isOpen()) return failedOpen(errorCodeOf(errno));
  if (!place.exists()) wasMade(*machine, place, false, security);
  if (!place.exists() || makesEmpty(disposition)) {
    machine->drives().records().setAttributes(place.path(), false, flags | FILE_ATTRIBUTE_ARCHIVE);
  }
  const bool replaced = place.exists() && disposition != OPEN_EXISTING;
  SetLastError(static_cast<DWORD>(replaced ? ERROR_ALREADY_EXISTS : ERROR_SUCCESS));
  return machine->openFiles().add(std::move(file));
}

BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD size, LPDWORD read, void*) {
  if (read != nullptr) *read = 0;
  const OpenFile* open = fileOf(file);
  if (open == nullptr) return FALSE;
  if (const auto fault = Machine::current()->faults().next(ApiCall::ReadFile)) {
    return failed(*fault);
  }
  if (!open->mayRead) return failed(ERROR_ACCESS_DENIED);
  DWORD total = 0;
  while (total < size) {
    const ssize_t got = ::read(open->file.get(), static_cast<char*>(buffer) + total, size - total);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return failed(errorCodeOf(errno));
    if (got == 0 && isBeforeEnd(open->file.get())) return failed(errorCodeOf(EIO));
    if (got == 0) break;
    total += static_cast<DWORD>(got);
  }
  if (read != nullptr) *read = total;
  return TRUE;
}

BOOL WriteFile(HANDLE file, LPCVOID data, DWORD size, LPDWORD written, void*) {
  if (written != nullptr) *written = 0;
  const OpenFile* open = fileOf(file);
  if (open == nullptr) return FALSE;
  if (const auto fault = Machine::current()->faults().next(ApiCall::WriteFile)) {
    return failed(*fault);
  }
  if (!open->mayWrite) return failed(ERROR_ACCESS_DENIED);
  DWORD total = 0;
  while (total < size) {
    const ssize_t put =
        write(open->file.get(), static_cast<const char*>(data) + total, size - total);
    if (put < 0 && errno == EINTR) continue;
    if (put < 0) return failed(errorCodeOf(errno));
    total += static_cast<DWORD>(put);
    if (written != nullptr) *written = total;
  }
  return TRUE;
}

BOOL FlushFileBuffers(HANDLE file) {
  const OpenFile* open = fileOf(file);
  if (open == nullptr) return FALSE;
  if (!open->mayWrite) return failed(ERROR_ACCESS_DENIED);
  return fsync(open->file.get()) == 0 ? TRUE : failed(errorCodeOf(errno));
}

BOOL CloseHandle(HANDLE handle) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return FALSE;
  // The process's own stand-in handles need no closing.
  if (handle == GetCurrentProcess() || handle == processTokenHandle()) return TRUE;
  OpenFiles& open = machine->openFiles();
  return open.close(handle) ? TRUE : failed(ERROR_INVALID_HANDLE);
}
}
