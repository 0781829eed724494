#include "text/Pattern.h"

#include <optional>
#include <vector>

namespace zelvreg {
namespace {

bool isDigit(char character) { return character >= '0' && character <= '9'; }

// One element of a pattern: what it takes of a text.
struct Element {
  enum class Kind : std::uint8_t { Character, AnyOne, AnyNumber, Digit, List };
  Kind kind = Kind::Character;
  std::string_view characters;  // the one character, or what stands in the brackets
  bool isNegated = false;
};

bool isInList(std::string_view list, char character) {
  for (std::size_t at = 0; at < list.size(); ++at) {
    if (at + 2 < list.size() && list[at + 1] == '-') {
      if (character >= list[at] && character <= list[at + 2]) {
        return true;
      }
      at += 2;
    } else if (list[at] == character) {
      return true;
    }
  }
  return false;
}

bool hasBackwardRange(std::string_view list) {
  for (std::size_t at = 0; at + 2 < list.size(); ++at) {
    if (list[at + 1] == '-') {
      if (list[at] > list[at + 2]) {
        return true;
      }
      at += 2;
    }
  }
  return false;
}

// The list that begins behind a "[", taken off the pattern with its "]".
std::optional<Element> takeList(std::string_view& pattern) {
  const auto end = pattern.find(']');
  if (end == std::string_view::npos) {
    return std::nullopt;
  }
  Element element{Element::Kind::List, pattern.substr(0, end), false};
  pattern.remove_prefix(end + 1);
  // A "!" alone in its brackets stands for itself.
  if (element.characters.size() > 1 && element.characters.front() == '!') {
    element.isNegated = true;
    element.characters.remove_prefix(1);
  }
  return hasBackwardRange(element.characters) ? std::nullopt : std::optional(element);
}

std::optional<std::vector<Element>> elementsOf(std::string_view pattern) {
  std::vector<Element> elements;
  while (!pattern.empty()) {
    const std::string_view first = pattern.substr(0, 1);
    pattern.remove_prefix(1);
    switch (first.front()) {
      case '?':
        elements.push_back({Element::Kind::AnyOne, {}, false});
        break;
      case '*':
        elements.push_back({Element::Kind::AnyNumber, {}, false});
        break;
      case '#':
        elements.push_back({Element::Kind::Digit, {}, false});
        break;
      case '[': {
        const auto list = takeList(pattern);
        if (!list) {
          return std::nullopt;
        }
        if (!list->characters.empty()) {
          elements.push_back(*list);
        }
        break;
      }
      default:
        elements.push_back({Element::Kind::Character, first, false});
    }
  }
  return elements;
}

bool takes(const Element& element, char character) {
  switch (element.kind) {
    case Element::Kind::Digit:
      return isDigit(character);
    case Element::Kind::List:
      return isInList(element.characters, character) != element.isNegated;
    case Element::Kind::Character:
      return element.characters.front() == character;
    default:
      return true;
  }
}

// Only the last "*" is ever gone back to, so that the time stays below length times elements.
bool fits(std::string_view text, const std::vector<Element>& elements) {
  std::size_t at = 0;
  std::size_t element = 0;
  std::optional<std::size_t> lastStar;
  std::size_t starAt = 0;
  while (at < text.size()) {
    if (element < elements.size() && elements[element].kind == Element::Kind::AnyNumber) {
      lastStar = element++;
      starAt = at;
    } else if (element < elements.size() && takes(elements[element], text[at])) {
      ++element;
      ++at;
    } else if (lastStar) {
      element = *lastStar + 1;
      at = ++starAt;
    } else {
      return false;
    }
  }
  while (element < elements.size() && elements[element].kind == Element::Kind::AnyNumber) {
    ++element;
  }
  return element == elements.size();
}

}  // namespace

Match matchesPattern(std::string_view text, std::string_view pattern) {
  const auto elements = elementsOf(pattern);
  if (!elements) {
    return Match::Refused;
  }
  return fits(text, *elements) ? Match::Yes : Match::No;
}

}  // namespace zelvreg
