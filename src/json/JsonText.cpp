#include "json/JsonText.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "json/JsonPieces.h"
#include "unicode/Unicode.h"

namespace zelvreg {
namespace {

using Json = nlohmann::ordered_json;

// The library writes and reads plain UTF-8 only. In its strings a NUL and four digits mean
// an unpaired surrogate, or a NUL itself.
constexpr char32_t stand = U'\0';
constexpr std::size_t digitCount = 4;

std::string hexadecimal(char32_t code) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string text;
  for (unsigned shift = 4 * digitCount; shift > 0;) {
    shift -= 4;
    text += digits[(code >> shift) & 0xFU];
  }
  return text;
}

// The number of the four digits that a text begins with, if it does.
std::optional<char32_t> numberAt(std::string_view text) {
  unsigned number = 0;
  const std::string_view digits = text.substr(0, digitCount);
  const auto [end, error] =
      std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
  const bool isWhole = digits.size() == digitCount && end == digits.data() + digits.size();
  return isWhole && error == std::errc() ? std::optional<char32_t>(number) : std::nullopt;
}

std::string withStands(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const Utf8Character next = firstCharacter(text);
    if (next.code == stand || isSurrogate(next.code)) {
      result += '\0';
      result += hexadecimal(next.code);
    } else {
      appendCharacter(result, next.code);
    }
    text.remove_prefix(next.size);
  }
  return result;
}

// Almost no object has a text that the library cannot write.
bool isPlain(const Json& value) {
  if (value.is_string()) {
    return isPlainUtf8(value.get_ref<const std::string&>());
  }
  return !value.is_structured() || std::ranges::all_of(value, isPlain);
}

void putStands(Json& value) {
  if (value.is_string()) {
    value = withStands(value.get_ref<const std::string&>());
  }
  if (value.is_structured()) {
    for (Json& member : value) {
      putStands(member);
    }
  }
}

constexpr std::string_view escapedStand = "\\u0000";

// What follows a stand in JSON is its digits: with the backslash they are the escape.
std::string withoutEscapedStands(std::string_view json) {
  std::string result;
  while (!json.empty()) {
    if (json.starts_with(escapedStand)) {
      result += "\\u";
      json.remove_prefix(escapedStand.size());
      continue;
    }
    const std::size_t size = json.front() == '\\' ? 2 : 1;
    result += json.substr(0, size);
    json.remove_prefix(size);
  }
  return result;
}

// `indent` as the library takes it.
std::string dumped(Json object, int indent) {
  if (isPlain(object)) {
    return object.dump(indent) + "\n";
  }
  putStands(object);
  return withoutEscapedStands(object.dump(indent) + "\n");
}

// The number of the escape that a text of JSON begins with, if it is one by number.
std::optional<char32_t> escapeAt(std::string_view json) {
  return json.starts_with("\\u") ? numberAt(json.substr(2)) : std::nullopt;
}

bool isPair(std::string_view json, char32_t first) {
  const auto second = escapeAt(json.substr(std::min(escapedStand.size(), json.size())));
  return isHighSurrogate(first) && second && isLowSurrogate(*second);
}

}  // namespace

std::string textOfJson(Json object) { return dumped(std::move(object), 2); }

std::string lineOfJson(Json object) { return dumped(std::move(object), -1); }

JsonPiece firstPiece(std::string_view json) {
  const auto code = escapeAt(json);
  if (code && isSurrogate(*code) && isPair(json, *code)) {
    return {.size = 2 * escapedStand.size()};
  }
  if (code && (isSurrogate(*code) || *code == stand)) {
    return {.size = escapedStand.size(), .isStood = true};
  }
  return {.size = std::min<std::size_t>(json.front() == '\\' ? 2 : 1, json.size())};
}

void appendReadable(std::string& readable, std::string_view json, const JsonPiece& piece) {
  if (piece.isStood) {
    readable.append(escapedStand).append(json.substr(2, digitCount));
  } else {
    readable += json.substr(0, piece.size);
  }
}

nlohmann::json jsonOfText(std::string_view text) {
  std::string json;
  while (!text.empty()) {
    const JsonPiece piece = firstPiece(text);
    appendReadable(json, text, piece);
    text.remove_prefix(piece.size);
  }
  return nlohmann::json::parse(json);
}

std::string withoutStands(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const std::size_t plain = std::min(text.find('\0'), text.size());
    result += text.substr(0, plain);
    text.remove_prefix(plain);
    if (text.empty()) {
      break;
    }
    const auto code = numberAt(text.substr(1));
    appendCharacter(result, code.value_or(stand));
    text.remove_prefix(code ? 1 + digitCount : 1);
  }
  return result;
}

std::string textIn(const nlohmann::json& string) {
  return withoutStands(string.get_ref<const std::string&>());
}

}  // namespace zelvreg
