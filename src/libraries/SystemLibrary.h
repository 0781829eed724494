// Libraries of the system, from its own folder alone. Windows only.
//
// A program's own folder is searched first for each library that it was linked with, before its
// first line runs. Only libraries that Windows always takes from its own folder may be linked with;
// what other libraries have is asked for here, when it is needed.
#ifndef ZELVREG_LIBRARIES_SYSTEM_LIBRARY_H
#define ZELVREG_LIBRARIES_SYSTEM_LIBRARY_H

#include <windows.h>

namespace zelvreg {

// From here on Windows itself looks in its folder alone, too, for what its own libraries ask for
// without a path. Before anything else a program does; not before Windows 7 with its update
// KB2533623.
void loadFromSystemFolderOnly();

// A function of a library, by its undecorated name; null if there is no such library or function.
// The library is loaded when it is first asked for, and stays. `library` is a name without a
// folder.
FARPROC systemFunction(const wchar_t* library, const char* name);

// The same as a function of the type that its header declares:
//   systemFunction<decltype(SetWindowTheme)>(L"uxtheme.dll", "SetWindowTheme")
template <class Function>
Function* systemFunction(const wchar_t* library, const char* name) {
  return reinterpret_cast<Function*>(reinterpret_cast<void*>(systemFunction(library, name)));
}

}  // namespace zelvreg

#endif
