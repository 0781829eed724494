// The Windows calls on the access lists of files.
#include <windows.h>

#include <cstring>

#include "machine/Machine.h"
#include "machine/calls/ApiSupport.h"
#include "machine/calls/FileAccess.h"

namespace {

using namespace zelvreg::machine;

ACCESS_MASK rightToSet(SECURITY_INFORMATION what) {
  ACCESS_MASK right = 0;
  constexpr SECURITY_INFORMATION owners = OWNER_SECURITY_INFORMATION | GROUP_SECURITY_INFORMATION;
  if ((what & owners) != 0) right |= WRITE_OWNER;
  if ((what & DACL_SECURITY_INFORMATION) != 0) right |= WRITE_DAC;
  if ((what & SACL_SECURITY_INFORMATION) != 0) right |= ACCESS_SYSTEM_SECURITY;
  return right;
}

}  // namespace

extern "C" {

BOOL GetFileSecurityW(LPCWSTR path, SECURITY_INFORMATION what, PSECURITY_DESCRIPTOR descriptor,
                      DWORD size, LPDWORD needed) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return FALSE;
  if (const auto fault = machine->faults().next(ApiCall::GetFileSecurity)) return failed(*fault);
  const Place place = machine->drives().find(textOf(path));
  if (!place.exists()) return failed(place.error);
  const bool readsAudit = (what & SACL_SECURITY_INFORMATION) != 0;
  const ACCESS_MASK right = READ_CONTROL | (readsAudit ? ACCESS_SYSTEM_SECURITY : 0);
  if (grantedOn(*machine, place.path(), right) == 0) return failed(ERROR_ACCESS_DENIED);
  const Bytes bytes = selfRelative(machine->drives().records().security(place.path()), what);
  if (needed != nullptr) *needed = static_cast<DWORD>(bytes.size());
  if (descriptor == nullptr || size < bytes.size()) return failed(ERROR_INSUFFICIENT_BUFFER);
  std::memcpy(descriptor, bytes.data(), bytes.size());
  return TRUE;
}

BOOL SetFileSecurityW(LPCWSTR path, SECURITY_INFORMATION what, PSECURITY_DESCRIPTOR descriptor) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return FALSE;
  if (const auto fault = machine->faults().next(ApiCall::SetFileSecurity)) return failed(*fault);
  if (descriptor == nullptr) return failed(ERROR_INVALID_SECURITY_DESCR);
  const Place place = machine->drives().find(textOf(path));
  if (!place.exists()) return failed(place.error);
  if (grantedOn(*machine, place.path(), rightToSet(what)) == 0) return failed(ERROR_ACCESS_DENIED);
  FileRecords& records = machine->drives().records();
  records.setSecurity(place.path(), replaceParts(records.security(place.path()),
                                                 readDescriptor(descriptor), what, fileRights));
  return TRUE;
}
}
