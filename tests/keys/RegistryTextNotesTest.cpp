#include "keys/RegistryTextNotes.h"

#include <gtest/gtest.h>

#include "keys/RegistryTextReader.h"

namespace zelvreg {
namespace {

using Positions = std::vector<std::size_t>;

TEST(RegistryTextNotes, PositionsGoOutAsRangesAndComeBack) {
  const std::vector<std::pair<Positions, std::u16string>> texts{
      {{0}, u"0"}, {{0, 1, 2, 3}, u"0-3"}, {{0, 1, 3, 7, 8, 120}, u"0-1,3,7-8,120"}};
  for (const auto& [positions, text] : texts) {
    EXPECT_EQ(notes::positionsText(positions), text);
    Positions read;
    EXPECT_TRUE(notes::readPositions(text, read));
    EXPECT_EQ(read, positions);
  }
}

TEST(RegistryTextNotes, OtherTextsAreNoPositions) {
  for (const char16_t* text :
       {u"", u"a", u"1,", u",1", u"1-", u"-1", u"2,1", u"1,1", u"3-2", u"1 2", u"1-2-3",
        u"0-1000000", u"1000000000", u"99999999999999999999999", u"0-4294967295"}) {
    Positions read;
    EXPECT_FALSE(notes::readPositions(text, read));
  }
}

RegistryChanges read(const std::string& lines) {
  return readRegistryText("Windows Registry Editor Version 5.00\r\n\r\n" + lines);
}

TEST(RegistryTextNotes, ANoteBelongsToTheKeyBeforeIt) {
  const RegistryChanges changes = read(
      ";zelvreg safety export\r\n[HKEY_USERS\\a]\r\n;zelvreg order=1,4\r\n\"x\"=\"y\"\r\n"
      ";zelvreg of a later version\r\n[HKEY_USERS\\b]\r\n");
  EXPECT_FALSE(changes.fault);
  EXPECT_TRUE(changes.isSafetyExport);
  ASSERT_EQ(changes.list.size(), 3U);
  EXPECT_EQ(changes.list[0].positions, (Positions{1, 4}));
  EXPECT_TRUE(changes.list[2].positions.empty());
  EXPECT_FALSE(read("; zelvreg safety export\r\n").isSafetyExport);
}

TEST(RegistryTextNotes, ANoteThatIsNotValidIsAFaultOfItsLine) {
  const std::vector<std::pair<std::string, std::string>> faults{
      {";zelvreg order=1\r\n", "the note belongs to no key; it must come right after a line [key]"},
      {"[HKEY_USERS\\a]\r\n@=\"\"\r\n;zelvreg order=1\r\n",
       "the note belongs to no key; it must come right after a line [key]"},
      {"[HKEY_USERS\\a]\r\n;zelvreg order=x\r\n",
       "the places of the values are not valid; write numbers such as 0-3,7"},
      {"[HKEY_USERS\\a]\r\n;zelvreg security=hex:\r\n", "the access list is not whole"},
      {"[HKEY_USERS\\a]\r\n;zelvreg security=hex:01,00,04,80,xx\r\n",
       "the access list is not whole"},
      {"[HKEY_USERS\\a]\r\n;zelvreg security=hex:01,00,00,80,00,00,00,00,00,00,00,00,00,00,00,00,"
       "14,00,00,00\r\n",
       "the access list is not whole"}};
  for (const auto& [lines, what] : faults) {
    const RegistryChanges changes = read(lines);
    ASSERT_TRUE(changes.fault) << lines;
    EXPECT_EQ(changes.fault->what, what);
  }
}

}  // namespace
}  // namespace zelvreg
