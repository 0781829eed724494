// Numbers that are kept as text. Nothing here fails: text that is no number has a result too.
#ifndef ZELVREG_TEXT_NUMBERS_H
#define ZELVREG_TEXT_NUMBERS_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zelvreg {

// The number that a text begins with. Blanks, tabs and line ends are skipped wherever they are.
// A sign, digits with one decimal point, and an exponent ("e" or "d") are read, and so are whole
// numbers in hexadecimal ("&H") and octal ("&O" or "&"). What follows is ignored. A text without a
// number gives 0. So "12 Problem(s)" is 12, and "1 2" is 12 too.
double leadingNumber(std::string_view text);

// The same without its fraction. A number beyond 32 bits gives the nearest that they hold.
std::int32_t leadingInteger(std::string_view text);

// The number that a text is as a whole, as the runtime converts it. It may have blanks around it, a
// sign on either side, a currency sign ("$"), parentheses for a negative number, commas between the
// digits, one decimal point and an exponent; or it is a whole number in hexadecimal or octal.
// std::nullopt for any other text.
std::optional<double> convertedNumber(std::string_view text);

// Decimal digits, with a minus sign if it is below 0.
std::string decimal(std::int64_t number);

// Such digits back as a number from `least` to `most`. std::nullopt for any other text, also one
// that has more in it.
std::optional<std::int64_t> decimalNumber(std::string_view text, std::int64_t least,
                                          std::int64_t most);

// A number as the runtime writes it: at most fifteen digits, no zeros at the end of the fraction,
// and an exponent if it would be longer than that.
std::string numberText(double number);

}  // namespace zelvreg

#endif
