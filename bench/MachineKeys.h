// The keys of a made machine, by what they are for.
#ifndef ZELVREG_BENCH_MACHINE_KEYS_H
#define ZELVREG_BENCH_MACHINE_KEYS_H

#include <algorithm>
#include <string>

#include "FilePool.h"
#include "RegistryText.h"

namespace zelvreg::bench {

struct Making {
  RegistryText& registry;
  const FilePool& files;
  Random& random;
  std::size_t keyCount;

  // How many of something there are, from how many there are in a registry of a million keys.
  [[nodiscard]] std::size_t share(std::size_t perMillion) const {
    return std::max<std::size_t>(1, keyCount / 1000 * perMillion / 1000);
  }
  // "{XXXXXXXX-XXXX-…}": the n-th of `count`, growing with n as an export lists them.
  [[nodiscard]] std::string guid(std::size_t number, std::size_t count) const;
};

// Fonts, shared DLLs, programs, help, firewall rules.
void writeSystemKeys(const Making& making);
// Uninstall records of the machine and of the user, and what starts at log-on.
void writeInstalledPrograms(const Making& making);
// File classes, COM classes, type libraries and interfaces, in both views, and the user's own.
void writeClasses(const Making& making);
// What the shell keeps for the user.
void writeUserKeys(const Making& making);
// Vendors' own keys until all keys are there; no scanner reads below their first level.
void writeVendorKeys(const Making& making);

inline constexpr const char* machineSoftware = "HKEY_LOCAL_MACHINE\\SOFTWARE";
inline constexpr const char* machineSoftware32 = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node";
inline constexpr const char* userSoftware = "HKEY_CURRENT_USER\\Software";

}  // namespace zelvreg::bench

#endif
