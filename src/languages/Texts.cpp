#include "languages/Texts.h"

#include <algorithm>

#include "form/Form42.h"
#include "languages/readlangfile.h"
#include "unicode/ReadingOrder.h"

namespace zelvreg {
namespace {

std::string textAt(const Form42& form, std::size_t number) {
  const bool isTranslated = number < form.texts.size() && !form.texts[number].empty();
  return isTranslated ? form.texts[number] : std::string(texts.at(number).english);
}

// Paths among the values keep their order where the language is read from the right.
std::string filled(std::string_view pattern, std::initializer_list<std::string_view> values,
                   bool isReadFromRight) {
  std::string text;
  for (std::size_t at = 0; at < pattern.size(); ++at) {
    const std::size_t number =
        pattern[at] == '%' && at + 1 < pattern.size() && pattern[at + 1] > '0'
            ? static_cast<std::size_t>(pattern[at + 1] - '0')
            : 0;
    if (number == 0 || number > values.size()) {
      text += pattern[at];
    } else {
      const std::string_view value = values.begin()[number - 1];
      text += isReadFromRight ? keptLeftToRight(value) : std::string(value);
      ++at;
    }
  }
  return text;
}

}  // namespace

void loadTexts(Form42& form, const LanguageFile& language) {
  form.texts.clear();
  for (const Text& text : texts) {
    form.texts.push_back(language.value("Form42", text.key));
  }
}

std::string textOf(const Form42& form, TextKey key,
                   std::initializer_list<std::string_view> values) {
  return filled(textAt(form, key.number()), values, form.readsFromRight);
}

std::string translated(const Form42& form, const std::string& english) {
  const auto* known = std::ranges::find(texts, english, &Text::english);
  return known == texts.end() ? english
                              : textAt(form, static_cast<std::size_t>(known - texts.begin()));
}

}  // namespace zelvreg
