#include "translation/LanguageCheck.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "languages/readlangfile.h"
#include "support/ShippedLanguages.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

using Problem = LanguageProblem;

LanguageFile english() {
  return LanguageFile::ofBytes(fixture::languageAsset("zelvreg-english.lang"), 0);
}

std::string german() { return fixture::languageAsset("zelvreg-german.lang"); }

// "code key detail" of each, without hints.
std::vector<std::string> problemsOf(std::string_view bytes, int charset = 0) {
  const LanguageFile compared = english();
  std::vector<std::string> told;
  for (const LanguageFinding& finding : checkLanguageFile(bytes, charset, &compared)) {
    if (!isHint(finding.problem)) {
      std::string line = std::string(codeOf(finding.problem)) + " " + finding.key;
      told.push_back(finding.detail.empty() ? line : line + " " + finding.detail);
    }
  }
  return told;
}

std::string changed(std::string_view from, std::string_view to) {
  EXPECT_TRUE(contains(german(), from)) << from;
  return replaceAll(german(), from, to);
}

using Told = std::vector<std::string>;

TEST(LanguageCheck, AWholeFileHasNoProblem) { EXPECT_EQ(problemsOf(german()), Told()); }

TEST(LanguageCheck, ALineThatIsMissingOrEmptyIsTold) {
  EXPECT_EQ(problemsOf(changed("cmd_start=Start\r\n", "")), Told{"missing cmd_start"});
  EXPECT_EQ(problemsOf(changed("cmd_start=Start\r\n", "cmd_start=\r\n")),
            Told{"missing cmd_start"});
}

TEST(LanguageCheck, OfASectionThatIsMissingOnlyTheSectionIsTold) {
  std::string file = german();
  file.erase(file.find("[Evidence]"), file.find("[zelvtrans]") - file.find("[Evidence]"));
  EXPECT_EQ(problemsOf(file), Told{"no-section "});
}

TEST(LanguageCheck, LinesThatTheProgramDoesNotAskForAreTold) {
  EXPECT_EQ(problemsOf(changed("cmd_start=Start\r\n", "cmd_start=Start\r\ncmd_begin=Los\r\n")),
            Told{"unknown-key cmd_begin"});
  EXPECT_EQ(problemsOf(changed("cmd_start=Start\r\n", "cmd_start=Start\r\nCMD_START=Los\r\n")),
            Told{"twice CMD_START"});
  EXPECT_EQ(problemsOf(changed("cmd_start=Start\r\n", "cmd_start=Start\r\nand more\r\n")),
            Told{"no-pair and more"});
}

TEST(LanguageCheck, WhatATextCannotHoldIsTold) {
  EXPECT_EQ(problemsOf(changed("cmd_start=Start\r\n", "cmd_start=A=B\r\n")),
            Told{"forbidden cmd_start"});
  EXPECT_EQ(problemsOf(changed("cmd_start=Start\r\n", "cmd_start=\"Los\"\r\n")),
            Told{"forbidden cmd_start"});
}

TEST(LanguageCheck, PlacesForValuesAreThoseOfEnglish) {
  EXPECT_EQ(problemsOf(changed("scan-place=%1 von %2", "scan-place=%1 von %1")),
            Told{"values scan-place %2 is missing, %1 is too much"});
  EXPECT_EQ(problemsOf(changed("scan-place=%1 von %2", "scan-place=%2 insgesamt, %1")), Told());
}

TEST(LanguageCheck, TheTwoAnswersOfAQuestionHaveDifferentAccessKeys) {
  EXPECT_EQ(problemsOf(changed("no=&Nein", "no=Nein&j")), Told{"access-key no yes"});
}

TEST(LanguageCheck, AccessKeysDifferOnEachPageButNotBetweenPages) {
  const std::string start = changed("cmd_start=Start", "cmd_start=&Start");
  EXPECT_EQ(problemsOf(replaceAll(start, "cmdFind=Suchen", "cmdFind=&Suchen")),
            Told{"access-key cmdFind cmd_start"});
  const std::string undo =
      changed("chameleonButton3=Ausgew\xE4hlten", "chameleonButton3=A&usgew\xE4hlten");
  EXPECT_EQ(problemsOf(replaceAll(undo, "chameleonButton6=Entfernen", "chameleonButton6=&Unfug")),
            Told());
}

TEST(LanguageCheck, ATextThatHasNoRoomIsTold) {
  EXPECT_EQ(problemsOf(changed("a1=Schriftarten", "a1=Schriftarten und alles, was ihnen gleicht")),
            Told{"too-long a1"});
  EXPECT_EQ(problemsOf(changed("chameleonButton10=Weiter",
                               "chameleonButton10=Weitersuchenundweiterfinden")),
            Told{"too-long chameleonButton10"});
  // A button of the side bar wraps its caption.
  EXPECT_EQ(
      problemsOf(changed("orubutton3=Aktualisieren", "orubutton3=Alles noch einmal lesen lassen")),
      Told());
  // A message is as large as its text.
  EXPECT_EQ(problemsOf(changed("notice-nothing=Es", "notice-nothing=" + std::string(500, 'x'))),
            Told());
}

TEST(LanguageCheck, TheFirstLineThatEndsOtherwiseThanWindowsWantsIsTold) {
  const LanguageFile compared = english();
  const auto found =
      checkLanguageFile(changed("a2=Gemeinsame DLLs\r\n", "a2=Gemeinsame DLLs\n"), 0, &compared);
  ASSERT_FALSE(found.empty());
  EXPECT_EQ(found.front().problem, Problem::LineEnd);
  EXPECT_EQ(found.front().line, 3U);
}

TEST(LanguageCheck, BytesThatAreNoTextOfTheCodePageAreTold) {
  // Half a character of Japanese.
  const std::string japanese = fixture::languageAsset("zelvreg-japanese.lang");
  EXPECT_EQ(problemsOf(replaceAll(japanese, "cmd_start=", "cmd_start=\x82\r\nx"), 128).front(),
            "bad-bytes cmd_start");
  const std::string text = changed("cmd_start=Start", "cmd_start=St\xE4rt");
  EXPECT_EQ(problemsOf(text), Told());
  EXPECT_EQ(problemsOf("\xEF\xBB\xBF" + text).front().substr(0, 9), "bad-bytes");
}

TEST(LanguageCheck, AMarkedFileIsUtf8WhateverTheCharset) {
  const std::string utf8 = "\xEF\xBB\xBF[Form42]\r\ncmd_start=Старт 開始\r\n";
  const std::vector<std::string> told = problemsOf(utf8, 238);
  EXPECT_EQ(std::ranges::count(told, "missing cmd_start"), 0);
  EXPECT_EQ(std::ranges::count_if(told,
                                  [](const std::string& line) {
                                    return line.starts_with("bad-bytes") ||
                                           line.starts_with("unwritable");
                                  }),
            0);
}

TEST(LanguageCheck, ACharacterThatTheCodePageLacksIsTold) {
  const TranslatableText* text = findTranslatable("form42", "CMD_START");
  ASSERT_NE(text, nullptr);
  ASSERT_EQ(problemsOfText(*text, "Старт", 1252).size(), 1U);
  EXPECT_EQ(problemsOfText(*text, "Старт", 1252).front().problem, Problem::Unwritable);
  EXPECT_TRUE(problemsOfText(*text, "Старт", 1251).empty());
  EXPECT_TRUE(problemsOfText(*text, "Старт", CP_UTF8).empty());
}

TEST(LanguageCheck, EveryKindOfProblemHasItsOwnWords) {
  std::set<std::string> codes;
  for (int kind = 0; kind <= static_cast<int>(Problem::SameAsEnglish); ++kind) {
    const auto problem = static_cast<Problem>(kind);
    EXPECT_TRUE(codes.insert(codeOf(problem)).second);
    EXPECT_NE(sentenceOf({.problem = problem}), "");
  }
  EXPECT_STREQ(codeOf(Problem::SameAsEnglish), "same-as-english");
}

TEST(LanguageCheck, TheNameOfAFileTellsItsTagAndTheListItsCharset) {
  EXPECT_EQ(tagOfFile("C:\\a\\zelvreg-German.lang"), "german");
  EXPECT_EQ(tagOfFile("a/b/zelvreg-x.lang"), "x");
  EXPECT_EQ(tagOfFile("zelvreg-.lang"), "");
  EXPECT_EQ(tagOfFile("other.lang"), "");
  const std::string list = fixture::languageAsset("data.lang");
  EXPECT_EQ(charsetInList(list, "polish"), 238);
  EXPECT_EQ(charsetInList(list, "klingon"), std::nullopt);
}

TEST(LanguageCheck, EveryAnswerHasAnAccessKey) {
  for (const fixture::ShippedLanguage& language : fixture::shippedLanguages) {
    const LanguageFile file = LanguageFile::ofBytes(
        fixture::languageAsset(fixture::fileOfLanguage(language)), language.charset);
    EXPECT_TRUE(contains(file.value("Form42", "yes"), "&")) << language.tag;
    EXPECT_TRUE(contains(file.value("Form42", "no"), "&")) << language.tag;
  }
}

}  // namespace
}  // namespace zelvreg
