// The files of the languages that ship.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "languages/Texts.h"
#include "languages/readlangfile.h"
#include "support/ComputerFixture.h"
#include "support/ShippedLanguages.h"
#include "text/Characters.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

using fixture::LanguageKey;
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

  // What English says for a key, be it in its file or not.
  static std::string englishText(const LanguageFile& english, const LanguageKey& key) {
    const auto* text = std::ranges::find(texts, key.second, &Text::key);
    return key.first == "Form42" && text != texts.end() ? std::string(text->english)
                                                        : english.value(key.first, key.second);
  }

  static std::vector<LanguageKey> allKeys() {
    std::vector<LanguageKey> keys = fixture::languageKeys();
    const std::vector<LanguageKey> more = fixture::keysInOtherLanguages();
    keys.insert(keys.end(), more.begin(), more.end());
    return keys;
  }
};

// The lines of a file, without what ends them.
std::vector<std::string> linesOf(const std::string& content) {
  std::vector<std::string> lines;
  for (std::size_t start = 0; start < content.size();) {
    const std::size_t end = std::min(content.find("\r\n", start), content.size());
    lines.push_back(content.substr(start, end - start));
    start = end + 2;
  }
  return lines;
}

TEST_F(LanguageFilesTest, EveryLanguageHasATextOfItsOwnForEveryKey) {
  for (const ShippedLanguage& language : fixture::shippedLanguages) {
    const bool isEnglish = &language == fixture::shippedLanguages.data();
    const LanguageFile file = read(language);
    const std::string content = fixture::languageAsset(fixture::fileOfLanguage(language));
    for (const auto& [section, key] : isEnglish ? fixture::languageKeys() : allKeys()) {
      EXPECT_NE(file.value(section, key), "") << language.tag << " " << key;
      EXPECT_NE(content.find("\n" + key + "="), std::string::npos) << language.tag << " " << key;
    }
  }
}

TEST_F(LanguageFilesTest, NoLanguageHasAKeyThatTheProgramDoesNotAskFor) {
  const std::vector<LanguageKey> keys = allKeys();
  for (const ShippedLanguage& language : fixture::shippedLanguages) {
    std::string section;
    std::set<LanguageKey> seen;
    for (const std::string& line :
         linesOf(fixture::languageAsset(fixture::fileOfLanguage(language)))) {
      if (line.starts_with('[')) {
        section = line.substr(1, line.size() - 2);
      } else if (!line.empty()) {
        const LanguageKey key{section, line.substr(0, line.find('='))};
        EXPECT_TRUE(std::ranges::find(keys, key) != keys.end()) << language.tag << " " << line;
        EXPECT_TRUE(seen.insert(key).second) << language.tag << " twice: " << line;
      }
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
    for (const LanguageKey& key : allKeys()) {
      const std::string text = file.value(key.first, key.second);
      const bool isShared = std::ranges::any_of(sharedWords, [&](const SharedWord& each) {
        return language.tag == std::string_view(each.tag) && text == each.word;
      });
      EXPECT_EQ(text == englishText(english, key), isShared)
          << language.tag << " " << key.second << ": " << text;
    }
  }
}

// "%1" to "%9", as often as a text has them.
std::multiset<char> placesIn(std::string_view text) {
  std::multiset<char> places;
  for (std::size_t at = 0; at + 1 < text.size(); ++at) {
    if (text[at] == '%') {
      places.insert(text[at + 1]);
    }
  }
  return places;
}

TEST_F(LanguageFilesTest, EveryTextHasThePlacesForValuesThatEnglishHas) {
  const LanguageFile english = readEnglish();
  for (const ShippedLanguage& language : otherLanguages()) {
    const LanguageFile file = read(language);
    for (const LanguageKey& key : allKeys()) {
      EXPECT_EQ(placesIn(file.value(key.first, key.second)), placesIn(englishText(english, key)))
          << language.tag << " " << key.second;
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

// The letter after the "&" of a text, in lower case; NUL if it has none.
char32_t accessKeyOf(const std::string& text) {
  const std::size_t mark = text.find('&');
  return mark == std::string::npos ? 0 : characterAt(lowerCase(text.substr(mark + 1)), 0);
}

TEST_F(LanguageFilesTest, TheTwoAnswersOfAQuestionHaveDifferentAccessKeys) {
  for (const ShippedLanguage& language : fixture::shippedLanguages) {
    const LanguageFile file = read(language);
    const char32_t yes = accessKeyOf(file.value("Form42", "yes"));
    const char32_t no = accessKeyOf(file.value("Form42", "no"));
    EXPECT_NE(yes, 0U) << language.tag;
    EXPECT_NE(no, 0U) << language.tag;
    EXPECT_NE(yes, no) << language.tag;
  }
}

}  // namespace
}  // namespace zelvreg
