// The languages that ship, and every key of their files.
#ifndef TESTS_SUPPORT_SHIPPEDLANGUAGES_H
#define TESTS_SUPPORT_SHIPPEDLANGUAGES_H

#include <array>
#include <string>
#include <utility>
#include <vector>

namespace zelvreg::fixture {

struct ShippedLanguage {
  const char* tag;
  const char* name;  // in the language itself
  int charset;
};

// In the order of the picker.
inline constexpr std::array shippedLanguages{
    ShippedLanguage{"english", "English", 0},      ShippedLanguage{"german", "Deutsch", 0},
    ShippedLanguage{"french", "Français", 0},      ShippedLanguage{"spanish", "Español", 0},
    ShippedLanguage{"portuguese", "Português", 0}, ShippedLanguage{"polish", "Polski", 238},
    ShippedLanguage{"italian", "Italiano", 0},     ShippedLanguage{"dutch", "Nederlands", 0},
    ShippedLanguage{"russian", "Русский", 204},    ShippedLanguage{"japanese", "日本語", 128},
    ShippedLanguage{"chinese", "简体中文", 134},   ShippedLanguage{"arabic", "العربية", 178},
};

// A section and a key in it.
using LanguageKey = std::pair<std::string, std::string>;

// All that the English file has. It lacks the texts of languages/Texts.h with quotation marks or a
// blank at the end, which a file cannot hold; other languages have these, too.
std::vector<LanguageKey> languageKeys();

// The bytes of a file of assets/lang.
std::string languageAsset(const std::string& name);
// The name of a language's file.
std::string fileOfLanguage(const ShippedLanguage& language);

}  // namespace zelvreg::fixture

#endif
