#include "machine/files/FileRecords.h"

#include <gtest/gtest.h>

namespace zelvreg::machine {
namespace {

TEST(FileRecords, AFileHasArchiveAndAFolderItsBit) {
  const FileRecords records;
  EXPECT_EQ(records.attributes("C:\\a", false), FILE_ATTRIBUTE_ARCHIVE);
  EXPECT_EQ(records.attributes("C:\\a", true), FILE_ATTRIBUTE_DIRECTORY);
}

TEST(FileRecords, KeepsAttributesWithoutRegardToCase) {
  FileRecords records;
  records.setAttributes("C:\\A.txt", false, FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
  EXPECT_EQ(records.attributes("c:\\a.TXT", false), 3U);
  records.setAttributes("C:\\f", true, FILE_ATTRIBUTE_SYSTEM);
  EXPECT_EQ(records.attributes("C:\\f", true), FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_DIRECTORY);
  records.setAttributes("C:\\n", false, FILE_ATTRIBUTE_NORMAL);
  EXPECT_EQ(records.attributes("C:\\n", false), FILE_ATTRIBUTE_NORMAL);
}

TEST(FileRecords, SettingWhatIsThereAlreadyIsNoChange) {
  FileRecords records;
  records.setAttributes("C:\\a", false, FILE_ATTRIBUTE_ARCHIVE);
  records.setSecurity("C:\\a", defaultFileSecurity());
  EXPECT_FALSE(records.attributesChanged());
  EXPECT_FALSE(records.securityChanged());
  records.setAttributes("C:\\a", false, FILE_ATTRIBUTE_HIDDEN);
  EXPECT_TRUE(records.attributesChanged());
  records.markSaved();
  EXPECT_FALSE(records.attributesChanged());
}

TEST(FileRecords, GoingBackToTheDefaultTakesTheRecordAway) {
  FileRecords records;
  records.setAttributes("C:\\a", false, FILE_ATTRIBUTE_HIDDEN);
  records.setAttributes("C:\\A", false, FILE_ATTRIBUTE_ARCHIVE);
  EXPECT_TRUE(records.allAttributes().empty());
  EXPECT_TRUE(records.attributesChanged());
}

TEST(FileRecords, AMovedFolderTakesItsRecordsAlong) {
  FileRecords records;
  records.setAttributes("C:\\a\\x", false, FILE_ATTRIBUTE_HIDDEN);
  records.setAttributes("C:\\ab", false, FILE_ATTRIBUTE_HIDDEN);
  records.setSecurity("C:\\a", parseSddl("D:"));
  records.move("C:\\A", "C:\\new");
  EXPECT_EQ(records.attributes("C:\\new\\x", false), FILE_ATTRIBUTE_HIDDEN);
  EXPECT_EQ(records.attributes("C:\\a\\x", false), FILE_ATTRIBUTE_ARCHIVE);
  EXPECT_EQ(records.attributes("C:\\ab", false), FILE_ATTRIBUTE_HIDDEN);
  EXPECT_TRUE(records.hasSecurity("C:\\new"));
}

TEST(FileRecords, ARemovedFileLosesBoth) {
  FileRecords records;
  records.setAttributes("C:\\a", false, FILE_ATTRIBUTE_HIDDEN);
  records.setSecurity("C:\\a", parseSddl("D:"));
  records.remove("C:\\A");
  EXPECT_TRUE(records.allAttributes().empty());
  EXPECT_TRUE(records.allSecurities().empty());
}

}  // namespace
}  // namespace zelvreg::machine
