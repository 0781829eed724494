#include "languages/LanguageFile.h"

#include "languages/Charset.h"
#include "support/ComputerFixture.h"
#include "support/UnrulyContents.h"

namespace zelvreg {
namespace {

const std::string file = "C:\\LanguageTest\\test.lang";

class LanguageFileTest : public fixture::ComputerFixture {
 protected:
  static std::string read(const char* content, const char* section, const char* key) {
    makeFile(file, content);
    return ReadLangValue(file, section, key);
  }
};

TEST_F(LanguageFileTest, AValueIsFoundInItsSection) {
  EXPECT_EQ(read("[A]\r\nk=1\r\n[B]\r\nk=2\r\n", "B", "k"), "2");
  EXPECT_EQ(read("k=0\n[A]\nk=1\n", "A", "k"), "1");
}

TEST_F(LanguageFileTest, AValueIsCutAtItsOwnEqualSign) {
  EXPECT_EQ(read("[A]\nk=a=b\n", "A", "k"), "a");
}

TEST_F(LanguageFileTest, AKeyOfALaterSectionIsFoundFromAnEarlierOne) {
  EXPECT_EQ(read("[A]\nx=1\n[B]\nk=2\n", "A", "k"), "2");
  EXPECT_EQ(read("[B]\nk=2\n[A]\nx=1\n", "A", "k"), "");
}

TEST_F(LanguageFileTest, SectionAndKeyAreFoundInOtherCase) {
  EXPECT_EQ(read("[form42]\nLABEL10=x\n", "Form42", "Label10"), "x");
}

TEST_F(LanguageFileTest, QuotesGoAndBlanksBehindTheEqualSignStay) {
  EXPECT_EQ(read("[A]\nk=  \"some\" text\"\n", "A", "k"), "  some text");
  EXPECT_EQ(read("[A]\nk=text   \n", "A", "k"), "text");
  EXPECT_EQ(read("  [A]  \n  k  =1\n", "A", "k"), "1");
}

TEST_F(LanguageFileTest, TheFirstMatchCounts) { EXPECT_EQ(read("[A]\nk=1\nk=2\n", "A", "k"), "1"); }

TEST_F(LanguageFileTest, WhatIsMissingIsTheEmptyText) {
  EXPECT_EQ(read("[A]\nk=1\n", "A", "other"), "");
  EXPECT_EQ(read("[A]\nk=1\n", "C", "k"), "");
  EXPECT_EQ(read("[A]\nk\n", "A", "k"), "");
  EXPECT_EQ(ReadLangValue("C:\\LanguageTest\\none.lang", "A", "k"), "");
}

TEST_F(LanguageFileTest, TextsAreReadFromTheFileOfTheLanguageInUse) {
  form.programFolder = "C:\\LanguageTest";
  form.langFileName = "mine.lang";
  makeFile("C:\\LanguageTest\\lang\\mine.lang", "[Form42]\na1=Fonts\n");
  EXPECT_EQ(readLanguageText(form, "Form42", "a1"), "Fonts");
}

TEST_F(LanguageFileTest, AnyFileGivesNoMoreThanAPieceOfALine) {
  for (const std::string& content : fixture::unrulyContents("[]a=\" \r\n")) {
    makeFile(file, content);
    for (const char* key : {"", "a", "aa", "no such key"}) {
      const std::string value = ReadLangValue(file, "a", key);
      EXPECT_EQ(value.find_first_of("=\"\n"), std::string::npos);
    }
  }
}

TEST_F(LanguageFileTest, AValueMayBeAsLongAsItsLine) {
  const std::string text = fixture::longLine('\0');
  makeFile(file, "[A]\nk=" + text + "\nlater=1\n");
  EXPECT_TRUE(ReadLangValue(file, "A", "k") == text);
  EXPECT_EQ(ReadLangValue(file, "A", "later"), "1");
}

TEST(Charset, MatchesTheSystemByTheProgramsOwnPairs) {
  const std::vector<std::pair<int, unsigned>> pairs{
      {0, 1252},   {1, 1252},   {2, 2},      {77, 77},    {128, 932},  {129, 949},  {130, 949},
      {134, 936},  {136, 950},  {161, 1253}, {162, 1254}, {163, 1258}, {177, 1255}, {178, 1256},
      {186, 1257}, {204, 1251}, {222, 874},  {238, 1257}, {255, 255}};
  for (const auto& [charset, codePage] : pairs) {
    EXPECT_TRUE(charsetMatchesCodePage(charset, codePage)) << charset;
    EXPECT_FALSE(charsetMatchesCodePage(charset, 437)) << charset;
  }
  EXPECT_FALSE(charsetMatchesCodePage(238, 1250));
}

TEST(Charset, NamesTheCodePageThatItsTextsAreWrittenIn) {
  EXPECT_EQ(codePageOfCharset(0), 1252U);
  EXPECT_EQ(codePageOfCharset(238), 1250U);
  EXPECT_EQ(codePageOfCharset(204), 1251U);
  EXPECT_EQ(codePageOfCharset(12345), 1252U);
}

}  // namespace
}  // namespace zelvreg
