#include <windows.h>

// This one needs <windows.h> before it.
#include <sddl.h>

#include "runtime/SingleInstance.h"

namespace zelvreg {
namespace {

constexpr const wchar_t* mutexName = L"Global\\ZelvaneFixRegistryProblems";
// All rights for administrators and the system, none for others: who could open it could also keep
// it open.
constexpr const wchar_t* mutexAccess = L"D:(A;;GA;;;BA)(A;;GA;;;SY)";

// Null for one that is there already, and for a name that this process may not use.
HANDLE newMutex() {
  SECURITY_ATTRIBUTES security{sizeof security, nullptr, FALSE};
  if (ConvertStringSecurityDescriptorToSecurityDescriptorW(
          mutexAccess, SDDL_REVISION_1, &security.lpSecurityDescriptor, nullptr) == FALSE) {
    return nullptr;
  }
  HANDLE mutex = CreateMutexW(&security, FALSE, mutexName);
  const bool isOld = GetLastError() == ERROR_ALREADY_EXISTS;
  LocalFree(security.lpSecurityDescriptor);
  if (mutex != nullptr && isOld) {
    CloseHandle(mutex);
    return nullptr;
  }
  return mutex;
}

}  // namespace

SingleInstance::SingleInstance() : mutex(newMutex()) {}

SingleInstance::~SingleInstance() {
  if (mutex != nullptr) {
    CloseHandle(mutex);
  }
}

}  // namespace zelvreg
