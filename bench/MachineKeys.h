// The keys of a made machine, by what they are for.
#ifndef ZELVREG_BENCH_MACHINE_KEYS_H
#define ZELVREG_BENCH_MACHINE_KEYS_H

#include <algorithm>
#include <string>

#include "Cases.h"
#include "FilePool.h"
#include "Labels.h"
#include "RegistryText.h"

namespace zelvreg::bench {

struct Making {
  RegistryText& registry;
  const FilePool& files;
  Random& random;
  std::size_t keyCount;
  Cases& paths;
  Cases& texts;
  Cases& commands;
  const LabelSink& labels;

  // How many of something there are, from how many there are in a registry of a million keys.
  [[nodiscard]] std::size_t share(std::size_t perMillion) const {
    return std::max<std::size_t>(1, keyCount / 1000 * perMillion / 1000);
  }
  // How many hard references each place has that can have some.
  [[nodiscard]] std::size_t casesOfPlace() const { return 3 + share(40); }
  // "{XXXXXXXX-XXXX-…}": the n-th of `count`, growing with n as an export lists them.
  [[nodiscard]] std::string guid(std::size_t number, std::size_t count) const;

  // Labels a reference of a key, whose path begins with its root. It is reported with this code.
  void label(std::string_view kind, const std::string& path, std::string_view value,
             const Reference& reference) const;
};

// Fonts, shared DLLs, programs, firewall rules.
void writeSystemKeys(const Making& making);
// The lists of help files, and the help of snap-ins.
void writeHelpKeys(const Making& making);
// Uninstall records of the machine and of the user.
void writeUninstallRecords(const Making& making);
// What starts at log-on.
void writeStartupPrograms(const Making& making);
// Extensions, content types, file classes.
void writeFileClasses(const Making& making);
// COM classes, type libraries and interfaces, in both views, and the user's own.
void writeComponents(const Making& making);
// What is found only by way of other keys: variables, a product, a group of services.
void writeEnvironment(const Making& making);
// What the shell keeps for the user.
void writeUserKeys(const Making& making);
// Vendors' own keys until all keys are there; no scanner reads below their first level.
void writeVendorKeys(const Making& making);

inline constexpr const char* machineSoftware = "HKEY_LOCAL_MACHINE\\SOFTWARE";
inline constexpr const char* machineSoftware32 = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node";
inline constexpr const char* userSoftware = "HKEY_CURRENT_USER\\Software";
inline constexpr const char* windowsKey = "\\Microsoft\\Windows\\CurrentVersion";

// A product that is installed, and one that is not.
inline constexpr const char* installedProduct = "{12345678-1234-4234-8234-123456789ABC}";
inline constexpr const char* unknownProduct = "{87654321-4321-4321-8321-CBA987654321}";

}  // namespace zelvreg::bench

#endif
