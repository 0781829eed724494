// Only the emulated computer can have each code page.
#include "support/MachineFixture.h"
#include "undo/JournalFile.h"

namespace zelvreg {
namespace {

struct Page {
  const char* number;
  const char* character;  // that the page has
  std::size_t size;       // bytes there
};

constexpr Page pages[] = {
    {"932", "ソ", 2}, {"936", "會", 2}, {"949", "서", 2}, {"950", "育", 2},
    {"1251", "И", 1}, {"1252", "ü", 1}, {"1255", "ש", 1}, {"65001", "\U0001F600", 4},
};

class JournalOfPage : public fixture::MachineFixture, public ::testing::WithParamInterface<Page> {
 protected:
  JournalOfPage() {
    setting("codepage", GetParam().number);
    start();
  }
};

TEST_P(JournalOfPage, FieldsAreInThePageAndNoCharacterIsCutInHalf) {
  const std::string character = GetParam().character;
  for (std::size_t before = 45; before <= 50; ++before) {
    const std::string head(before, 'v');
    const std::string file = journalFile({{"2", "1", character, head + character + "!", "text"}});
    ASSERT_EQ(file.size(), journalRecordSize);
    EXPECT_EQ(file[52 + GetParam().size], ' ');
    const std::size_t end = before + GetParam().size;
    const JournalRecord record = journalRecordAt(file, 1);
    EXPECT_EQ(record.value, head + (end <= 50 ? character : "") + (end < 50 ? "!" : ""));
    EXPECT_EQ(record.key, character);
    EXPECT_EQ(record.text, "text");
  }
}

TEST_P(JournalOfPage, ALongFieldOfItsCharactersIsFilledAsFarAsTheyGo) {
  std::string text;
  for (int count = 0; count < 200; ++count) {
    text += GetParam().character;
  }
  const JournalRecord record = journalRecordAt(journalFile({{"2", "1", text, text, text}}), 1);
  const std::size_t width = std::string(GetParam().character).size();
  EXPECT_EQ(record.key.size(), 150 / GetParam().size * width);
  EXPECT_EQ(record.value.size(), 50 / GetParam().size * width);
  EXPECT_TRUE(text.starts_with(record.key));
}

TEST_P(JournalOfPage, RecordsOfThePageBecomeUtf8WithTheOthers) {
  const JournalRecord old{"2", "1", GetParam().character, "value", "text"};
  const JournalRecord other{"3", "1", "key", "value", "\xED\xA0\x80"};
  const std::string file = journalFile({other}, journalFile({old, old}));
  ASSERT_EQ(journalRecordCount(file), 2U);
  EXPECT_EQ(file.substr(0, 3), "\xEF\xBB\xBF");
  EXPECT_EQ(journalRecordAt(file, 1).text, other.text);
  EXPECT_EQ(journalRecordAt(file, 2).key, old.key);
}

INSTANTIATE_TEST_SUITE_P(Pages, JournalOfPage, ::testing::ValuesIn(pages),
                         [](const auto& page) { return std::string(page.param.number); });

}  // namespace
}  // namespace zelvreg
