#include "undo/JournalFile.h"

#include <gtest/gtest.h>

namespace zelvreg {
namespace {

TEST(JournalFile, ARecordIs302BytesOfFieldsFilledWithBlanks) {
  const std::string bytes =
      journalBytes({.kind = "6", .hive = "2", .key = "the key", .value = "value", .text = "text"});
  ASSERT_EQ(bytes.size(), 302U);
  EXPECT_EQ(bytes.substr(0, 2), "6 ");
  EXPECT_EQ(bytes.substr(2, 50), "2" + std::string(49, ' '));
  EXPECT_EQ(bytes.substr(52, 150), "the key" + std::string(143, ' '));
  EXPECT_EQ(bytes.substr(202, 50), "value" + std::string(45, ' '));
  EXPECT_EQ(bytes.substr(252, 50), "text" + std::string(46, ' '));
}

TEST(JournalFile, LongerTextsAreCutOnTheRight) {
  const std::string bytes = journalBytes({.kind = "771",
                                          .hive = "1",
                                          .key = std::string(151, 'k') + "!",
                                          .value = std::string(60, 'v'),
                                          .text = std::string(60, 't')});
  ASSERT_EQ(bytes.size(), 302U);
  const JournalRecord record = journalRecordAt(bytes, 1);
  EXPECT_EQ(record.kind, "77");
  EXPECT_EQ(record.key, std::string(150, 'k'));
  EXPECT_EQ(record.value, std::string(50, 'v'));
  EXPECT_EQ(record.text, std::string(50, 't'));
}

TEST(JournalFile, ARecordMadeByHandReadsAsOneWrittenHere) {
  std::string file(604, ' ');
  file.replace(302, 2, "13");
  file.replace(304, 1, "1");
  file.replace(354, 12, "Software\\Abc");
  file.replace(504, 4, "name");
  file.replace(554, 4, "data");
  const JournalRecord record = journalRecordAt(file, 2);
  EXPECT_EQ(record.kind, "13");
  EXPECT_EQ(record.hive, "1");
  EXPECT_EQ(record.key, "Software\\Abc");
  EXPECT_EQ(record.value, "name");
  EXPECT_EQ(record.text, "data");
}

TEST(JournalFile, WhatATornFileNoLongerHoldsIsEmpty) {
  const std::string whole = journalBytes({"2", "1", "key", "value", "text"});
  const JournalRecord record = journalRecordAt(std::string_view(whole).substr(0, 210), 1);
  EXPECT_EQ(record.key, "key");
  EXPECT_EQ(record.value, "value");
  EXPECT_EQ(record.text, "");
  EXPECT_EQ(journalRecordAt("", 1).kind, "");
}

TEST(JournalFile, RecordsAreCountedToTheNearestWholeNumberAHalfToTheEvenOne) {
  EXPECT_EQ(journalRecordCount(0), 0U);
  EXPECT_EQ(journalRecordCount(150), 0U);
  EXPECT_EQ(journalRecordCount(151), 0U);
  EXPECT_EQ(journalRecordCount(152), 1U);
  EXPECT_EQ(journalRecordCount(302), 1U);
  EXPECT_EQ(journalRecordCount(453), 2U);
  EXPECT_EQ(journalRecordCount(604), 2U);
  EXPECT_FALSE(isTornJournal(604));
  EXPECT_TRUE(isTornJournal(603));
}

}  // namespace
}  // namespace zelvreg
