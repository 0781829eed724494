// The Windows calls on the process's token: whose it is, and its privileges.
#include <windows.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

#include "machine/Machine.h"
#include "machine/calls/ApiSupport.h"
#include "machine/computer/Processes.h"
#include "machine/security/Security.h"

namespace {

using namespace zelvreg::machine;

constexpr LONG noSuchPrivilege = 1313;
constexpr LONG notAllAssigned = 1300;

struct Privilege {
  std::u16string_view name;
  DWORD number;
  bool Privileges::*enabled;
};
constexpr std::array<Privilege, 3> heldPrivileges{{
    {u"SeTakeOwnershipPrivilege", 9, &Privileges::takeOwnership},
    {u"SeBackupPrivilege", 17, &Privileges::backup},
    {u"SeRestorePrivilege", 18, &Privileges::restore},
}};

}  // namespace

extern "C" {

BOOL OpenProcessToken(HANDLE process, DWORD, HANDLE* token) {
  if (machineInForce() == nullptr) return FALSE;
  if (process != GetCurrentProcess()) return failed(ERROR_INVALID_HANDLE);
  *token = processTokenHandle();
  return TRUE;
}

BOOL LookupPrivilegeValueW(LPCWSTR, LPCWSTR name, LUID* value) {
  const auto* found = std::ranges::find(heldPrivileges, textOf(name), &Privilege::name);
  if (found == heldPrivileges.end()) return failed(noSuchPrivilege);
  *value = {found->number, 0};
  return TRUE;
}

BOOL AdjustTokenPrivileges(HANDLE token, BOOL disablesAll, PTOKEN_PRIVILEGES changes, DWORD,
                           PTOKEN_PRIVILEGES, PDWORD) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return FALSE;
  if (token != processTokenHandle()) return failed(ERROR_INVALID_HANDLE);
  Privileges& privileges = machine->processes().privileges;
  if (disablesAll != FALSE) privileges = {};
  LONG status = ERROR_SUCCESS;
  const DWORD count = disablesAll != FALSE ? 0 : changes->PrivilegeCount;
  for (DWORD index = 0; index < count; ++index) {
    const LUID_AND_ATTRIBUTES& change = changes->Privileges[index];
    const auto* found = std::ranges::find(heldPrivileges, change.Luid.LowPart, &Privilege::number);
    if (found == heldPrivileges.end()) {
      status = notAllAssigned;
    } else {
      privileges.*found->enabled = (change.Attributes & SE_PRIVILEGE_ENABLED) != 0;
    }
  }
  SetLastError(static_cast<DWORD>(status));
  return TRUE;
}

BOOL GetTokenInformation(HANDLE token, TOKEN_INFORMATION_CLASS what, LPVOID information, DWORD size,
                         PDWORD needed) {
  const Machine* machine = machineInForce();
  if (machine == nullptr) return FALSE;
  if (token != processTokenHandle()) return failed(ERROR_INVALID_HANDLE);
  if (what != TokenUser) return failed(ERROR_INVALID_PARAMETER);
  const Bytes& sid = machine->token().sids.front();
  *needed = static_cast<DWORD>(sizeof(TOKEN_USER) + sid.size());
  if (information == nullptr || size < *needed) return failed(ERROR_INSUFFICIENT_BUFFER);
  // The identifier follows the record that points to it.
  BYTE* copy = static_cast<BYTE*>(information) + sizeof(TOKEN_USER);
  const TOKEN_USER user{{copy, 0}};
  std::memcpy(information, &user, sizeof user);
  std::memcpy(copy, sid.data(), sid.size());
  return TRUE;
}
}
