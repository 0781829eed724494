#include "text/Text.h"

#include <algorithm>

#include "text/Wide.h"

namespace zelvreg {
namespace {

// Almost all text is ASCII and needs no call; only the rest asks the system.
std::string changeCase(std::string_view text, char first, char last,
                       DWORD (*change)(LPWSTR, DWORD)) {
  if (asciiLength(text) < text.size()) {
    std::u16string wide = utf16(text);
    change(roomIn(wide), static_cast<DWORD>(wide.size()));
    return utf8(wide);
  }
  std::string result(text);
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
                    [](LPWSTR buffer, DWORD size) { return CharLowerBuffW(buffer, size); });
}

std::string upperCase(std::string_view text) {
  return changeCase(text, 'a', 'z',
                    [](LPWSTR buffer, DWORD size) { return CharUpperBuffW(buffer, size); });
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
  return findIgnoringCase(text, lowerCasePart) != std::string_view::npos;
}

std::size_t findIgnoringCase(std::string_view text, std::string_view lowerCasePart) {
  if (lowerCasePart.empty()) {
    return 0;
  }
  const auto isSame = [](char wanted, char character) {
    return character == wanted ||
           (character >= 'A' && character <= 'Z' && (character ^ 0x20) == wanted);
  };
  const char first = lowerCasePart.front();
  const bool isLetter = first >= 'a' && first <= 'z';
  // Where the first character stands next, as it is and as a capital.
  std::size_t asIs = text.find(first);
  std::size_t asCapital =
      isLetter ? text.find(static_cast<char>(first ^ 0x20)) : std::string_view::npos;
  while (true) {
    const std::size_t place = std::min(asIs, asCapital);
    if (place == std::string_view::npos || text.size() - place < lowerCasePart.size()) {
      return std::string_view::npos;
    }
    if (std::equal(lowerCasePart.begin(), lowerCasePart.end(), text.begin() + place, isSame)) {
      return place;
    }
    (place == asIs ? asIs : asCapital) = text.find(text[place], place + 1);
  }
}

std::string_view untilNul(std::string_view text) { return text.substr(0, text.find('\0')); }

}  // namespace zelvreg
