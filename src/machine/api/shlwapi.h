// The part of the Windows header of this name that this program calls.
#ifndef ZELVREG_MACHINE_API_SHLWAPI_H
#define ZELVREG_MACHINE_API_SHLWAPI_H

#include <windows.h>

extern "C" {
LSTATUS SHDeleteKeyW(HKEY key, LPCWSTR subKey);
}

#endif
