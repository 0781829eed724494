#include "keys/RestorePrivileges.h"

#include <windows.h>

#include <array>

#include "text/Wide.h"

namespace zelvreg {
namespace {

void setPrivileges(DWORD attributes) {
  HANDLE token = nullptr;
  if (OpenProcessToken(GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY, &token) ==
      FALSE) {
    return;
  }
  // As text: the system's own names for them are narrow or wide by how a program is built.
  constexpr std::array names{"SeBackupPrivilege", "SeRestorePrivilege", "SeTakeOwnershipPrivilege"};
  for (const char* name : names) {
    TOKEN_PRIVILEGES change{};
    change.PrivilegeCount = 1;
    change.Privileges[0].Attributes = attributes;
    if (LookupPrivilegeValueW(nullptr, Wide(name).get(), &change.Privileges[0].Luid) != FALSE) {
      AdjustTokenPrivileges(token, FALSE, &change, sizeof change, nullptr, nullptr);
    }
  }
  CloseHandle(token);
}

}  // namespace

RestorePrivileges::RestorePrivileges() { setPrivileges(SE_PRIVILEGE_ENABLED); }

RestorePrivileges::~RestorePrivileges() { setPrivileges(0); }

}  // namespace zelvreg
