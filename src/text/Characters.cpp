#include "text/Characters.h"

#include <algorithm>

#include "unicode/Unicode.h"

namespace zelvreg {
namespace {

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

}  // namespace

std::size_t characterCount(std::string_view text) {
  std::size_t count = 0;
  for (; !text.empty(); ++count) {
    text = afterCharacters(text, 1);
  }
  return count;
}

std::string_view firstCharacters(std::string_view text, std::size_t count) {
  return text.substr(0, text.size() - afterCharacters(text, count).size());
}

std::string_view lastCharacters(std::string_view text, std::size_t count) {
  return text.substr(withoutLast(text, count).size());
}

std::string_view afterCharacters(std::string_view text, std::size_t count) {
  for (; count > 0 && !text.empty(); --count) {
    text.remove_prefix(firstCharacter(text).size);
  }
  return text;
}

std::string_view withoutLast(std::string_view text, std::size_t count) {
  std::size_t end = text.size();
  for (; count > 0 && end > 0; --count) {
    do {
      --end;
    } while (end > 0 && isContinuation(text[end]));
  }
  return text.substr(0, end);
}

char32_t characterAt(std::string_view text, std::size_t index) {
  const std::string_view rest = afterCharacters(text, index);
  return rest.empty() ? U'\0' : firstCharacter(rest).code;
}

std::string_view firstBytes(std::string_view text, std::size_t bytes) {
  std::size_t end = std::min(bytes, text.size());
  while (end < text.size() && end > 0 && isContinuation(text[end])) {
    --end;
  }
  return text.substr(0, end);
}

std::u32string charactersOf(std::string_view text) {
  std::u32string characters;
  for (; !text.empty(); text = afterCharacters(text, 1)) {
    characters += firstCharacter(text).code;
  }
  return characters;
}

}  // namespace zelvreg
