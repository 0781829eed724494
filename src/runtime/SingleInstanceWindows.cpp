#include <windows.h>

// These need <windows.h> before them.
#include <sddl.h>
#include <shlobj.h>

#include <array>
#include <string>

#include "runtime/SingleInstance.h"

namespace zelvreg {
namespace {

constexpr const wchar_t* fileName = L"\\zelvreg.lock";
// All rights for administrators and the system, none for others: who could open it could also keep
// it open.
constexpr const wchar_t* fileAccess = L"D:P(A;;FA;;;BA)(A;;FA;;;SY)";

// The new file, or INVALID_HANDLE_VALUE. Nobody can open it as long as it is open, and then it is
// gone, however the process ends. Of a link of this name the link itself is opened and goes: what
// it leads to is none of ours.
HANDLE openedFile(const std::wstring& path, SECURITY_ATTRIBUTES* security) {
  constexpr DWORD sharedWithNobody = 0;
  return CreateFileW(
      path.c_str(), GENERIC_WRITE | DELETE, sharedWithNobody, security, OPEN_ALWAYS,
      FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
}

// Only administrators can make files there, so nobody else can be first.
HANDLE openedForAll() {
  std::array<wchar_t, MAX_PATH> folder{};
  if (GetSystemWindowsDirectoryW(folder.data(), MAX_PATH) == 0) {
    return INVALID_HANDLE_VALUE;
  }
  SECURITY_ATTRIBUTES security{sizeof security, nullptr, FALSE};
  if (ConvertStringSecurityDescriptorToSecurityDescriptorW(
          fileAccess, SDDL_REVISION_1, &security.lpSecurityDescriptor, nullptr) == FALSE) {
    return INVALID_HANDLE_VALUE;
  }
  HANDLE file = openedFile(folder.data() + std::wstring(fileName), &security);
  const DWORD status = GetLastError();
  LocalFree(security.lpSecurityDescriptor);
  SetLastError(status);
  return file;
}

// Who is no administrator changes nothing but what is this user's, and must not keep others out.
HANDLE openedForUser() {
  std::array<wchar_t, MAX_PATH> folder{};
  if (FAILED(SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA, nullptr, 0, folder.data()))) {
    return INVALID_HANDLE_VALUE;
  }
  return openedFile(folder.data() + std::wstring(fileName), nullptr);
}

HANDLE newLock() {
  HANDLE file = openedForAll();
  return file == INVALID_HANDLE_VALUE && GetLastError() == ERROR_ACCESS_DENIED ? openedForUser()
                                                                               : file;
}

}  // namespace

SingleInstance::SingleInstance() : lock(newLock()) {}

SingleInstance::~SingleInstance() {
  if (isFirst()) {
    CloseHandle(lock);
  }
}

}  // namespace zelvreg
