#include "text/Text.h"

#include <windows.h>

#include <algorithm>

namespace zelvreg {
namespace {

// Without a branch in the loop, so that the compiler takes many characters at once.
bool isAscii(std::string_view text) {
  unsigned all = 0;
  for (const char character : text) {
    all |= static_cast<unsigned char>(character);
  }
  return all < 0x80;
}

// Almost all text is ASCII and needs no call; only the rest asks the system about its code page.
std::string changeCase(std::string_view text, char first, char last,
                       DWORD (*change)(LPSTR, DWORD)) {
  std::string result(text);
  if (!isAscii(result)) {
    change(result.data(), static_cast<DWORD>(result.size()));
    return result;
  }
  for (char& character : result) {
    const bool isChanged = character >= first && character <= last;
    character = static_cast<char>(character ^ (isChanged ? 0x20 : 0));
  }
  return result;
}

}  // namespace

std::string_view trim(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) {
    return {};
  }
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string lowerCase(std::string_view text) {
  return changeCase(text, 'A', 'Z',
                    [](LPSTR buffer, DWORD size) { return CharLowerBuffA(buffer, size); });
}

std::string upperCase(std::string_view text) {
  return changeCase(text, 'a', 'z',
                    [](LPSTR buffer, DWORD size) { return CharUpperBuffA(buffer, size); });
}

std::vector<std::string_view> split(std::string_view text, std::string_view separator) {
  std::vector<std::string_view> parts;
  if (text.empty()) {
    return parts;
  }
  std::size_t start = 0;
  for (std::size_t end = text.find(separator); end != std::string_view::npos;
       end = text.find(separator, start)) {
    parts.push_back(text.substr(start, end - start));
    start = end + separator.size();
  }
  parts.push_back(text.substr(start));
  return parts;
}

std::string replaceAll(std::string_view text, std::string_view from, std::string_view to) {
  std::string result;
  std::size_t start = 0;
  for (std::size_t found = text.find(from); found != std::string_view::npos;
       found = text.find(from, start)) {
    result.append(text, start, found - start).append(to);
    start = found + from.size();
  }
  return result.append(text.substr(start));
}

bool contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

bool containsIgnoringCase(std::string_view text, std::string_view lowerCasePart) {
  const bool beginsWithLetter =
      !lowerCasePart.empty() && lowerCasePart.front() >= 'a' && lowerCasePart.front() <= 'z';
  if (!lowerCasePart.empty() && !beginsWithLetter) {
    text.remove_prefix(std::min(text.find(lowerCasePart.front()), text.size()));
  }
  const auto isSame = [](char character, char wanted) {
    return character == wanted ||
           (character >= 'A' && character <= 'Z' && (character ^ 0x20) == wanted);
  };
  return lowerCasePart.empty() || std::search(text.begin(), text.end(), lowerCasePart.begin(),
                                              lowerCasePart.end(), isSame) != text.end();
}

std::string_view untilNul(std::string_view text) { return text.substr(0, text.find('\0')); }

}  // namespace zelvreg
