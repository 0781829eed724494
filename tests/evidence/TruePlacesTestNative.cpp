// Where keys truly are on a 64-bit and on a 32-bit Windows: only the emulated computer is either.
#include "evidence/TruePlaces.h"

#include "support/MachineFixture.h"
#include "unicode/Unicode.h"

namespace zelvreg {
namespace {

std::string pathsOf(const std::vector<TruePlace>& places) {
  std::string paths;
  for (const TruePlace& place : places) {
    paths.append(paths.empty() ? "" : "|").append(utf8(place.fullPath()));
  }
  return paths;
}

class TruePlacesTest : public fixture::MachineFixture {
 protected:
  static std::string possible(HiveHandle hive, const std::string& key, Views views) {
    return pathsOf(possiblePlaces(hive, key, views));
  }
};

TEST_F(TruePlacesTest, APathIsItsNamesWithOneBackslashBetween) {
  start();
  const auto of = [](const std::string& key) {
    return possible(HiveHandle::LocalMachine, key, Views::True);
  };
  EXPECT_EQ(of("SOFTWARE\\A"), R"(HKEY_LOCAL_MACHINE\SOFTWARE\A)");
  EXPECT_EQ(of("\\\\SOFTWARE\\\\A\\"), R"(HKEY_LOCAL_MACHINE\SOFTWARE\A)");
  EXPECT_EQ(of("A\\\\\\B\\C\\\\D"), R"(HKEY_LOCAL_MACHINE\A\B\C\D)");
  EXPECT_EQ(of(std::string("A\0B", 3)), R"(HKEY_LOCAL_MACHINE\A)");
  EXPECT_EQ(of(""), "HKEY_LOCAL_MACHINE");
  EXPECT_EQ(of("A\\" + std::string(255, 'x')), "HKEY_LOCAL_MACHINE\\A\\" + std::string(255, 'x'));
  EXPECT_EQ(of("A\\" + std::string(256, 'x')), "");
}

TEST_F(TruePlacesTest, TheClassesAreTheUsersAndTheComputers) {
  start();
  EXPECT_EQ(possible(HiveHandle::ClassesRoot, ".txt", Views::True),
            R"(HKEY_CURRENT_USER\Software\Classes\.txt|HKEY_LOCAL_MACHINE\Software\Classes\.txt)");
  EXPECT_EQ(possible(HiveHandle::ClassesRoot, "", Views::True),
            R"(HKEY_CURRENT_USER\Software\Classes|HKEY_LOCAL_MACHINE\Software\Classes)");
  EXPECT_EQ(possible(HiveHandle::CurrentConfig, "A", Views::True), "");
}

TEST_F(TruePlacesTest, TheOwnViewLeadsElsewhereWhereTheSystemRedirects) {
  start();
  struct Case {
    HiveHandle hive;
    const char* key;
    const char* place;
  };
  for (const auto& [hive, key, place] : {
           Case{HiveHandle::LocalMachine, R"(SOFTWARE\A\B)",
                R"(HKEY_LOCAL_MACHINE\SOFTWARE\Wow6432Node\A\B)"},
           Case{HiveHandle::LocalMachine, R"(SOFTWARE)", R"(HKEY_LOCAL_MACHINE\SOFTWARE)"},
           Case{HiveHandle::LocalMachine, R"(software\wow6432node\A)",
                R"(HKEY_LOCAL_MACHINE\software\wow6432node\A)"},
           Case{HiveHandle::LocalMachine, R"(SYSTEM\A)", R"(HKEY_LOCAL_MACHINE\SYSTEM\A)"},
           Case{HiveHandle::LocalMachine, R"(SOFTWARE\Classes\clsid\x)",
                R"(HKEY_LOCAL_MACHINE\SOFTWARE\Classes\Wow6432Node\clsid\x)"},
           Case{HiveHandle::LocalMachine, R"(SOFTWARE\Classes\Interface\x)",
                R"(HKEY_LOCAL_MACHINE\SOFTWARE\Classes\Wow6432Node\Interface\x)"},
           Case{HiveHandle::LocalMachine, R"(SOFTWARE\Classes\.txt)",
                R"(HKEY_LOCAL_MACHINE\SOFTWARE\Classes\.txt)"},
           Case{HiveHandle::LocalMachine, R"(SOFTWARE\Classes)",
                R"(HKEY_LOCAL_MACHINE\SOFTWARE\Classes)"},
           Case{HiveHandle::CurrentUser, R"(Software\A)", R"(HKEY_CURRENT_USER\Software\A)"},
           Case{HiveHandle::CurrentUser, R"(Software\Classes\CLSID\x)",
                R"(HKEY_CURRENT_USER\Software\Classes\Wow6432Node\CLSID\x)"},
           Case{HiveHandle::Users, R"(S-1\Software\A)", R"(HKEY_USERS\S-1\Software\A)"},
           Case{HiveHandle::Users, R"(S-1\Software\Classes\CLSID\x)",
                R"(HKEY_USERS\S-1\Software\Classes\Wow6432Node\CLSID\x)"},
           Case{HiveHandle::Users, R"(S-1\Software\Classes\.txt)",
                R"(HKEY_USERS\S-1\Software\Classes\.txt)"},
           Case{HiveHandle::Users, R"(S-1_Classes\CLSID\x)",
                R"(HKEY_USERS\S-1_Classes\Wow6432Node\CLSID\x)"},
           Case{HiveHandle::Users, R"(S-1_Classes\.txt)", R"(HKEY_USERS\S-1_Classes\.txt)"},
           Case{HiveHandle::Users, R"(S-1_Classes)", R"(HKEY_USERS\S-1_Classes)"},
           Case{HiveHandle::Users, R"(Software\A)", R"(HKEY_USERS\Software\A)"},
       }) {
    EXPECT_EQ(possible(hive, key, Views::Own), place) << key;
  }
}

TEST_F(TruePlacesTest, OnA32BitWindowsThereIsOneView) {
  setting("bits", "32");
  start();
  EXPECT_EQ(possible(HiveHandle::LocalMachine, "SOFTWARE\\A", Views::Own),
            R"(HKEY_LOCAL_MACHINE\SOFTWARE\A)");
}

TEST_F(TruePlacesTest, BothViewsFollowEachOther) {
  start();
  EXPECT_EQ(possible(HiveHandle::LocalMachine, "SOFTWARE\\A", Views::Both),
            R"(HKEY_LOCAL_MACHINE\SOFTWARE\A|HKEY_LOCAL_MACHINE\SOFTWARE\Wow6432Node\A)");
  EXPECT_EQ(possible(HiveHandle::LocalMachine, "SYSTEM\\A", Views::Both),
            R"(HKEY_LOCAL_MACHINE\SYSTEM\A)");
  EXPECT_EQ(possible(HiveHandle::ClassesRoot, "x", Views::Both),
            R"(HKEY_CURRENT_USER\Software\Classes\x|HKEY_LOCAL_MACHINE\Software\Classes\x|)"
            R"(HKEY_CURRENT_USER\Software\Classes\Wow6432Node\x|)"
            R"(HKEY_LOCAL_MACHINE\Software\Classes\Wow6432Node\x)");
}

TEST_F(TruePlacesTest, WhatIsThereIsSpelledAsItIs) {
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Vendor\MyKey)");
  start();
  TruePlaces places;
  EXPECT_EQ(pathsOf(places.of(HiveHandle::LocalMachine, "SOFTWARE\\VENDOR\\mykey", Views::True)),
            R"(HKEY_LOCAL_MACHINE\SOFTWARE\Vendor\MyKey)");
  EXPECT_EQ(pathsOf(places.of(HiveHandle::LocalMachine, "SOFTWARE\\Vendor\\gone", Views::True)),
            "");
}

TEST_F(TruePlacesTest, AUsersClassesAreTheUsers) {
  EXPECT_EQ(userOf(u"S-1\\Software"), u"S-1");
  EXPECT_EQ(userOf(u"S-1_classes\\x"), u"S-1");
  EXPECT_EQ(userOf(u"S-1"), u"S-1");
  EXPECT_EQ(userOf(u"_Classes\\x"), u"_Classes");
}

TEST_F(TruePlacesTest, KeysAreComparedByHiveAndName) {
  const TruePlace key{HiveHandle::Users, u"S-1\\a"};
  EXPECT_TRUE(isSameKey(key, {HiveHandle::Users, u"s-1\\A"}));
  EXPECT_FALSE(isSameKey(key, {HiveHandle::LocalMachine, u"S-1\\a"}));
  EXPECT_FALSE(isSameKey(key, {HiveHandle::Users, u"S-1\\b"}));
  EXPECT_EQ(below(key, u"x").path, u"S-1\\a\\x");
  EXPECT_EQ(below({HiveHandle::Users, u""}, u"x").path, u"x");
}

}  // namespace
}  // namespace zelvreg
