// The calls that list processes.
#ifndef ZELVREG_MACHINE_API_TLHELP32_H
#define ZELVREG_MACHINE_API_TLHELP32_H

#include <windows.h>

inline constexpr DWORD TH32CS_SNAPPROCESS = 2;

struct PROCESSENTRY32W {
  DWORD dwSize;
  DWORD th32ProcessID;
  WCHAR szExeFile[MAX_PATH];
};

extern "C" {
HANDLE CreateToolhelp32Snapshot(DWORD what, DWORD process);
BOOL Process32FirstW(HANDLE snapshot, PROCESSENTRY32W* entry);
BOOL Process32NextW(HANDLE snapshot, PROCESSENTRY32W* entry);
}

#endif
