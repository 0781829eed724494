#include "text/Numbers.h"

#include <charconv>
#include <optional>

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

}  // namespace

double leadingNumber(std::string_view text) {
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

std::string decimal(std::int64_t number) { return std::to_string(number); }

}  // namespace zelvreg
