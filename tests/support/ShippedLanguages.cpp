#include "support/ShippedLanguages.h"

#include <fstream>
#include <initializer_list>
#include <iterator>

#include "evidence/Reasons.h"
#include "languages/Texts.h"
#include "scan/CategoryTable.h"
#include "shell/Captions.h"
#include "support/SourceFolder.h"

namespace zelvreg::fixture {
namespace {

bool canBeHeld(std::string_view text) {
  return text.find('"') == std::string_view::npos && !text.ends_with(' ');
}

}  // namespace

std::vector<LanguageKey> languageKeys() {
  std::vector<LanguageKey> keys;
  for (const Category& category : categories()) {
    keys.emplace_back("Form42", category.nameKey);
    keys.emplace_back("Form42", category.textKey);
  }
  for (const auto& table : {captions(), furtherCaptions()}) {
    for (const Caption& caption : table) {
      keys.emplace_back("Form42", caption.key);
    }
  }
  for (const Text& text : texts) {
    if (canBeHeld(text.english)) {
      keys.emplace_back("Form42", text.key);
    }
  }
  for (const char* key : {"orubutton10", "Label222(1)", "Label1", "orubutton1"}) {
    keys.emplace_back("Form1", key);
  }
  for (const char* key : {"Label2(3)", "Label2(2)", "Label2(1)", "Label2(0)", "Label222(1)"}) {
    keys.emplace_back("frmabout", key);
  }
  for (const ReasonRule& rule : reasonRules()) {
    keys.emplace_back("Evidence", rule.code);
  }
  for (const Confidence confidence : {Confidence::Unsure, Confidence::Likely, Confidence::Sure}) {
    keys.emplace_back("Evidence", codeOf(confidence));
  }
  return keys;
}

std::vector<LanguageKey> keysInOtherLanguages() {
  std::vector<LanguageKey> keys;
  for (const Text& text : texts) {
    if (!canBeHeld(text.english)) {
      keys.emplace_back("Form42", text.key);
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
