#include "keys/Deletion.h"

#include <array>

#include "support/ComputerFixture.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

const std::string place = "SOFTWARE\\DeletionTest";
const std::string key = "HKEY_LOCAL_MACHINE\\SOFTWARE\\DeletionTest";

class DeletionTest : public fixture::ComputerFixture {
 protected:
  DeletionTest() {
    emptyKey(key);
    makeKey(key + "\\Leaf");
    makeKey(key + "\\Tree\\Below\\Deeper");
    setText(key, "Value", "text");
  }
};

TEST_F(DeletionTest, ASubkeyIsDeletedInTheTrueView) {
  EXPECT_EQ(fDeleteKey("HKLM", place, "Leaf"), 0);
  EXPECT_FALSE(hasKey(key + "\\Leaf"));
}

TEST_F(DeletionTest, WhatIsNotThereCountsAsDeleted) {
  EXPECT_EQ(fDeleteKey("HKLM", place, "None"), 0);
  EXPECT_EQ(fDeleteKey("HKLM", place + "\\None", "Leaf"), 0);
  EXPECT_EQ(fDeleteValue("HKLM", place, "None"), 0);
}

TEST_F(DeletionTest, AKeyWithSubkeysIsRefused) {
  EXPECT_EQ(fDeleteKey("HKLM", place, "Tree"), ERROR_ACCESS_DENIED);
  EXPECT_TRUE(hasKey(key + "\\Tree"));
}

TEST_F(DeletionTest, ARefusedHiveTextGives99) {
  EXPECT_EQ(fDeleteKey("HKCC", place, "Leaf"), 99);
  EXPECT_EQ(fDeleteValue("HKDD", place, "Value"), 99);
}

TEST_F(DeletionTest, AValueIsDeleted) {
  EXPECT_EQ(fDeleteValue("HKLM", place, "Value"), 0);
  EXPECT_EQ(bytesOf(key, "Value"), "(none)");
}

TEST_F(DeletionTest, TheLineOfAnIniFileStaysWithAnEmptyValue) {
  const std::string file = "C:\\DeletionTest\\settings.ini";
  makeFile(file, "[Section]\r\nName=text\r\n");
  EXPECT_EQ(fDeleteValue(file, "Section", "Name"), 0);
  std::array<char16_t, 64> lines{};
  const DWORD size =
      GetPrivateProfileSectionW(Wide("Section").get(), roomIn(lines), 64, Wide(file).get());
  EXPECT_EQ(utf8({lines.data(), size}), std::string("Name=\0", 6));
}

TEST_F(DeletionTest, ATrailingBackslashStillNamesTheLowerKey) {
  DeleteRegistryTree(HiveHandle::LocalMachine, place + "\\Tree\\");
  EXPECT_FALSE(hasKey(key + "\\Tree"));
  EXPECT_TRUE(hasKey(key));
  EXPECT_TRUE(hasKey(key + "\\Leaf"));
}

TEST_F(DeletionTest, AKeyWithoutABackslashIsDeletedUnderItsHive) {
  makeKey("HKEY_CURRENT_USER\\DeletionTest\\Below");
  DeleteRegistryTree(HiveHandle::CurrentUser, "DeletionTest");
  EXPECT_FALSE(hasKey("HKEY_CURRENT_USER\\DeletionTest"));
}

TEST_F(DeletionTest, ASubtreeGoesAndItsTopStays) {
  DeleteSubtree(HiveHandle::LocalMachine, place + "\\Tree");
  EXPECT_TRUE(hasKey(key + "\\Tree"));
  EXPECT_FALSE(hasKey(key + "\\Tree\\Below"));
}

}  // namespace
}  // namespace zelvreg
