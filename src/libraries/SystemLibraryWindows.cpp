#include <windows.h>

#include <array>
#include <string>

#include "libraries/SystemLibrary.h"

namespace zelvreg {
namespace {

// Its full path, since Windows 7 may lack the flag that names the folder. Empty if it is too long.
std::wstring pathOf(const wchar_t* library) {
  std::array<wchar_t, MAX_PATH> folder{};
  const UINT length = GetSystemDirectoryW(folder.data(), MAX_PATH);
  return length == 0 || length >= MAX_PATH ? std::wstring()
                                           : std::wstring(folder.data(), length) + L'\\' + library;
}

}  // namespace

void loadFromSystemFolderOnly() {
  SetDllDirectoryW(L"");
  if (auto* const setDirectories = systemFunction<decltype(SetDefaultDllDirectories)>(
          L"kernel32.dll", "SetDefaultDllDirectories")) {
    setDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
  }
}

FARPROC systemFunction(const wchar_t* library, const char* name) {
  const std::wstring path = pathOf(library);
  // What the library needs itself is looked for beside it, not beside the program.
  HMODULE loaded =
      path.empty() ? nullptr : LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
  return loaded == nullptr ? nullptr : GetProcAddress(loaded, name);
}

}  // namespace zelvreg
