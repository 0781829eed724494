// The calls of the shell.
#ifndef ZELVREG_MACHINE_API_SHELLAPI_H
#define ZELVREG_MACHINE_API_SHELLAPI_H

#include <windows.h>

extern "C" {
HINSTANCE ShellExecuteW(HWND window, LPCWSTR verb, LPCWSTR file, LPCWSTR parameters, LPCWSTR folder,
                        INT show);
}

#endif
