// The roots of the registry: their handles and their names. Whoever needs a name of a root looks it
// up here.
#ifndef ZELVREG_ROOTS_ROOTS_H
#define ZELVREG_ROOTS_ROOTS_H

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace zelvreg {

// A predefined handle of the system, as the number that it has for a 32-bit process.
enum class HiveHandle : std::uint32_t {
  Unknown = 0,  // nothing is done on it
  hINI = 1,     // the hive text named an existing file, which is read as an INI file
  ClassesRoot = 0x80000000,
  CurrentUser = 0x80000001,
  LocalMachine = 0x80000002,
  Users = 0x80000003,
  PerformanceData = 0x80000004,
  CurrentConfig = 0x80000005,
  DynData = 0x80000006,
};

class Root {
 public:
  constexpr Root(HiveHandle handle, std::string_view longText, std::string_view shortText)
      : hive(handle), name(longText), shortName(shortText) {
    std::ranges::copy(longText, units.begin());
  }

  HiveHandle hive;
  std::string_view name;       // "HKEY_LOCAL_MACHINE"
  std::string_view shortName;  // "HKLM"; empty if it has none

  // The long name in UTF-16.
  [[nodiscard]] constexpr std::u16string_view wideName() const {
    return {units.data(), name.size()};
  }

 private:
  std::array<char16_t, 24> units{};
};

// In the order of their handles.
inline constexpr std::array roots{
    Root(HiveHandle::ClassesRoot, "HKEY_CLASSES_ROOT", "HKCR"),
    Root(HiveHandle::CurrentUser, "HKEY_CURRENT_USER", "HKCU"),
    Root(HiveHandle::LocalMachine, "HKEY_LOCAL_MACHINE", "HKLM"),
    Root(HiveHandle::Users, "HKEY_USERS", "HKU"),
    Root(HiveHandle::PerformanceData, "HKEY_PERFORMANCE_DATA", ""),
    Root(HiveHandle::CurrentConfig, "HKEY_CURRENT_CONFIG", "HKCC"),
    Root(HiveHandle::DynData, "HKEY_DYN_DATA", "HKDD"),
};

// The names of a root; empty for what is none.
constexpr std::string_view longName(HiveHandle hive) {
  const auto* found = std::ranges::find(roots, hive, &Root::hive);
  return found == roots.end() ? std::string_view() : found->name;
}
constexpr std::u16string_view wideLongName(HiveHandle hive) {
  const auto* found = std::ranges::find(roots, hive, &Root::hive);
  return found == roots.end() ? std::u16string_view() : found->wideName();
}
constexpr std::string_view shortName(HiveHandle hive) {
  const auto* found = std::ranges::find(roots, hive, &Root::hive);
  return found == roots.end() ? std::string_view() : found->shortName;
}

// The whole path of a key, with the long name of its root.
std::string keyPath(HiveHandle root, std::string_view key);

// The root with this name in any case; Unknown for any other text.
HiveHandle rootWithLongName(std::string_view name);
HiveHandle rootWithLongName(std::u16string_view name);
HiveHandle rootWithShortName(std::string_view name);

}  // namespace zelvreg

#endif
