#include "text/Numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <optional>

#include "text/Text.h"

namespace zelvreg {
namespace {

bool isPassedOver(char character) {
  return character == ' ' || character == '\t' || character == '\n' || character == '\r';
}

std::string withoutBlanks(std::string_view text) {
  std::string result;
  for (const char character : text) {
    if (!isPassedOver(character)) {
      result.push_back(character);
    }
  }
  return result;
}

std::size_t countDigits(std::string_view text) {
  const auto end = text.find_first_not_of("0123456789");
  return end == std::string_view::npos ? text.size() : end;
}

// A whole number written as &H… or &O…. Its digits fill 16 bits before they fill 32, so "&HFFFF"
// is -1, as a 16-bit number is read.
std::optional<double> prefixedNumber(std::string_view text) {
  if (text.empty() || text.front() != '&') {
    return std::nullopt;
  }
  text.remove_prefix(1);
  int base = 8;
  if (!text.empty() && (text.front() == 'H' || text.front() == 'h')) {
    base = 16;
    text.remove_prefix(1);
  } else if (!text.empty() && (text.front() == 'O' || text.front() == 'o')) {
    text.remove_prefix(1);
  }
  std::uint32_t bits = 0;
  const auto parsed = std::from_chars(text.data(), text.data() + text.size(), bits, base);
  if (parsed.ec != std::errc()) {
    return 0.0;
  }
  if (bits <= 0xFFFF) {
    return static_cast<std::int16_t>(bits);
  }
  return static_cast<std::int32_t>(bits);
}

// How much of an unsigned text is a decimal number.
std::size_t decimalLength(std::string_view text) {
  std::size_t length = countDigits(text);
  std::size_t digits = length;
  if (length < text.size() && text[length] == '.') {
    const std::size_t fraction = countDigits(text.substr(length + 1));
    digits += fraction;
    length += 1 + fraction;
  }
  if (digits == 0) {
    return 0;
  }
  std::string_view rest = text.substr(length);
  if (!rest.empty() && std::string_view("eEdD").find(rest.front()) != std::string_view::npos) {
    rest.remove_prefix(1);
    const std::size_t sign = !rest.empty() && (rest.front() == '+' || rest.front() == '-') ? 1 : 0;
    const std::size_t exponent = countDigits(rest.substr(sign));
    if (exponent > 0) {
      length += 1 + sign + exponent;
    }
  }
  return length;
}

// A text without its sign, brackets or currency sign.
struct SignedText {
  std::string_view digits;
  bool isNegative = false;
};

bool removeFront(std::string_view& text, char character) {
  const bool stands = !text.empty() && text.front() == character;
  text.remove_prefix(stands ? 1 : 0);
  return stands;
}

bool removeBack(std::string_view& text, char character) {
  const bool stands = !text.empty() && text.back() == character;
  text.remove_suffix(stands ? 1 : 0);
  return stands;
}

std::string_view withoutOuterBlanks(std::string_view text) {
  while (!text.empty() && isPassedOver(text.front())) {
    text.remove_prefix(1);
  }
  while (!text.empty() && isPassedOver(text.back())) {
    text.remove_suffix(1);
  }
  return text;
}

// Nothing when the signs do not go together.
std::optional<SignedText> takeSign(std::string_view text) {
  SignedText result;
  int signs = 0;
  if (removeFront(text, '(')) {
    if (!removeBack(text, ')')) {
      return std::nullopt;
    }
    result.isNegative = true;
    ++signs;
  }
  removeFront(text, '$');
  for (const char sign : {'-', '+'}) {
    if (removeFront(text, sign) || removeBack(text, sign)) {
      result.isNegative = sign == '-';
      ++signs;
    }
  }
  removeFront(text, '$');
  result.digits = withoutOuterBlanks(text);
  return signs <= 1 ? std::optional(result) : std::nullopt;
}

bool isPrefixedNumber(std::string_view text) {
  if (!removeFront(text, '&')) {
    return false;
  }
  const bool isHexadecimal = removeFront(text, 'H') || removeFront(text, 'h');
  if (!isHexadecimal && !removeFront(text, 'O')) {
    removeFront(text, 'o');
  }
  const char* allowed = isHexadecimal ? "0123456789ABCDEFabcdef" : "01234567";
  return !text.empty() && text.find_first_not_of(allowed) == std::string_view::npos;
}

// Commas may stand between digits in front of the decimal point.
std::string withoutGroupCommas(std::string_view text) {
  std::string result(text);
  const auto end = text.find_first_not_of("0123456789,");
  if (!text.empty() && text.front() != ',') {
    result = text.substr(0, end);
    std::erase(result, ',');
    result += end == std::string_view::npos ? std::string_view() : text.substr(end);
  }
  return result;
}

}  // namespace

std::optional<double> convertedNumber(std::string_view text) {
  text = withoutOuterBlanks(text);
  if (isPrefixedNumber(text)) {
    return leadingNumber(text);
  }
  const auto signedText = takeSign(text);
  const std::string digits = signedText ? withoutGroupCommas(signedText->digits) : "";
  if (digits.empty() || decimalLength(digits) != digits.size()) {
    return std::nullopt;
  }
  const double number = leadingNumber(digits);
  return signedText->isNegative ? -number : number;
}

double leadingNumber(std::string_view text) {
  // Almost always a few digits and nothing else.
  std::uint32_t whole = 0;
  const auto few = std::from_chars(text.data(), text.data() + text.size(), whole);
  if (few.ec == std::errc() && few.ptr == text.data() + text.size()) {
    return whole;
  }
  std::string digits = withoutBlanks(text);
  if (const auto prefixed = prefixedNumber(digits)) {
    return *prefixed;
  }
  const bool isNegative = !digits.empty() && digits.front() == '-';
  if (isNegative || (!digits.empty() && digits.front() == '+')) {
    digits.erase(0, 1);
  }
  digits.resize(decimalLength(digits));
  for (char& character : digits) {
    if (character == 'd' || character == 'D') {
      character = 'e';
    }
  }
  double number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return isNegative ? -number : number;
}

std::int32_t leadingInteger(std::string_view text) {
  using Limits = std::numeric_limits<std::int32_t>;
  const double number = leadingNumber(text);
  return static_cast<std::int32_t>(
      std::clamp(number, static_cast<double>(Limits::min()), static_cast<double>(Limits::max())));
}

std::string decimal(std::int64_t number) { return std::to_string(number); }

std::string numberText(double number) {
  constexpr int digits = 15;
  std::array<char, 32> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), number,
                                 std::chars_format::general, digits);
  return upperCase({text.data(), end.ptr});
}

std::optional<std::int64_t> decimalNumber(std::string_view text, std::int64_t least,
                                          std::int64_t most) {
  std::int64_t number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  const bool isWhole = error == std::errc() && stop == end;
  return isWhole && number >= least && number <= most ? std::optional(number) : std::nullopt;
}

}  // namespace zelvreg
