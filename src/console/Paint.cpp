#include "console/Paint.h"

namespace zelvreg::console {

bool environmentAllowsColor(const char* noColorText, const char* term) {
  const bool isSwitchedOff = noColorText != nullptr && *noColorText != '\0';
  return !isSwitchedOff && (term == nullptr || std::string_view(term) != "dumb");
}

Ink inkOf(Confidence confidence) {
  switch (confidence) {
    case Confidence::Sure:
      return Ink::Sure;
    case Confidence::Likely:
      return Ink::Likely;
    default:
      return Ink::Unsure;
  }
}

int colorOf(Ink ink) {
  switch (ink) {
    case Ink::Sure:
      return 28;  // green
    case Ink::Likely:
      return 130;  // orange
    case Ink::Unsure:
      return 97;  // violet
    case Ink::Error:
      return 160;  // red
    default:
      return noColor;
  }
}

std::string Paint::in(Ink ink, std::string_view text) const {
  if (!isOn) {
    return std::string(text);
  }
  const int color = colorOf(ink);
  const std::string code = color == noColor ? "1" : "38;5;" + std::to_string(color);
  return "\x1b[" + code + "m" + std::string(text) + "\x1b[0m";
}

}  // namespace zelvreg::console
