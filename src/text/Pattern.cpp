#include "text/Pattern.h"

#include <optional>
#include <string>
#include <vector>

#include "text/Characters.h"
#include "unicode/Unicode.h"

namespace zelvreg {
namespace {

// ASCII is matched as it is; for other text there is one element for each character.
template <typename Character>
using Characters = std::basic_string_view<Character>;

template <typename Character>
bool isDigit(Character character) {
  return character >= Character{'0'} && character <= Character{'9'};
}

// One element of a pattern: what it takes of a text.
template <typename Character>
struct Element {
  enum class Kind : std::uint8_t { This, AnyOne, AnyNumber, Digit, List };
  Kind kind = Kind::This;
  Characters<Character> characters;  // the one character, or what is in the brackets
  bool isNegated = false;
};

template <typename Character>
bool isInList(Characters<Character> list, Character character) {
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

template <typename Character>
bool hasBackwardRange(Characters<Character> list) {
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

// The list that begins after a "[", taken off the pattern with its "]".
template <typename Character>
std::optional<Element<Character>> takeList(Characters<Character>& pattern) {
  const auto end = pattern.find(']');
  if (end == pattern.npos) {
    return std::nullopt;
  }
  Element<Character> element{Element<Character>::Kind::List, pattern.substr(0, end), false};
  pattern.remove_prefix(end + 1);
  // A "!" alone in its brackets stands for itself.
  if (element.characters.size() > 1 && element.characters.front() == '!') {
    element.isNegated = true;
    element.characters.remove_prefix(1);
  }
  return hasBackwardRange(element.characters) ? std::nullopt : std::optional(element);
}

template <typename Character>
std::optional<std::vector<Element<Character>>> elementsOf(Characters<Character> pattern) {
  using Kind = typename Element<Character>::Kind;
  std::vector<Element<Character>> elements;
  while (!pattern.empty()) {
    const Characters<Character> first = pattern.substr(0, 1);
    pattern.remove_prefix(1);
    switch (first.front()) {
      case '?':
        elements.push_back({Kind::AnyOne, {}, false});
        break;
      case '*':
        elements.push_back({Kind::AnyNumber, {}, false});
        break;
      case '#':
        elements.push_back({Kind::Digit, {}, false});
        break;
      case '[': {
        const auto list = takeList<Character>(pattern);
        if (!list) {
          return std::nullopt;
        }
        if (!list->characters.empty()) {
          elements.push_back(*list);
        }
        break;
      }
      default:
        elements.push_back({Kind::This, first, false});
    }
  }
  return elements;
}

template <typename Character>
bool takes(const Element<Character>& element, Character character) {
  using Kind = typename Element<Character>::Kind;
  switch (element.kind) {
    case Kind::Digit:
      return isDigit(character);
    case Kind::List:
      return isInList(element.characters, character) != element.isNegated;
    case Kind::This:
      return element.characters.front() == character;
    default:
      return true;
  }
}

// Only the last "*" is ever gone back to, so that the time stays below length times elements.
template <typename Character>
bool fits(Characters<Character> text, const std::vector<Element<Character>>& elements) {
  constexpr auto star = Element<Character>::Kind::AnyNumber;
  std::size_t at = 0;
  std::size_t element = 0;
  std::optional<std::size_t> lastStar;
  std::size_t starAt = 0;
  while (at < text.size()) {
    if (element < elements.size() && elements[element].kind == star) {
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
  while (element < elements.size() && elements[element].kind == star) {
    ++element;
  }
  return element == elements.size();
}

template <typename Character>
Match match(Characters<Character> text, Characters<Character> pattern) {
  const auto elements = elementsOf<Character>(pattern);
  if (!elements) {
    return Match::Refused;
  }
  return fits<Character>(text, *elements) ? Match::Yes : Match::No;
}

bool isAscii(std::string_view text) { return asciiLength(text) == text.size(); }

}  // namespace

Match matchesPattern(std::string_view text, std::string_view pattern) {
  if (isAscii(text) && isAscii(pattern)) {
    return match<char>(text, pattern);
  }
  return match<char32_t>(charactersOf(text), charactersOf(pattern));
}

}  // namespace zelvreg
