// Wine opens every key for an administrator, so only the emulated computer can refuse a change.
#include "keys/RegistryImport.h"
#include "keys/WideKey.h"
#include "machine/Machine.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

const std::string key = "HKEY_LOCAL_MACHINE\\SOFTWARE\\RegistryImportTest";

class RefusedImportTest : public fixture::ComputerFixture {
 protected:
  RefusedImportTest() {
    emptyKey(key);
    setText(key + "\\Closed\\Below", "x", "old");
    setAccessOfKey(key + "\\Closed", "D:(A;;KR;;;WD)");
  }
};

TEST_F(RefusedImportTest, WhatTheRegistryRefusesIsToldAndTheRestComesBack) {
  const RegistryImport result = importRegistryText(
      "Windows Registry Editor Version 5.00\r\n\r\n[" + key + "\\Closed]\r\n\"x\"=\"new\"\r\n[" +
      key + "\\Closed\\None]\r\n\"x\"=\"new\"\r\n\"x\"=-\r\n[" + key + "]\r\n\"y\"=\"here\"\r\n");
  EXPECT_FALSE(result.isDone);
  EXPECT_EQ(result.message, "4 of 7 changes were refused by the registry, the first in line 4.");
  EXPECT_EQ(result.keys, 2U);
  EXPECT_EQ(storedText(key, "y"), "here");
  EXPECT_FALSE(hasKey(key + "\\Closed\\None"));
}

TEST_F(RefusedImportTest, ASafetyExportIsLetInAndLeavesTheListsAsTheyWere) {
  const auto list = accessOfKey(key + "\\Closed");
  const RegistryImport result = importRegistryText(
      "Windows Registry Editor Version 5.00\r\n;zelvreg safety export\r\n\r\n[" + key +
      "\\Closed]\r\n\"x\"=\"new\"\r\n[" + key + "\\Closed\\None\\Deep]\r\n\"x\"=\"new\"\r\n");
  EXPECT_TRUE(result.isDone) << result.message;
  EXPECT_EQ(storedText(key + "\\Closed", "x"), "new");
  EXPECT_EQ(accessOfKey(key + "\\Closed"), list);
  EXPECT_FALSE(WideKey(HiveHandle::LocalMachine, u"SOFTWARE\\RegistryImportTest\\Closed",
                       KEY_SET_VALUE, REG_OPTION_BACKUP_RESTORE)
                   .isOpen());
}

TEST_F(RefusedImportTest, AnInheritedDenialDoesNotKeepOutWhatComesBelow) {
  makeKey(key + "\\Denied");
  setAccessOfKey(key + "\\Denied",
                 "D:(D;CIIO;GA;;;S-1-5-21-1-1-1-1001)(A;CI;KA;;;BA)(A;CI;KA;;;WD)");
  const RegistryImport result = importRegistryText("Windows Registry Editor Version 5.00\r\n\r\n[" +
                                                   key + "\\Denied\\a]\r\n\"x\"=\"y\"\r\n");
  EXPECT_TRUE(result.isDone) << result.message;
  EXPECT_EQ(importRegistryText(
                "Windows Registry Editor Version 5.00\r\n;zelvreg safety export\r\n[" + key +
                "\\Denied\\a]\r\n\"x\"=\"y\"\r\n[" + key + "\\Denied\\b\\c\\d]\r\n\"x\"=\"y\"\r\n")
                .message,
            "Imported: 2 keys and 2 values; deleted: 0 keys and 0 values.");
}

TEST_F(RefusedImportTest, ATreeThatCannotBeDeletedIsRefused) {
  const RegistryImport result =
      importRegistryText("Windows Registry Editor Version 5.00\r\n\r\n[-" + key + "]\r\n");
  EXPECT_EQ(result.message, "1 of 1 changes were refused by the registry, the first in line 3.");
  EXPECT_EQ(result.keysDeleted, 0U);
}

TEST_F(RefusedImportTest, OnlyTheLinkOfALinkedKeyIsAskedToGo) {
  setText("HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\Wow6432Node\\Linked", "x", "y");
  importRegistryText(
      "Windows Registry Editor Version 5.00\r\n\r\n"
      "[-HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\Classes]\r\n");
  EXPECT_TRUE(hasKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\Wow6432Node\\Linked"));
}

}  // namespace
}  // namespace zelvreg
