// Every text of the program that a language file may have.
#ifndef ZELVREG_TRANSLATION_TRANSLATABLE_TEXTS_H
#define ZELVREG_TRANSLATION_TRANSLATABLE_TEXTS_H

#include <string>
#include <string_view>
#include <vector>

namespace zelvreg {

class LanguageFile;

struct TranslatableText {
  std::string section;
  std::string key;
  // What the program shows without a language file; empty where it has nothing of its own to show.
  std::string english;
};

// In the order in which the files of the program have them, section by section.
const std::vector<TranslatableText>& translatableTexts();

// The text with this key, names in any case; null if there is none.
const TranslatableText* findTranslatable(std::string_view section, std::string_view key);

// Whether a line of a file can give exactly this text: quotation marks and blanks at its end are
// lost there, and so is what follows an equal sign.
bool canBeHeld(std::string_view text);

// The text of the English file, or the program's own where that has none.
std::string englishOf(const TranslatableText& text, const LanguageFile& english);

}  // namespace zelvreg

#endif
