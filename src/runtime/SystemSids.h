// Identifiers of the system's own accounts, S-1-5-….
#ifndef ZELVREG_RUNTIME_SYSTEM_SIDS_H
#define ZELVREG_RUNTIME_SYSTEM_SIDS_H

#include <windows.h>

#include <array>

namespace zelvreg {

struct SystemSid {
  BYTE count;
  std::array<DWORD, 6> parts;
};
inline constexpr SystemSid administratorsSid{2, {32, 544}};
inline constexpr SystemSid systemSid{1, {18}};
// The service that installs the parts of Windows, as the system derives it from the name of the
// service "TrustedInstaller".
inline constexpr SystemSid installerOfWindowsSid{
    6, {80, 956008885, 3418522649, 1831038044, 1853292631, 2271478464}};

// Whether a valid identifier in memory is this one.
bool isSid(const BYTE* sid, const SystemSid& known);

}  // namespace zelvreg

#endif
