#include "shell/SuiteColor.h"

#include "registry/View64.h"
#include "text/Numbers.h"
#include "text/Text.h"

namespace zelvreg {

std::uint32_t suiteColor(Form42& form) {
  constexpr std::uint32_t usualColor = 10118205;
  const std::string text = readSuiteColor(form);
  return trim(text).empty() ? usualColor : static_cast<std::uint32_t>(leadingInteger(text));
}

void giveColor(Button& button, std::uint32_t color) {
  button.backColor = color;
  button.backOver = color;
}

}  // namespace zelvreg
