// The fixed keys that the scanners walk: other programs keep their records below them. The scanners
// read them by these names.
//
// The letter case is part of what is reported.
#ifndef ZELVREG_SCAN_SCANNED_KEYS_H
#define ZELVREG_SCAN_SCANNED_KEYS_H

#include <array>

#include "roots/Roots.h"

namespace zelvreg::scannedKeys {

inline constexpr const char* fonts = "Software\\Microsoft\\windows nt\\currentversion\\fonts";
inline constexpr const char* sharedDlls =
    "Software\\Microsoft\\windows\\currentversion\\SharedDlls";
inline constexpr const char* sharedDlls32 =
    "Software\\Wow6432Node\\Microsoft\\windows\\currentversion\\SharedDlls";

inline constexpr const char* appPaths = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths";
inline constexpr const char* appPathsNt =
    "SOFTWARE\\Microsoft\\Windows nt\\CurrentVersion\\App Paths";
inline constexpr const char* appPaths32 =
    "SOFTWARE\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\App Paths";
inline constexpr const char* appPaths32Nt =
    "SOFTWARE\\Wow6432Node\\Microsoft\\Windows nt\\CurrentVersion\\App Paths";
inline constexpr const char* compatibilityStore =
    "Software\\Microsoft\\Windows NT\\CurrentVersion\\AppCompatFlags\\"
    "Compatibility Assistant\\Store";
inline constexpr const char* compatibilityLayers =
    "Software\\Microsoft\\Windows NT\\CurrentVersion\\AppCompatFlags\\Layers";
inline constexpr const char* software = "Software";
inline constexpr const char* software32 = "Software\\Wow6432Node";

inline constexpr const char* help = "SOFTWARE\\Microsoft\\Windows\\Help";
inline constexpr const char* helpNt = "SOFTWARE\\Microsoft\\windows nt\\Help";
inline constexpr const char* htmlHelp = "SOFTWARE\\Microsoft\\Windows\\HTML Help";
inline constexpr const char* htmlHelpNt = "SOFTWARE\\Microsoft\\Windows nt\\HTML Help";
inline constexpr const char* snapIns = "SOFTWARE\\Microsoft\\MMC\\SnapIns";

inline constexpr const char* classes = "";  // of the classes root
inline constexpr const char* mediaTypes = "MIME\\Database\\Content Type";
inline constexpr const char* classIds = "CLSID";
inline constexpr const char* typeLibraries = "TypeLib";
inline constexpr const char* machineClassIds = "SOFTWARE\\Classes\\CLSID";

inline constexpr const char* firewallRules =
    "SYSTEM\\CurrentControlSet\\services\\SharedAccess\\Parameters\\FirewallPolicy\\FirewallRules";
inline constexpr const char* fileExtensions =
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\FileExts";
inline constexpr const char* fileExtensionsNt =
    "Software\\Microsoft\\Windows nt\\CurrentVersion\\Explorer\\FileExts";

inline constexpr const char* uninstall = "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall";
inline constexpr const char* uninstallNt =
    "Software\\Microsoft\\Windows nt\\CurrentVersion\\Uninstall";
inline constexpr const char* uninstall32 =
    "Software\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\Uninstall";
inline constexpr const char* uninstall32Nt =
    "Software\\Wow6432Node\\Microsoft\\Windows nt\\CurrentVersion\\Uninstall";

inline constexpr const char* run = "Software\\Microsoft\\windows\\currentversion\\Run";
inline constexpr const char* run32 =
    "Software\\Wow6432Node\\Microsoft\\windows\\currentversion\\Run";
inline constexpr std::array recentLists{
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\RecentDocs",
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\StreamMRU",
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\TypedPaths",
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\WordWheelQuery",
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\RunMRU",
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\ComDlg32\\OpenSavePidlMRU",
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\ComDlg32\\LastVisitedPidlMRULegacy",
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\ComDlg32\\LastVisitedPidlMRU",
};
inline constexpr const char* muiCache =
    "Software\\Classes\\Local Settings\\Software\\Microsoft\\Windows\\Shell\\MuiCache";

struct ScannedKey {
  HiveHandle hive;
  const char* key;
};

// All of them but the recent lists, which are HKEY_CURRENT_USER's.
inline constexpr std::array all{
    ScannedKey{HiveHandle::LocalMachine, fonts},
    ScannedKey{HiveHandle::LocalMachine, sharedDlls},
    ScannedKey{HiveHandle::LocalMachine, sharedDlls32},
    ScannedKey{HiveHandle::LocalMachine, appPaths},
    ScannedKey{HiveHandle::LocalMachine, appPathsNt},
    ScannedKey{HiveHandle::LocalMachine, appPaths32},
    ScannedKey{HiveHandle::LocalMachine, appPaths32Nt},
    ScannedKey{HiveHandle::CurrentUser, compatibilityStore},
    ScannedKey{HiveHandle::CurrentUser, compatibilityLayers},
    ScannedKey{HiveHandle::LocalMachine, software},
    ScannedKey{HiveHandle::LocalMachine, software32},
    ScannedKey{HiveHandle::CurrentUser, software},
    ScannedKey{HiveHandle::LocalMachine, help},
    ScannedKey{HiveHandle::LocalMachine, helpNt},
    ScannedKey{HiveHandle::LocalMachine, htmlHelp},
    ScannedKey{HiveHandle::LocalMachine, htmlHelpNt},
    ScannedKey{HiveHandle::LocalMachine, snapIns},
    ScannedKey{HiveHandle::ClassesRoot, classes},
    ScannedKey{HiveHandle::ClassesRoot, mediaTypes},
    ScannedKey{HiveHandle::ClassesRoot, classIds},
    ScannedKey{HiveHandle::ClassesRoot, typeLibraries},
    ScannedKey{HiveHandle::LocalMachine, machineClassIds},
    ScannedKey{HiveHandle::CurrentUser, machineClassIds},
    ScannedKey{HiveHandle::LocalMachine, firewallRules},
    ScannedKey{HiveHandle::CurrentUser, fileExtensions},
    ScannedKey{HiveHandle::CurrentUser, fileExtensionsNt},
    ScannedKey{HiveHandle::LocalMachine, uninstall},
    ScannedKey{HiveHandle::LocalMachine, uninstallNt},
    ScannedKey{HiveHandle::CurrentUser, uninstall},
    ScannedKey{HiveHandle::LocalMachine, uninstall32},
    ScannedKey{HiveHandle::LocalMachine, uninstall32Nt},
    ScannedKey{HiveHandle::LocalMachine, run},
    ScannedKey{HiveHandle::LocalMachine, run32},
    ScannedKey{HiveHandle::CurrentUser, run},
    ScannedKey{HiveHandle::CurrentUser, run32},
    ScannedKey{HiveHandle::CurrentUser, muiCache},
};

}  // namespace zelvreg::scannedKeys

#endif
