#include "registry/RestorePrivileges.h"

#include <windows.h>

#include <array>

namespace zelvreg {
namespace {

void setPrivileges(DWORD attributes) {
  HANDLE token = nullptr;
  if (OpenProcessToken(GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY, &token) ==
      FALSE) {
    return;
  }
  constexpr std::array<const char*, 3> names{SE_BACKUP_NAME, SE_RESTORE_NAME,
                                             SE_TAKE_OWNERSHIP_NAME};
  for (const char* name : names) {
    TOKEN_PRIVILEGES change{};
    change.PrivilegeCount = 1;
    change.Privileges[0].Attributes = attributes;
    if (LookupPrivilegeValueA(nullptr, name, &change.Privileges[0].Luid) != FALSE) {
      AdjustTokenPrivileges(token, FALSE, &change, sizeof change, nullptr, nullptr);
    }
  }
  CloseHandle(token);
}

}  // namespace

RestorePrivileges::RestorePrivileges() { setPrivileges(SE_PRIVILEGE_ENABLED); }

RestorePrivileges::~RestorePrivileges() { setPrivileges(0); }

}  // namespace zelvreg
