#include "translation/TranslatableTexts.h"

#include <algorithm>

#include "evidence/Reasons.h"
#include "form/Form42.h"
#include "languages/Texts.h"
#include "languages/readlangfile.h"
#include "scan/CategoryTable.h"
#include "shell/Captions.h"
#include "text/Text.h"
#include "translation/TranslatorTexts.h"

namespace zelvreg {
namespace {

constexpr const char* mainForm = "Form42";

void addMainForm(std::vector<TranslatableText>& all) {
  for (const Category& category : categories()) {
    all.push_back({mainForm, std::string(category.nameKey), {}});
  }
  for (const Category& category : categories()) {
    all.push_back({mainForm, std::string(category.textKey), {}});
  }
  const Form42 asMade;
  for (const auto& table : {captions(), furtherCaptions()}) {
    for (const Caption& caption : table) {
      all.push_back({mainForm, std::string(caption.key), caption.get(asMade)});
    }
  }
  for (const Text& text : texts) {
    all.push_back({mainForm, std::string(text.key), std::string(text.english)});
  }
}

void addEvidence(std::vector<TranslatableText>& all) {
  for (const Confidence confidence : {Confidence::Sure, Confidence::Likely, Confidence::Unsure}) {
    all.push_back({"Evidence", codeOf(confidence), {}});
  }
  for (const ReasonRule& rule : reasonRules()) {
    all.push_back({"Evidence", rule.code, rule.sentence});
  }
}

std::vector<TranslatableText> listAll() {
  std::vector<TranslatableText> all;
  addMainForm(all);
  for (const char* key : {"orubutton10", "Label222(1)", "Label1", "orubutton1"}) {
    all.push_back({"Form1", key, {}});
  }
  for (const char* key : {"Label2(3)", "Label2(2)", "Label2(1)", "Label2(0)", "Label222(1)"}) {
    all.push_back({"frmabout", key, {}});
  }
  addEvidence(all);
  for (const Text& text : translatorTexts) {
    all.push_back({translatorSection, std::string(text.key), std::string(text.english)});
  }
  return all;
}

}  // namespace

const std::vector<TranslatableText>& translatableTexts() {
  static const std::vector<TranslatableText> all = listAll();
  return all;
}

const TranslatableText* findTranslatable(std::string_view section, std::string_view key) {
  const std::string wantedSection = lowerCase(section);
  const std::string wantedKey = lowerCase(key);
  const auto found = std::ranges::find_if(translatableTexts(), [&](const TranslatableText& text) {
    return lowerCase(text.key) == wantedKey && lowerCase(text.section) == wantedSection;
  });
  return found == translatableTexts().end() ? nullptr : &*found;
}

bool canBeHeld(std::string_view text) {
  return text.find_first_of("\"=\r\n") == std::string_view::npos && !text.ends_with(' ');
}

std::string englishOf(const TranslatableText& text, const LanguageFile& english) {
  std::string told = canBeHeld(text.english) ? english.value(text.section, text.key) : "";
  return told.empty() ? text.english : told;
}

}  // namespace zelvreg
