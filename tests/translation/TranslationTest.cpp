#include "translation/Translation.h"

#include <gtest/gtest.h>

#include "support/ShippedLanguages.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

LanguageFile english() {
  return LanguageFile::ofBytes(fixture::languageAsset("zelvreg-english.lang"), 0);
}

class TranslationTest : public ::testing::Test {
 protected:
  std::size_t entryOf(std::string_view key) const {
    const auto& entries = translation.entries();
    for (std::size_t entry = 0; entry < entries.size(); ++entry) {
      if (entries[entry].text->key == key) {
        return entry;
      }
    }
    return entries.size();
  }

  std::string german = fixture::languageAsset("zelvreg-german.lang");
  Translation translation{english()};
};

TEST_F(TranslationTest, AFileThatIsNotChangedIsWrittenAsItWas) {
  for (const fixture::ShippedLanguage& language : fixture::shippedLanguages) {
    const std::string bytes = fixture::languageAsset(fixture::fileOfLanguage(language));
    translation.read(bytes, language.charset);
    EXPECT_FALSE(translation.isChanged());
    EXPECT_TRUE(translation.bytes() == bytes) << language.tag;
  }
}

TEST_F(TranslationTest, OneTextChangesOneLine) {
  translation.read(german, 0);
  translation.translate(entryOf("cmd_start"), "Los geht’s");
  EXPECT_TRUE(translation.isChanged());
  EXPECT_EQ(translation.bytes(),
            replaceAll(german, "cmd_start=Start\r\n", "cmd_start=Los geht\x92s\r\n"));
  translation.markAsKept();
  EXPECT_FALSE(translation.isChanged());
}

TEST_F(TranslationTest, WhatTheFileLacksIsPutAtTheEndOfItsSection) {
  translation.read("[Form42]\r\na1=Eins\r\n\r\n[frmabout]\r\nLabel2(3)=Hilfe\r\n", 0);
  translation.translate(entryOf("a2"), "Zwei");
  translation.translate(entryOf("sure"), "Sicher");
  EXPECT_EQ(translation.bytes(),
            "[Form42]\r\na1=Eins\r\na2=Zwei\r\n\r\n[frmabout]\r\nLabel2(3)=Hilfe\r\n\r\n"
            "[Evidence]\r\nsure=Sicher\r\n");
}

TEST_F(TranslationTest, LinesThatTheProgramDoesNotKnowStay) {
  const std::string bytes = "; mine\r\n[Form42]\r\nmore=x=y\r\na1=Eins\r\na1=Two\r\n";
  translation.read(bytes, 0);
  EXPECT_EQ(translation.bytes(), bytes);
}

TEST_F(TranslationTest, ATextThatIsEmptiedLeavesTheFile) {
  translation.read("[Form42]\r\na1=Eins\r\na2=Zwei\r\n", 0);
  translation.translate(entryOf("a1"), "");
  EXPECT_EQ(translation.bytes(), "[Form42]\r\na2=Zwei\r\n");
}

TEST_F(TranslationTest, LinesAreEndedAsOnWindows) {
  translation.read("[Form42]\na1=Eins\n", 0);
  EXPECT_EQ(translation.bytes(), "[Form42]\r\na1=Eins\r\n");
}

TEST_F(TranslationTest, AFileKeepsItsEncoding) {
  translation.read("\xEF\xBB\xBF[Form42]\r\na1=Один\r\n", 238);
  EXPECT_TRUE(translation.isUtf8());
  translation.translate(entryOf("a1"), "二");
  EXPECT_EQ(translation.bytes(), "\xEF\xBB\xBF[Form42]\r\na1=二\r\n");
  translation.read("[Form42]\r\na1=\xC3\xE9\r\n", 204);
  EXPECT_FALSE(translation.isUtf8());
  EXPECT_EQ(translation.entries()[entryOf("a1")].translation, "Гй");
  translation.translate(entryOf("a1"), "Б");
  EXPECT_EQ(translation.bytes(), "[Form42]\r\na1=\xC1\r\n");
}

TEST_F(TranslationTest, WhatTheCodePageLacksNeedsUtf8) {
  translation.read("[Form42]\r\na1=Eins\r\n", 0);
  translation.translate(entryOf("a1"), "Один");
  EXPECT_EQ(translation.bytes(), std::nullopt);
  const auto problems = translation.problemsOf(entryOf("a1"));
  ASSERT_EQ(problems.size(), 1U);
  EXPECT_EQ(problems.front().problem, LanguageProblem::Unwritable);
  translation.setUtf8(true);
  EXPECT_EQ(translation.bytes(), "\xEF\xBB\xBF[Form42]\r\na1=Один\r\n");
  EXPECT_TRUE(translation.problemsOf(entryOf("a1")).empty());
}

TEST_F(TranslationTest, TheProgramReadsWhatWasWritten) {
  translation.read(german, 0);
  for (std::size_t entry = 0; entry < translation.entries().size(); ++entry) {
    translation.translate(entry, "Text " + std::to_string(entry));
  }
  translation.setUtf8(true);
  const LanguageFile written = LanguageFile::ofBytes(translation.bytes().value_or(""), 0);
  for (std::size_t entry = 0; entry < translation.entries().size(); ++entry) {
    const TranslatableText& text = *translation.entries()[entry].text;
    EXPECT_EQ(written.value(text.section, text.key), "Text " + std::to_string(entry));
  }
}

TEST_F(TranslationTest, TheNextProblemIsFoundFromAnyTextOnAndFromTheBeginningAgain) {
  translation.read(german, 0);
  EXPECT_EQ(translation.nextProblem(std::nullopt), std::nullopt);
  translation.translate(entryOf("a3"), "");
  translation.translate(entryOf("scan-place"), "%1");
  EXPECT_EQ(translation.nextProblem(std::nullopt), entryOf("a3"));
  EXPECT_EQ(translation.nextProblem(entryOf("a3")), entryOf("scan-place"));
  EXPECT_EQ(translation.nextProblem(entryOf("scan-place")), entryOf("a3"));
}

TEST_F(TranslationTest, ATextIsOneLine) {
  translation.translate(entryOf("a1"), "one\r\na2=two");
  EXPECT_EQ(translation.entries()[entryOf("a1")].translation, "one");
}

TEST_F(TranslationTest, AccessKeysOfOtherControlsAreTold) {
  translation.read(german, 0);
  translation.translate(entryOf("no"), "Nein&j");
  const auto problems = translation.problemsOf(entryOf("no"));
  ASSERT_EQ(problems.size(), 1U);
  EXPECT_EQ(problems.front().problem, LanguageProblem::AccessKey);
}

}  // namespace
}  // namespace zelvreg
