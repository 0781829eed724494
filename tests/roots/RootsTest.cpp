#include "roots/Roots.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace zelvreg {
namespace {

TEST(Roots, NoTwoShareAHandleOrAName) {
  std::set<HiveHandle> handles;
  std::set<std::string_view> names;
  for (const Root& root : roots) {
    EXPECT_TRUE(handles.insert(root.hive).second) << root.name;
    EXPECT_TRUE(names.insert(root.name).second) << root.name;
    EXPECT_TRUE(names.insert(root.shortName).second) << root.name;
  }
}

TEST(Roots, EachIsFoundByItsNamesInAnyCase) {
  for (const Root& root : roots) {
    EXPECT_EQ(rootWithLongName(root.name), root.hive);
    EXPECT_EQ(rootWithLongName(root.wideName()), root.hive);
    EXPECT_EQ(longName(root.hive), root.name);
    EXPECT_EQ(wideLongName(root.hive), root.wideName());
    EXPECT_EQ(shortName(root.hive), root.shortName);
    EXPECT_EQ(wideLongName(root.hive), std::u16string(root.name.begin(), root.name.end()));
  }
  EXPECT_EQ(rootWithLongName("hkey_Local_machine"), HiveHandle::LocalMachine);
  EXPECT_EQ(rootWithLongName(u"hkey_Local_machine"), HiveHandle::LocalMachine);
  EXPECT_EQ(rootWithShortName("hklm"), HiveHandle::LocalMachine);
  EXPECT_EQ(rootWithShortName("HKdd"), HiveHandle::DynData);
}

TEST(Roots, APathBeginsWithTheLongName) {
  EXPECT_EQ(keyPath(HiveHandle::Users, "A\\B"), "HKEY_USERS\\A\\B");
}

TEST(Roots, AnyOtherTextNamesNone) {
  for (const char* text : {"", "HKEY_", "HKEY_USERS ", "HKEY_USERSX", "HKU", "\xCB\xCB"}) {
    EXPECT_EQ(rootWithLongName(text), HiveHandle::Unknown) << text;
  }
  for (const char16_t* text : {u"", u"HKEY_USER", u"HKU", u"\x0148KEY_USERS", u"HKEY_USER\x017F"}) {
    EXPECT_EQ(rootWithLongName(text), HiveHandle::Unknown);
  }
  for (const char* text : {"", "HK", "HKEY_USERS", "HKLMX"}) {
    EXPECT_EQ(rootWithShortName(text), HiveHandle::Unknown) << text;
  }
}

TEST(Roots, WhatIsNoRootHasNoName) {
  for (const HiveHandle hive : {HiveHandle::Unknown, HiveHandle::hINI}) {
    EXPECT_EQ(longName(hive), "");
    EXPECT_EQ(wideLongName(hive), u"");
    EXPECT_EQ(shortName(hive), "");
  }
}

}  // namespace
}  // namespace zelvreg
