#include "exclusions/ExclusionFile.h"

#include "runtime/FileText.h"
#include "support/ComputerFixture.h"
#include "support/UnrulyContents.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

using Texts = std::vector<std::string>;

TEST(ExclusionText, EachLineIsAnEntryInOrderAndTwiceIfItIsThereTwice) {
  EXPECT_EQ(exclusionsIn("HKEY_USERS\\b\r\nHKEY_USERS\\a\r\nHKEY_USERS\\b\r\n"),
            (Texts{"HKEY_USERS\\b", "HKEY_USERS\\a", "HKEY_USERS\\b"}));
}

TEST(ExclusionText, TheLastLineNeedsNoEnd) {
  EXPECT_EQ(exclusionsIn("first line\r\nlast"), (Texts{"first line", "last"}));
}

TEST(ExclusionText, CharactersOfAnyScriptAreCountedNotTheirBytes) {
  EXPECT_EQ(exclusionsIn("サーバー表ソ1\r\n"), Texts());
  EXPECT_EQ(exclusionsIn("サーバー表ソ12\r\n"), (Texts{"サーバー表ソ12"}));
}

TEST(ExclusionText, NineCharactersAreNothingAndTenAreRead) {
  EXPECT_EQ(exclusionsIn("HKEY_U\\\r\n"), Texts());
  EXPECT_EQ(exclusionsIn("HKEY_US\\\r\n"), (Texts{"HKEY_US\\"}));
}

TEST(ExclusionText, ACommaEndsAnEntryAndTheRestOfTheLineIsAnother) {
  EXPECT_EQ(exclusionsIn("HKEY_USERS\\a,b\\c, d\r\nlast\r\n"),
            (Texts{"HKEY_USERS\\a", "b\\c", "d", "last"}));
}

TEST(ExclusionText, QuotesAroundAnEntryAreLostAndKeepItsCommas) {
  EXPECT_EQ(exclusionsIn("\"HKEY_USERS\\a,b\"\r\n\"second\",third\r\n"),
            (Texts{"HKEY_USERS\\a,b", "second", "third"}));
}

TEST(ExclusionText, QuotesWithinAnEntryStay) {
  EXPECT_EQ(exclusionsIn("HKEY_USERS\\a \"b\" c\r\n"), (Texts{"HKEY_USERS\\a \"b\" c"}));
}

TEST(ExclusionText, AQuoteThatIsNeverClosedTakesAllThatFollows) {
  EXPECT_EQ(exclusionsIn("first line\r\n\"open,\r\nend"), (Texts{"first line", "open,\r\nend"}));
}

TEST(ExclusionText, QuotesKeepBlanksThatAreLostWithoutThem) {
  EXPECT_EQ(exclusionsIn("   in front\r\n\"  within\"\r\n"), (Texts{"in front", "  within"}));
}

TEST(ExclusionText, AnEmptyLineIsAnEmptyEntry) {
  EXPECT_EQ(exclusionsIn("first line\r\n\r\nlast\r\n"), (Texts{"first line", "", "last"}));
}

TEST(ExclusionText, AnyTextGivesNoMoreThanItHolds) {
  for (const std::string& content : fixture::unrulyContents("a,\" \r\n")) {
    std::size_t length = 0;
    for (const std::string& entry : exclusionsIn(content)) {
      length += entry.size();
    }
    EXPECT_LE(length, content.size());
  }
  EXPECT_EQ(exclusionsIn(std::string(1000, ',')).size(), 1000U);
}

class ExclusionFileTest : public fixture::ComputerFixture {
 protected:
  ExclusionFileTest() { makeFolder(form.programFolder); }
  ~ExclusionFileTest() override { DeleteFileW(Wide(path()).get()); }

  [[nodiscard]] std::string path() const { return form.programFolder + "\\exregscan.txt"; }
  [[nodiscard]] std::string content() const { return readFileText(path()).value_or("(none)"); }
};

TEST_F(ExclusionFileTest, AFileThatIsNotThereHasNoEntriesAndIsNotCreated) {
  EXPECT_EQ(readExclusions(form), Texts());
  EXPECT_EQ(content(), "(none)");
}

TEST_F(ExclusionFileTest, ALineIsAppendedToTheOthersAsItIs) {
  appendExclusions(form, {"HKEY_USERS\\a,b "});
  EXPECT_EQ(content(), "HKEY_USERS\\a,b \r\n");
  appendExclusions(form, {"\"quoted\""});
  EXPECT_EQ(content(), "HKEY_USERS\\a,b \r\n\"quoted\"\r\n");
}

TEST_F(ExclusionFileTest, SeveralLinesAreAppendedInTheirOrderAndNoneMakesNoFile) {
  EXPECT_TRUE(appendExclusions(form, {}));
  EXPECT_EQ(content(), "(none)");
  EXPECT_TRUE(appendExclusions(form, {"HKEY_USERS\\b", "HKEY_USERS\\a", "HKEY_USERS\\b"}));
  EXPECT_EQ(content(), "HKEY_USERS\\b\r\nHKEY_USERS\\a\r\nHKEY_USERS\\b\r\n");
}

TEST_F(ExclusionFileTest, WhatIsWrittenWithACommaOrInQuotesIsReadInAnotherWay) {
  appendExclusions(form, {"HKEY_USERS\\a,b"});
  appendExclusions(form, {"\"quoted\""});
  EXPECT_EQ(readExclusions(form), (Texts{"HKEY_USERS\\a", "b", "quoted"}));
}

TEST_F(ExclusionFileTest, LinesOfEveryScriptReturn) {
  const Texts entries{"HKEY_USERS\\Füße", "HKEY_USERS\\сервер",     "HKEY_USERS\\サーバー表",
                      "HKEY_USERS\\מחשב", "HKEY_USERS\\\U0001F600", "HKEY_USERS\\\xED\xA0\x80"};
  for (const std::string& entry : entries) {
    appendExclusions(form, {entry});
  }
  EXPECT_EQ(readExclusions(form), entries);
  writeExclusions(form, entries);
  EXPECT_EQ(readExclusions(form), entries);
}

TEST_F(ExclusionFileTest, NewLinesTakeThePlaceOfAllOldOnes) {
  makeFile(path(), "a longer text than the new one\r\n");
  writeExclusions(form, {"one", "", "two"});
  EXPECT_EQ(content(), "one\r\n\r\ntwo\r\n");
}

TEST_F(ExclusionFileTest, AFolderThatIsNotThereChangesNothing) {
  const std::string folder = form.programFolder;
  form.programFolder = folder + "\\no such folder";
  EXPECT_FALSE(appendExclusions(form, {"HKEY_USERS\\a"}));
  EXPECT_EQ(readExclusions(form), Texts());
  form.programFolder = folder;
  EXPECT_EQ(content(), "(none)");
}

}  // namespace
}  // namespace zelvreg
