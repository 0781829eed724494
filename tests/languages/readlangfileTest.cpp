#include "languages/readlangfile.h"

#include "languages/Charset.h"
#include "support/ComputerFixture.h"
#include "support/UnrulyContents.h"

namespace zelvreg {
namespace {

const std::string file = "C:\\LanguageTest\\test.lang";

class LanguageFileTest : public fixture::ComputerFixture {
 protected:
  static std::string read(const std::string& content, const char* section, const char* key,
                          int charset = 0) {
    makeFile(file, content);
    return ReadLangValue(file, section, key, charset);
  }
  static std::vector<LanguageFields> list(const std::string& content) {
    makeFile(file, content);
    return readLanguageList(file);
  }
};

TEST_F(LanguageFileTest, AValueIsFoundInItsSection) {
  EXPECT_EQ(read("[A]\r\nk=1\r\n[B]\r\nk=2\r\n", "B", "k"), "2");
  EXPECT_EQ(read("k=0\n[A]\nk=1\n", "A", "k"), "1");
}

TEST_F(LanguageFileTest, AValueEndsAtItsOwnEqualSign) {
  EXPECT_EQ(read("[A]\nk=a=b\n", "A", "k"), "a");
}

TEST_F(LanguageFileTest, AKeyOfALaterSectionIsFoundFromAnEarlierOne) {
  EXPECT_EQ(read("[A]\nx=1\n[B]\nk=2\n", "A", "k"), "2");
  EXPECT_EQ(read("[B]\nk=2\n[A]\nx=1\n", "A", "k"), "");
}

TEST_F(LanguageFileTest, SectionAndKeyAreFoundInAnyCase) {
  EXPECT_EQ(read("[form42]\nLABEL10=x\n", "Form42", "Label10"), "x");
}

TEST_F(LanguageFileTest, QuotesAreRemovedAndBlanksAfterTheEqualSignStay) {
  EXPECT_EQ(read("[A]\nk=  \"some\" text\"\n", "A", "k"), "  some text");
  EXPECT_EQ(read("[A]\nk=text   \n", "A", "k"), "text");
  EXPECT_EQ(read("  [A]  \n  k  =1\n", "A", "k"), "1");
}

TEST_F(LanguageFileTest, TheFirstMatchCounts) { EXPECT_EQ(read("[A]\nk=1\nk=2\n", "A", "k"), "1"); }

TEST_F(LanguageFileTest, WhatIsMissingIsTheEmptyText) {
  EXPECT_EQ(read("[A]\nk=1\n", "A", "other"), "");
  EXPECT_EQ(read("[A]\nk=1\n", "C", "k"), "");
  EXPECT_EQ(read("[A]\nk\n", "A", "k"), "");
  EXPECT_EQ(ReadLangValue("C:\\LanguageTest\\none.lang", "A", "k", 0), "");
}

TEST_F(LanguageFileTest, TextsAreReadFromTheFileOfTheLanguageInUse) {
  form.programFolder = "C:\\LanguageTest";
  form.langFileName = "mine.lang";
  makeFile("C:\\LanguageTest\\lang\\mine.lang", "[Form42]\na1=Fonts\n");
  EXPECT_EQ(readLanguageText(form, "Form42", "a1"), "Fonts");
}

TEST_F(LanguageFileTest, TextsAreInTheCodePageOfTheCharset) {
  EXPECT_EQ(read("[A]\nk=Fran\xE7"
                 "ais\n",
                 "A", "k"),
            "Français");
  EXPECT_EQ(read("[A]\nk=Zako\xF1"
                 "cz\n",
                 "A", "k", 238),
            "Zakończ");
  EXPECT_EQ(read("[A]\nk=\xCF\xEE\xE8\xF1\xEA\n", "A", "k", 204), "Поиск");
  EXPECT_EQ(read("[A]\nk=\xE7\xE9\xF4\xE5\xF9\n", "A", "k", 177), "חיפוש");
  EXPECT_EQ(read("[A]\nk=\xBD\xC3\xC0\xDB\n", "A", "k", 129), "시작");
  EXPECT_EQ(read("[A]\nk=\xBF\xAA\xCA\xBC\n", "A", "k", 134), "开始");
  EXPECT_EQ(read("[A]\nk=\xB6\x7D\xA9\x6C\n", "A", "k", 136), "開始");
}

TEST_F(LanguageFileTest, SecondBytesOfCharactersAreNoDelimiters) {
  // Second bytes that are "[", "]", "\\", "|" and letters elsewhere.
  EXPECT_EQ(read("[A]\nk=\x81\x5B\x81\x5D\x83\x5C\x83\x7C\x83\x41\n", "A", "k", 128), "ー‐ソポア");
  // A name that differs from the wanted one only in a second byte.
  EXPECT_EQ(read("[A]\n\x83\x61=1\n\x83\x41=2\n", "A", "ア", 128), "2");
}

TEST_F(LanguageFileTest, AMarkedFileIsUtf8WhateverTheCharset) {
  const std::string content = "\xEF\xBB\xBF[A]\r\nk=検索 Поиск\r\n";
  EXPECT_EQ(read(content, "A", "k", 128), "検索 Поиск");
  EXPECT_EQ(read(content, "a", "K", 0), "検索 Поиск");
}

TEST_F(LanguageFileTest, EachEntryOfTheListIsInTheCodePageOfItsOwnCharset) {
  using Entries = std::vector<LanguageFields>;
  // The second name has a character whose second byte is "|".
  EXPECT_EQ(
      list("[lang]\r\nzelvreg=Fran\xE7"
           "ais,0,french|\x83\x7C\x93\xFA,128,japanese|"
           "\xD0\xF3\xF1\xF1\xEA\xE8\xE9,204,russian|\xA8\x7C,136,chinese|Polski,238,polish\r\n"),
      (Entries{{"Français", "0", "french"},
               {"ポ日", "128", "japanese"},
               {"Русский", "204", "russian"},
               {"育", "136", "chinese"},
               {"Polski", "238", "polish"}}));
  // In a code page without such characters the same bytes end the entry.
  EXPECT_EQ(list("[lang]\nzelvreg=\xA8|x,204,tag"), (Entries{{"¨"}, {"x", "204", "tag"}}));
}

TEST_F(LanguageFileTest, AListMayBeUtf8) {
  EXPECT_EQ(
      list("\xEF\xBB\xBF[lang]\nzelvreg=日本語,128,japanese|עברית,177,hebrew\n"),
      (std::vector<LanguageFields>{{"日本語", "128", "japanese"}, {"עברית", "177", "hebrew"}}));
}

TEST_F(LanguageFileTest, EntriesAndFieldsMayBeMissing) {
  using Entries = std::vector<LanguageFields>;
  EXPECT_EQ(list("[lang]\nzelvreg=Solo||Two,238|"), (Entries{{"Solo"}, {}, {"Two", "238"}, {}}));
  EXPECT_EQ(list("[lang]\nzelvreg=\n"), Entries());
  EXPECT_EQ(list("[other]\nx=1\n"), Entries());
}

TEST_F(LanguageFileTest, AnyListIsReadToItsEndOrTheLimit) {
  for (const std::string& content : fixture::unrulyContents("|,\x83 1238")) {
    EXPECT_LE(list("[lang]\nzelvreg=" + content).size(), 1000U);
    EXPECT_LE(list("\xEF\xBB\xBF[lang]\nzelvreg=" + content).size(), 1000U);
  }
  std::string secondBytes;
  for (int character = 0; character < 100'000; ++character) {
    secondBytes += "\x83|";
  }
  EXPECT_EQ(list("[lang]\nzelvreg=" + secondBytes + ",128,x").size(), 1U);
}

TEST_F(LanguageFileTest, AnyFileGivesNoMoreThanPartOfALine) {
  for (const std::string& content : fixture::unrulyContents("[]a=\" \r\n")) {
    makeFile(file, content);
    for (const char* key : {"", "a", "aa", "no such key"}) {
      const std::string value = ReadLangValue(file, "a", key, 128);
      EXPECT_EQ(value.find_first_of("=\"\n"), std::string::npos);
    }
  }
}

TEST_F(LanguageFileTest, AValueMayBeAsLongAsItsLine) {
  const std::string text = fixture::longLine('\0');
  makeFile(file, "[A]\nk=" + text + "\nlater=1\n");
  EXPECT_TRUE(ReadLangValue(file, "A", "k", 0) == text);
  EXPECT_EQ(ReadLangValue(file, "A", "later", 0), "1");
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
