#include "undo/JournalFile.h"

#include <gtest/gtest.h>

namespace zelvreg {
namespace {

TEST(JournalFile, ARecordIs302BytesOfFieldsFilledWithBlanks) {
  const std::string bytes =
      journalFile({{.kind = "6", .hive = "2", .key = "the key", .value = "value", .text = "text"}});
  ASSERT_EQ(bytes.size(), 302U);
  EXPECT_EQ(bytes.substr(0, 2), "6 ");
  EXPECT_EQ(bytes.substr(2, 50), "2" + std::string(49, ' '));
  EXPECT_EQ(bytes.substr(52, 150), "the key" + std::string(143, ' '));
  EXPECT_EQ(bytes.substr(202, 50), "value" + std::string(45, ' '));
  EXPECT_EQ(bytes.substr(252, 50), "text" + std::string(46, ' '));
}

TEST(JournalFile, LongerTextsAreCutOnTheRight) {
  const std::string bytes = journalFile({{.kind = "771",
                                          .hive = "1",
                                          .key = std::string(151, 'k') + "!",
                                          .value = std::string(60, 'v'),
                                          .text = std::string(60, 't')}});
  ASSERT_EQ(bytes.size(), 302U);
  const JournalRecord record = journalRecordAt(bytes, 1);
  EXPECT_EQ(record.kind, "77");
  EXPECT_EQ(record.key, std::string(150, 'k'));
  EXPECT_EQ(record.value, std::string(50, 'v'));
  EXPECT_EQ(record.text, std::string(50, 't'));
}

TEST(JournalFile, ARecordWrittenByHandReadsAsOneWrittenHere) {
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
  const std::string whole = journalFile({{"2", "1", "key", "value", "text"}});
  const JournalRecord record = journalRecordAt(std::string_view(whole).substr(0, 210), 1);
  EXPECT_EQ(record.key, "key");
  EXPECT_EQ(record.value, "value");
  EXPECT_EQ(record.text, "");
  EXPECT_EQ(journalRecordAt("", 1).kind, "");
}

TEST(JournalFile, RecordsAreCountedToTheNearestWholeNumberAHalfToTheEvenOne) {
  EXPECT_EQ(journalRecordCount(""), 0U);
  EXPECT_EQ(journalRecordCount(std::string(150, ' ')), 0U);
  EXPECT_EQ(journalRecordCount(std::string(151, ' ')), 0U);
  EXPECT_EQ(journalRecordCount(std::string(152, ' ')), 1U);
  EXPECT_EQ(journalRecordCount(std::string(302, ' ')), 1U);
  EXPECT_EQ(journalRecordCount(std::string(453, ' ')), 2U);
  EXPECT_EQ(journalRecordCount(std::string(604, ' ')), 2U);
  EXPECT_FALSE(isTornJournal(std::string(604, ' ')));
  EXPECT_TRUE(isTornJournal(std::string(603, ' ')));
}

const std::string mark = "\xEF\xBB\xBF";
// Half of a pair is in no code page.
const std::string half = "\xED\xA0\x80";

TEST(JournalFile, OneTextThatTheCodePageLacksMakesAllOfItUtf8) {
  const JournalRecord plain{"2", "1", "key", "value", "text"};
  const JournalRecord other{"3", "1", "ключ サ", "מפתח", half};
  const std::string file = journalFile({plain, other});
  ASSERT_EQ(file.size(), mark.size() + 2 * journalRecordSize);
  EXPECT_EQ(file.substr(0, mark.size() + journalRecordSize), mark + journalFile({plain}));
  EXPECT_EQ(file.substr(mark.size() + journalRecordSize + 52, 12), "ключ サ");
  EXPECT_EQ(journalRecordCount(file), 2U);
  EXPECT_FALSE(isTornJournal(file));
  EXPECT_TRUE(isTornJournal(file.substr(0, file.size() - 1)));
  const JournalRecord read = journalRecordAt(file, 2);
  EXPECT_EQ(read.kind, "3");
  EXPECT_EQ(read.key, "ключ サ");
  EXPECT_EQ(read.value, "מפתח");
  EXPECT_EQ(read.text, half);
  EXPECT_EQ(journalRecordAt(file, 1).text, "text");
}

TEST(JournalFile, ACharacterOfUtf8IsNeverCutInHalf) {
  for (const std::string character : {"и", "サ", "\U0001F600"}) {
    for (std::size_t before = 46; before <= 50; ++before) {
      const std::string head(before, 'v');
      const std::string file = journalFile({{"2", "1", "key", head + character + "!", half}});
      ASSERT_EQ(file.size(), mark.size() + journalRecordSize);
      const bool fits = before + character.size() <= 50;
      const bool isMoreThere = before + character.size() < 50;
      EXPECT_EQ(journalRecordAt(file, 1).value,
                head + (fits ? character : "") + (isMoreThere ? "!" : ""));
      EXPECT_EQ(journalRecordAt(file, 1).text, half);
    }
  }
}

TEST(JournalFile, RecordsAfterThoseThatAreOverwrittenStay) {
  const JournalRecord old{"2", "1", "old", "value", "text"};
  const JournalRecord other{"3", "1", "サ", "", half};
  const std::string three = journalFile({old, old, old});
  const std::string mixed = journalFile({other}, three);
  EXPECT_EQ(mixed, mark + journalFile({other}).substr(mark.size()) + journalFile({old, old}));
  // A file that needs UTF-8 stays one, and one that is overwritten whole is a new one.
  EXPECT_EQ(journalFile({old}, journalFile({other, other})),
            mark + journalFile({old}) + journalFile({other}).substr(mark.size()));
  EXPECT_EQ(journalFile({old}, journalFile({other})), journalFile({old}));
  EXPECT_EQ(journalFile({}, three), three);
  EXPECT_EQ(journalFile({old}, three.substr(0, 610)), three.substr(0, 610));
  EXPECT_EQ(journalFile({}), "");
}

}  // namespace
}  // namespace zelvreg
