#include "support/ShippedLanguages.h"

#include <fstream>
#include <iterator>

#include "support/SourceFolder.h"
#include "translation/TranslatableTexts.h"

namespace zelvreg::fixture {
std::vector<LanguageKey> languageKeys() {
  std::vector<LanguageKey> keys;
  for (const TranslatableText& text : translatableTexts()) {
    if (canBeHeld(text.english)) {
      keys.emplace_back(text.section, text.key);
    }
  }
  return keys;
}

std::string languageAsset(const std::string& name) {
  std::ifstream file(sourceFolder() + "/assets/lang/" + name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string fileOfLanguage(const ShippedLanguage& language) {
  return "zelvreg-" + std::string(language.tag) + ".lang";
}

}  // namespace zelvreg::fixture
