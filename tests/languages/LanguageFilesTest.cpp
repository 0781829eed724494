// The files of the languages that ship.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <set>
#include <span>
#include <string>

#include "languages/readlangfile.h"
#include "support/ComputerFixture.h"
#include "support/ShippedLanguages.h"
#include "text/Characters.h"
#include "translation/LanguageCheck.h"

namespace zelvreg {
namespace {

using fixture::ShippedLanguage;

const std::string folder = "C:\\LanguageFilesTest";

class LanguageFilesTest : public fixture::ComputerFixture {
 protected:
  LanguageFilesTest() {
    for (const ShippedLanguage& language : fixture::shippedLanguages) {
      makeFile(pathOf(language), fixture::languageAsset(fixture::fileOfLanguage(language)));
    }
  }

  static std::string pathOf(const ShippedLanguage& language) {
    return folder + "\\" + fixture::fileOfLanguage(language);
  }
  static LanguageFile read(const ShippedLanguage& language) {
    return {pathOf(language), language.charset};
  }
  static std::span<const ShippedLanguage> otherLanguages() {
    return std::span(fixture::shippedLanguages).subspan(1);
  }
  static LanguageFile readEnglish() { return read(fixture::shippedLanguages.front()); }
};

// All keys are there, once each; values, access keys and lengths are right.
TEST_F(LanguageFilesTest, TheCheckFindsNothingButWordsThatLanguagesShare) {
  const LanguageFile english = readEnglish();
  for (const ShippedLanguage& language : fixture::shippedLanguages) {
    const bool isEnglish = &language == fixture::shippedLanguages.data();
    for (const LanguageFinding& finding :
         checkLanguageFile(fixture::languageAsset(fixture::fileOfLanguage(language)),
                           language.charset, isEnglish ? nullptr : &english)) {
      EXPECT_EQ(finding.problem, LanguageProblem::SameAsEnglish)
          << language.tag << " " << finding.line << " " << sentenceOf(finding);
    }
  }
}

// Words that a language shares with English.
struct SharedWord {
  const char* tag;
  const char* word;
};

constexpr SharedWord sharedWords[] = {
    {"german", "OK"},    {"german", "Problem"},     {"german", "Details"}, {"german", "Start"},
    {"french", "OK"},    {"french", "Description"}, {"french", "Exact"},   {"french", "Exclusions"},
    {"spanish", "&No"},  {"portuguese", "OK"},      {"polish", "OK"},      {"polish", "Problem"},
    {"polish", "Start"}, {"italian", "OK"},         {"italian", "&No"},    {"dutch", "OK"},
    {"dutch", "Help"},   {"dutch", "Exact"},        {"dutch", "Details"},  {"japanese", "OK"},
};

TEST_F(LanguageFilesTest, EveryTextDiffersFromEnglishButForSharedWords) {
  const LanguageFile english = readEnglish();
  for (const ShippedLanguage& language : otherLanguages()) {
    const LanguageFile file = read(language);
    for (const TranslatableText& text : translatableTexts()) {
      const std::string translation = file.value(text.section, text.key);
      const bool isShared = std::ranges::any_of(sharedWords, [&](const SharedWord& each) {
        return language.tag == std::string_view(each.tag) && translation == each.word;
      });
      EXPECT_EQ(translation == englishOf(text, english), isShared)
          << language.tag << " " << text.key << ": " << translation;
    }
  }
}

enum class Script : std::uint8_t { None, Latin, Foreign, Cyrillic, Arabic, Kana, Han };

Script scriptOf(char32_t character) {
  struct Range {
    char32_t first;
    char32_t last;
    Script script;
  };
  constexpr Range ranges[] = {
      {U'A', U'Z', Script::Latin},      {U'a', U'z', Script::Latin},
      {0xC0, 0x24F, Script::Latin},     {0x370, 0x3FF, Script::Foreign},
      {0x400, 0x52F, Script::Cyrillic}, {0x590, 0x5FF, Script::Foreign},
      {0x620, 0x6FF, Script::Arabic},   {0x3041, 0x30FA, Script::Kana},
      {0x4E00, 0x9FFF, Script::Han},
  };
  const auto* found = std::ranges::find_if(ranges, [character](const Range& range) {
    return character >= range.first && character <= range.last;
  });
  return found == std::end(ranges) ? Script::None : found->script;
}

// Names that are not translated ("Windows", "DLL") are Latin in every language.
TEST_F(LanguageFilesTest, NoTextHasTheScriptOfAnotherLanguage) {
  struct Scripts {
    const char* tag;
    std::set<Script> own;
  };
  const Scripts foreign[] = {{"russian", {Script::Cyrillic}},
                             {"japanese", {Script::Kana, Script::Han}},
                             {"chinese", {Script::Han}},
                             {"arabic", {Script::Arabic}}};
  for (const ShippedLanguage& language : fixture::shippedLanguages) {
    std::set<Script> allowed;
    const auto* own =
        std::ranges::find(foreign, std::string_view(language.tag),
                          [](const Scripts& each) { return std::string_view(each.tag); });
    if (own != std::end(foreign)) {
      allowed = own->own;
    }
    const LanguageFile file = read(language);
    std::set<Script> seen;
    for (const auto& [section, key] : fixture::languageKeys()) {
      for (const char32_t character : charactersOf(file.value(section, key))) {
        const Script script = scriptOf(character);
        const bool isEverywhere = script == Script::None || script == Script::Latin;
        EXPECT_TRUE(isEverywhere || allowed.contains(script)) << language.tag << " " << key;
        EXPECT_NE(character, U'\xFFFD') << language.tag << " " << key;
        seen.insert(script);
      }
    }
    for (const Script script : allowed) {
      EXPECT_TRUE(seen.contains(script)) << language.tag;
    }
  }
}

}  // namespace
}  // namespace zelvreg
