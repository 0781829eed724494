// The Windows calls that turn names of accounts, and text forms of access lists, into their bytes
// and back.
#include <sddl.h>
#include <windows.h>

#include <cstdlib>
#include <cstring>

#include "machine/Machine.h"
#include "machine/base/MachineError.h"
#include "machine/calls/ApiSupport.h"
#include "machine/security/Accounts.h"
#include "unicode/Unicode.h"

namespace {

using namespace zelvreg;
using namespace zelvreg::machine;

constexpr LONG unknownRevision = 1305;

// A copy of `size` bytes that the caller frees with LocalFree; null if there is no memory.
void* localCopy(const void* bytes, std::size_t size) {
  void* copy = LocalAlloc(0, size);
  if (copy != nullptr) std::memcpy(copy, bytes, size);
  return copy;
}

}  // namespace

extern "C" {

BOOL LookupAccountNameW(LPCWSTR, LPCWSTR accountName, PSID sid, LPDWORD sidSize, LPWSTR domain,
                        LPDWORD domainSize, PSID_NAME_USE use) {
  const Machine* machine = machineInForce();
  if (machine == nullptr) return FALSE;
  if (const auto fault = machine->faults().next(ApiCall::LookupAccountName)) return failed(*fault);
  if (sidSize == nullptr || domainSize == nullptr) return failed(ERROR_INVALID_PARAMETER);
  const Account* account = machine->accounts().find(textOf(accountName));
  if (account == nullptr) {
    *sidSize = 0;
    *domainSize = 0;
    return failed(ERROR_NONE_MAPPED);
  }
  const auto sidNeeded = static_cast<DWORD>(account->sid.size());
  const auto domainNeeded = static_cast<DWORD>(account->domain.size() + 1);
  const bool enough = *sidSize >= sidNeeded && *domainSize >= domainNeeded;
  if (!enough || sid == nullptr || domain == nullptr) {
    *sidSize = sidNeeded;
    *domainSize = domainNeeded;
    return failed(ERROR_INSUFFICIENT_BUFFER);
  }
  std::memcpy(sid, account->sid.data(), sidNeeded);
  *sidSize = sidNeeded;
  *domainSize = giveText(account->domain, domain, *domainSize);
  if (use != nullptr) *use = account->use;
  return TRUE;
}

BOOL ConvertStringSecurityDescriptorToSecurityDescriptorW(LPCWSTR text, DWORD revision,
                                                          PSECURITY_DESCRIPTOR* descriptor,
                                                          PULONG size) {
  if (text == nullptr || descriptor == nullptr) return failed(ERROR_INVALID_PARAMETER);
  if (revision != SDDL_REVISION_1) return failed(unknownRevision);
  try {
    const SecurityDescriptor parsed = parseSddl(utf8(text));
    SECURITY_INFORMATION parts = DACL_SECURITY_INFORMATION;
    if (!parsed.owner.empty()) parts |= OWNER_SECURITY_INFORMATION;
    if (!parsed.group.empty()) parts |= GROUP_SECURITY_INFORMATION;
    const Bytes bytes = selfRelative(parsed, parts);
    *descriptor = localCopy(bytes.data(), bytes.size());
    if (size != nullptr) *size = static_cast<ULONG>(bytes.size());
    return *descriptor != nullptr ? TRUE : failed(ERROR_NOT_ENOUGH_MEMORY);
  } catch (const MachineError&) {
    return failed(ERROR_INVALID_PARAMETER);
  }
}

BOOL ConvertSecurityDescriptorToStringSecurityDescriptorW(PSECURITY_DESCRIPTOR descriptor,
                                                          DWORD revision, SECURITY_INFORMATION what,
                                                          LPWSTR* text, PULONG length) {
  if (descriptor == nullptr || text == nullptr) return failed(ERROR_INVALID_PARAMETER);
  if (revision != SDDL_REVISION_1) return failed(unknownRevision);
  SecurityDescriptor read = readDescriptor(descriptor);
  if ((what & OWNER_SECURITY_INFORMATION) == 0) read.owner.clear();
  if ((what & GROUP_SECURITY_INFORMATION) == 0) read.group.clear();
  if ((what & DACL_SECURITY_INFORMATION) == 0) {
    read.hasDacl = false;
    read.control = 0;
  }
  const std::u16string written = utf16(formatSddl(read));
  *text = static_cast<LPWSTR>(localCopy(written.c_str(), (written.size() + 1) * sizeof(char16_t)));
  if (length != nullptr) *length = static_cast<ULONG>(written.size() + 1);
  return *text != nullptr ? TRUE : failed(ERROR_NOT_ENOUGH_MEMORY);
}
}
