// The narrow form of the calls on files, the process and accounts: text of the code page on its
// way to the wide ones.
#include <sddl.h>
#include <windows.h>
// Both stand on the one before.
#include <shellapi.h>
#include <tlhelp32.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "machine/ApiSupport.h"
#include "machine/CodePage.h"
#include "machine/Machine.h"

namespace {

using namespace zelvreg::machine;

const CodePage& page() {
  const Machine* machine = Machine::current();
  return machine != nullptr ? machine->codePage() : sharedCodePage(1252);
}

// A text as a wide call takes it; null stays null.
class Given {
 public:
  explicit Given(LPCSTR text) : isNull(text == nullptr) {
    if (!isNull) wide = page().decode(text);
  }
  operator LPCWSTR() const { return isNull ? nullptr : wide.c_str(); }  // NOLINT: that is its use

 private:
  bool isNull;
  std::u16string wide;
};

DWORD giveNarrow(const std::string& text, LPSTR buffer, DWORD size) {
  const auto needed = static_cast<DWORD>(text.size() + 1);
  if (buffer == nullptr || size < needed) return needed;
  std::memcpy(buffer, text.c_str(), needed);
  return needed - 1;
}

constexpr DWORD enough = 0x8000;

// What a call gives that is asked with ample room.
template <typename Call>
std::string given(Call call) {
  std::vector<char16_t> wide(enough);
  const DWORD length = call(wide.data(), enough);
  return page().encode({wide.data(), length});
}

DWORD giveCut(const std::string& text, LPSTR buffer, DWORD size, bool isList) {
  if (buffer == nullptr || size == 0) return 0;
  const std::size_t ends = isList ? 2 : 1;
  if (text.size() + (isList ? 1 : 1) <= size) {
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    if (isList && text.empty() && size > 1) buffer[1] = '\0';
    return static_cast<DWORD>(text.size());
  }
  if (size < ends) return 0;
  std::memcpy(buffer, text.data(), size - ends);
  std::fill_n(buffer + size - ends, ends, '\0');
  return static_cast<DWORD>(size - ends);
}

void copyFound(const WIN32_FIND_DATAW& wide, WIN32_FIND_DATAA* data) {
  *data = {wide.dwFileAttributes,
           wide.ftCreationTime,
           wide.ftLastAccessTime,
           wide.ftLastWriteTime,
           wide.nFileSizeHigh,
           wide.nFileSizeLow,
           0,
           0,
           {},
           {}};
  const std::string name = page().encode(wide.cFileName);
  std::memcpy(data->cFileName, name.data(), std::min<std::size_t>(name.size(), MAX_PATH - 1));
}

BOOL copyEntry(const PROCESSENTRY32W& wide, PROCESSENTRY32* entry) {
  const std::string name = page().encode(wide.szExeFile);
  entry->th32ProcessID = wide.th32ProcessID;
  giveNarrow(name, entry->szExeFile, MAX_PATH);
  return TRUE;
}

DWORD changeCase(LPSTR text, DWORD size, DWORD (*change)(LPWSTR, DWORD)) {
  std::u16string wide = page().decode({text, size});
  std::u16string changed = wide;
  change(changed.data(), static_cast<DWORD>(changed.size()));
  for (std::size_t at = 0; at < wide.size(); ++at) {
    if (page().encode({&changed[at], 1}) != "?") wide[at] = changed[at];
  }
  const std::string narrow = page().encode(wide);
  if (narrow.size() == size) std::memcpy(text, narrow.data(), size);
  return size;
}

}  // namespace

extern "C" {

DWORD GetEnvironmentVariableA(LPCSTR name, LPSTR buffer, DWORD size) {
  std::vector<char16_t> wide(enough);
  const DWORD length = GetEnvironmentVariableW(Given(name), wide.data(), enough);
  if (length == 0 && GetLastError() != 0) return 0;
  return giveNarrow(page().encode({wide.data(), length}), buffer, size);
}

DWORD ExpandEnvironmentStringsA(LPCSTR source, LPSTR buffer, DWORD size) {
  if (machineInForce() == nullptr) return 0;
  const Given text(source);
  std::vector<char16_t> wide(ExpandEnvironmentStringsW(text, nullptr, 0));
  ExpandEnvironmentStringsW(text, wide.data(), static_cast<DWORD>(wide.size()));
  const std::string narrow = page().encode({wide.data(), wide.size() - 1});
  giveNarrow(narrow, buffer, size);
  return static_cast<DWORD>(narrow.size() + 1);
}

BOOL LookupPrivilegeValueA(LPCSTR system, LPCSTR name, LUID* value) {
  return LookupPrivilegeValueW(Given(system), Given(name), value);
}

HANDLE CreateFileA(LPCSTR path, DWORD access, DWORD share, const SECURITY_ATTRIBUTES* security,
                   DWORD disposition, DWORD flags, HANDLE templateFile) {
  return CreateFileW(Given(path), access, share, security, disposition, flags, templateFile);
}

BOOL DeleteFileA(LPCSTR path) { return DeleteFileW(Given(path)); }

BOOL MoveFileExA(LPCSTR from, LPCSTR to, DWORD flags) {
  return MoveFileExW(Given(from), Given(to), flags);
}

BOOL CreateDirectoryA(LPCSTR path, const SECURITY_ATTRIBUTES* security) {
  return CreateDirectoryW(Given(path), security);
}

DWORD GetFileAttributesA(LPCSTR path) { return GetFileAttributesW(Given(path)); }

UINT GetDriveTypeA(LPCSTR root) { return GetDriveTypeW(Given(root)); }

BOOL SetFileAttributesA(LPCSTR path, DWORD attributes) {
  return SetFileAttributesW(Given(path), attributes);
}

BOOL GetFileSecurityA(LPCSTR path, SECURITY_INFORMATION what, PSECURITY_DESCRIPTOR descriptor,
                      DWORD size, LPDWORD needed) {
  return GetFileSecurityW(Given(path), what, descriptor, size, needed);
}

BOOL SetFileSecurityA(LPCSTR path, SECURITY_INFORMATION what, PSECURITY_DESCRIPTOR descriptor) {
  return SetFileSecurityW(Given(path), what, descriptor);
}

HANDLE FindFirstFileA(LPCSTR pattern, WIN32_FIND_DATAA* data) {
  WIN32_FIND_DATAW wide{};
  HANDLE search = FindFirstFileW(Given(pattern), &wide);
  if (search != INVALID_HANDLE_VALUE) copyFound(wide, data);
  return search;
}

BOOL FindNextFileA(HANDLE search, WIN32_FIND_DATAA* data) {
  WIN32_FIND_DATAW wide{};
  if (FindNextFileW(search, &wide) == FALSE) return FALSE;
  copyFound(wide, data);
  return TRUE;
}

DWORD GetModuleFileNameA(HMODULE module, LPSTR path, DWORD size) {
  if (machineInForce() == nullptr || path == nullptr || size == 0) return 0;
  const std::string file =
      given([module](LPWSTR wide, DWORD room) { return GetModuleFileNameW(module, wide, room); });
  if (file.size() < size) return giveNarrow(file, path, size);
  std::memcpy(path, file.data(), size - 1);
  path[size - 1] = '\0';
  failed(ERROR_INSUFFICIENT_BUFFER);
  return size;
}

DWORD GetPrivateProfileSectionA(LPCSTR section, LPSTR buffer, DWORD size, LPCSTR file) {
  const std::string text = given([&](LPWSTR wide, DWORD room) {
    return GetPrivateProfileSectionW(Given(section), wide, room, Given(file));
  });
  return giveCut(text, buffer, size, true);
}

DWORD GetPrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR fallback, LPSTR buffer,
                               DWORD size, LPCSTR file) {
  const std::string text = given([&](LPWSTR wide, DWORD room) {
    return GetPrivateProfileStringW(Given(section), Given(key), Given(fallback), wide, room,
                                    Given(file));
  });
  return giveCut(text, buffer, size, section == nullptr || key == nullptr);
}

UINT GetPrivateProfileIntA(LPCSTR section, LPCSTR key, int fallback, LPCSTR file) {
  return GetPrivateProfileIntW(Given(section), Given(key), fallback, Given(file));
}

BOOL WritePrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR text, LPCSTR file) {
  return WritePrivateProfileStringW(Given(section), Given(key), Given(text), Given(file));
}

HWND FindWindowA(LPCSTR className, LPCSTR title) {
  return FindWindowW(Given(className), Given(title));
}

LRESULT SendMessageA(HWND window, UINT message, WPARAM first, LPARAM second) {
  return SendMessageW(window, message, first, second);
}

HANDLE CreateFileMappingA(HANDLE file, const SECURITY_ATTRIBUTES* security, DWORD protection,
                          DWORD sizeHigh, DWORD sizeLow, LPCSTR name) {
  return CreateFileMappingW(file, security, protection, sizeHigh, sizeLow, Given(name));
}

DWORD CharLowerBuffA(LPSTR text, DWORD size) { return changeCase(text, size, CharLowerBuffW); }

DWORD CharUpperBuffA(LPSTR text, DWORD size) { return changeCase(text, size, CharUpperBuffW); }

BOOL LookupAccountNameA(LPCSTR system, LPCSTR accountName, PSID sid, LPDWORD sidSize, LPSTR domain,
                        LPDWORD domainSize, PSID_NAME_USE use) {
  std::array<char16_t, MAX_PATH> wide{};
  const BOOL done = LookupAccountNameW(Given(system), Given(accountName), sid, sidSize,
                                       domain == nullptr ? nullptr : wide.data(), domainSize, use);
  if (done != FALSE) {
    *domainSize = giveNarrow(page().encode(wide.data()), domain, *domainSize + 1);
  }
  return done;
}

BOOL ConvertStringSecurityDescriptorToSecurityDescriptorA(LPCSTR text, DWORD revision,
                                                          PSECURITY_DESCRIPTOR* descriptor,
                                                          PULONG size) {
  return ConvertStringSecurityDescriptorToSecurityDescriptorW(Given(text), revision, descriptor,
                                                              size);
}

BOOL ConvertSecurityDescriptorToStringSecurityDescriptorA(PSECURITY_DESCRIPTOR descriptor,
                                                          DWORD revision, SECURITY_INFORMATION what,
                                                          LPSTR* text, PULONG length) {
  LPWSTR wide = nullptr;
  if (text == nullptr || ConvertSecurityDescriptorToStringSecurityDescriptorW(
                             descriptor, revision, what, &wide, length) == FALSE) {
    return text == nullptr ? failed(ERROR_INVALID_PARAMETER) : FALSE;
  }
  const std::string narrow = page().encode(wide);
  LocalFree(wide);
  *text = static_cast<LPSTR>(LocalAlloc(0, narrow.size() + 1));
  std::memcpy(*text, narrow.c_str(), narrow.size() + 1);
  return TRUE;
}

BOOL Process32First(HANDLE snapshot, PROCESSENTRY32* entry) {
  PROCESSENTRY32W wide{};
  return Process32FirstW(snapshot, &wide) != FALSE && copyEntry(wide, entry) ? TRUE : FALSE;
}

BOOL Process32Next(HANDLE snapshot, PROCESSENTRY32* entry) {
  return Process32First(snapshot, entry);
}

UINT WinExec(LPCSTR commandLine, UINT) {
  STARTUPINFOW startup{};
  PROCESS_INFORMATION started{};
  std::u16string wide = page().decode(commandLine);
  if (CreateProcessW(nullptr, wide.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                     &started) == FALSE) {
    return 0;
  }
  CloseHandle(started.hProcess);
  CloseHandle(started.hThread);
  return 33;
}

HINSTANCE ShellExecuteA(HWND window, LPCSTR verb, LPCSTR file, LPCSTR parameters, LPCSTR folder,
                        INT show) {
  return ShellExecuteW(window, Given(verb), Given(file), Given(parameters), Given(folder), show);
}
}
