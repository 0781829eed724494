// The part of the Windows header of this name that this program calls.
#ifndef ZELVREG_MACHINE_API_SDDL_H
#define ZELVREG_MACHINE_API_SDDL_H

#include <windows.h>

inline constexpr DWORD SDDL_REVISION_1 = 1;

extern "C" {
BOOL ConvertStringSecurityDescriptorToSecurityDescriptorW(LPCWSTR text, DWORD revision,
                                                          PSECURITY_DESCRIPTOR* descriptor,
                                                          PULONG size);
BOOL ConvertSecurityDescriptorToStringSecurityDescriptorW(PSECURITY_DESCRIPTOR descriptor,
                                                          DWORD revision, SECURITY_INFORMATION what,
                                                          LPWSTR* text, PULONG length);
}

#endif
