#include "repair/ProtectedKeys.h"

#include <gtest/gtest.h>

#include "scan/ScannedKeys.h"

namespace zelvreg {
namespace {

TEST(ProtectedKeys, EveryKeyThatAScannerWalksIsProtected) {
  for (const auto& [hive, key] : scannedKeys::all) {
    EXPECT_TRUE(isProtectedKey(hive, key)) << key;
    EXPECT_TRUE(isProtectedKey(hive, std::string(key) + "\\")) << key;
  }
  for (const char* key : scannedKeys::recentLists) {
    EXPECT_TRUE(isProtectedKey(HiveHandle::CurrentUser, key)) << key;
  }
}

TEST(ProtectedKeys, ARecordBelowOneIsNotProtected) {
  for (const auto& [hive, key] : scannedKeys::all) {
    EXPECT_FALSE(isProtectedKey(hive, std::string(key) + "\\{record of its own}")) << key;
  }
  for (const char* key : scannedKeys::recentLists) {
    EXPECT_FALSE(isProtectedKey(HiveHandle::CurrentUser, std::string(key) + "\\.own")) << key;
  }
}

struct Path {
  HiveHandle hive;
  const char* key;
};

TEST(ProtectedKeys, AKeyAboveOneIsProtectedToo) {
  for (const auto& [hive, key] :
       {Path{HiveHandle::LocalMachine, ""}, Path{HiveHandle::LocalMachine, "SOFTWARE\\Microsoft"},
        Path{HiveHandle::CurrentUser, ""}, Path{HiveHandle::CurrentUser, "Software\\Classes"},
        Path{HiveHandle::LocalMachine, "Software\\Classes"}, Path{HiveHandle::Users, ""},
        Path{HiveHandle::Users, "S-1-5-21-1-1-1-1001"}, Path{HiveHandle::ClassesRoot, "MIME"},
        Path{HiveHandle::LocalMachine, "SYSTEM\\CurrentControlSet\\services\\SharedAccess"}}) {
    EXPECT_TRUE(isProtectedKey(hive, key)) << key;
  }
}

TEST(ProtectedKeys, EverySpellingOfAPathIsTheSame) {
  for (const auto& [hive, key] :
       {Path{HiveHandle::LocalMachine,
             "software\\WOW6432NODE\\microsoft\\windows\\currentversion"
             "\\uninstall"},
        Path{HiveHandle::LocalMachine, "SOFTWARE\\\\Microsoft\\Windows\\CurrentVersion\\\\Run\\"},
        Path{HiveHandle::LocalMachine, "Software\\Classes\\CLSID"},
        Path{HiveHandle::CurrentUser, "Software\\Classes\\Wow6432Node\\CLSID"},
        Path{HiveHandle::ClassesRoot, "Wow6432Node\\CLSID"},
        Path{HiveHandle::ClassesRoot, "typelib"},
        Path{HiveHandle::Users, "S-1-5-21-1-1-1-1001_Classes\\CLSID"},
        Path{HiveHandle::Users, "S-1-5-21-1-1-1-1001\\Software\\Classes\\CLSID"},
        Path{HiveHandle::LocalMachine,
             "SYSTEM\\ControlSet002\\Services\\SharedAccess\\Parameters"
             "\\FirewallPolicy\\FirewallRules"}}) {
    EXPECT_TRUE(isProtectedKey(hive, key)) << key;
  }
}

TEST(ProtectedKeys, OtherKeysAreNotProtected) {
  for (const auto& [hive, key] :
       {Path{HiveHandle::LocalMachine, "Software\\Vendor"},
        Path{HiveHandle::ClassesRoot, "CLSID\\{1}\\InprocServer32"},
        Path{HiveHandle::ClassesRoot, "Vendor.File\\shell\\open\\command"},
        Path{HiveHandle::CurrentUser, "Software\\Vendor"},
        Path{HiveHandle::LocalMachine, "SYSTEM\\Setup"},
        Path{HiveHandle::Users, "S-1-5-21-1-1-1-1001_Classes\\CLSID\\{1}"}}) {
    EXPECT_FALSE(isProtectedKey(hive, key)) << key;
  }
}

}  // namespace
}  // namespace zelvreg
