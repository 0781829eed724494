// What journals of any bytes write must not stay in a registry that other tests share.
#include "form/Form42.h"
#include "machine/Machine.h"
#include "runtime/CodePageText.h"
#include "support/MachineFixture.h"
#include "support/RegistryContent.h"
#include "support/UnrulyContents.h"
#include "text/Characters.h"
#include "undo/JournalFile.h"
#include "undo/UndoRestore.h"

namespace zelvreg {
namespace {

class UnrulyJournalTest : public fixture::MachineFixture {
 protected:
  Form42 form;
};

TEST_F(UnrulyJournalTest, AFileOfAnyBytesIsTakenRecordByRecord) {
  start();
  int turns = 0;
  form.messages.serveHost = [&turns] { ++turns; };
  for (const std::string& content : fixture::unrulyContents("1267\\a \r\n")) {
    turns = 0;
    restoreJournal(form, content);
    EXPECT_EQ(turns, std::max<std::size_t>(journalRecordCount(content), 1));
    EXPECT_LE(characterCount(form.journalRecord.key), 150U);
  }
}

TEST_F(UnrulyJournalTest, WhatItsRecordsWriteIsARegistryThatCanBeSavedAndOpened) {
  start();
  std::minstd_rand random(1);
  constexpr std::array kinds{"2", "3", "6", "7", "11", "12", "13", "77", "ÿ"};
  constexpr std::array hives{"1", "2", "1e300", "&HFFFF", "-1", "\n1", ""};
  std::vector<JournalRecord> records;
  for (int number = 0; number < 3000; ++number) {
    // There is a key whose name has a line break, which no export can contain.
    const auto field = [&random] {
      return textOfCodePage(
          fixture::randomText(random, random() % 60, "\\/\"[]=@;a.\t \x01\x80\xFF"));
    };
    records.push_back({.kind = kinds.at(random() % kinds.size()),
                       .hive = hives.at(random() % hives.size()),
                       .key = field(),
                       .value = field(),
                       .text = field()});
  }
  const auto before = fixture::registryContent(computer());
  restoreJournal(form, journalFile(records));
  const auto written = fixture::registryContent(computer());
  EXPECT_GT(written.size(), before.size());
  restart();
  EXPECT_EQ(fixture::registryContent(computer()), written);
}

}  // namespace
}  // namespace zelvreg
