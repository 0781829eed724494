#include "desktop/AccessKeys.h"

#include <algorithm>
#include <optional>
#include <set>
#include <string_view>

#include "text/Characters.h"
#include "text/Text.h"
#include "unicode/Unicode.h"

namespace zelvreg::desktop {
namespace {

std::string textOf(char32_t character) {
  std::string text;
  appendCharacter(text, character);
  return text;
}

// Chinese, Japanese and Korean characters are typed by several keys each.
constexpr char32_t firstComposed = 0x2E80;

bool isDigit(char32_t character) { return character >= U'0' && character <= U'9'; }

bool isLetter(char32_t character) {
  const bool isLatin =
      (character >= U'a' && character <= U'z') || (character >= U'A' && character <= U'Z');
  return isLatin || isDigit(character) ||
         (character >= 0xC0 && character < firstComposed &&
          !(character >= 0x2000 && character < 0x2C00));
}

std::string keyOf(char32_t character) { return lowerCase(textOf(character)); }

struct Caption {
  std::u32string text;                // without marks
  std::optional<std::size_t> marked;  // the index of the character with the mark
};

Caption read(std::string_view caption) {
  Caption result;
  const std::u32string all = charactersOf(caption);
  for (std::size_t at = 0; at < all.size(); ++at) {
    const bool isMark = all[at] == U'&' && at + 1 < all.size() && all[at + 1] != U' ';
    if (isMark && all[at + 1] != U'&') {
      result.marked = result.marked.value_or(result.text.size());
      continue;
    }
    result.text += all[at];
    at += isMark ? 1 : 0;
  }
  return result;
}

std::string written(const Caption& caption) {
  std::string text;
  for (std::size_t at = 0; at < caption.text.size(); ++at) {
    text += caption.marked == at ? "&" : "";
    text += caption.text[at] == U'&' ? "&&" : textOf(caption.text[at]);
  }
  return text;
}

class Keys {
 public:
  void take(const Caption& caption) {
    if (caption.marked) {
      taken.insert(keyOf(caption.text[*caption.marked]));
    }
  }

  void give(Caption& caption) {
    const bool isComposed = std::ranges::any_of(
        caption.text, [](char32_t character) { return character >= firstComposed; });
    if (isComposed) {
      append(caption);
      return;
    }
    for (const bool onlyStarts : {true, false}) {
      for (std::size_t at = 0; at < caption.text.size() && !caption.marked; ++at) {
        const bool isStart = at == 0 || !isLetter(caption.text[at - 1]);
        if ((isStart || !onlyStarts) && isLetter(caption.text[at]) &&
            taken.insert(keyOf(caption.text[at])).second) {
          caption.marked = at;
        }
      }
    }
  }

 private:
  void append(Caption& caption) {
    for (const char32_t letter : std::u32string_view(U"ABCDEFGHIJKLMNOPQRSTUVWXYZ123456789")) {
      if (taken.insert(keyOf(letter)).second) {
        caption.text += U'(';
        caption.marked = caption.text.size();
        caption.text += letter;
        caption.text += U')';
        return;
      }
    }
  }

  std::set<std::string> taken;
};

}  // namespace

std::vector<std::string> withAccessKeys(const std::vector<std::string>& captions) {
  std::vector<Caption> all;
  Keys keys;
  for (const std::string& caption : captions) {
    keys.take(all.emplace_back(read(caption)));
  }
  std::vector<std::string> marked;
  for (Caption& caption : all) {
    if (!caption.marked) {
      keys.give(caption);
    }
    marked.push_back(written(caption));
  }
  return marked;
}

}  // namespace zelvreg::desktop
