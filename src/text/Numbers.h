// Numbers that are kept as text.
#ifndef ZELVREG_TEXT_NUMBERS_H
#define ZELVREG_TEXT_NUMBERS_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zelvreg {

// The number that a text begins with: blanks, tabs and line ends are passed over wherever they
// stand, a sign, digits with one decimal point and an exponent ("e" or "d") are read, as are whole
// numbers in hexadecimal ("&H") and octal ("&O" or "&"). What follows is ignored; a text without a
// number gives 0. So "12 Problem(s)" is 12 and "1 2" is 12.
double leadingNumber(std::string_view text);

// The same without its fraction; beyond 32 bits, the nearest that they hold.
std::int32_t leadingInteger(std::string_view text);

// The number that a whole text is, as a conversion takes it: blanks around it, a sign on either
// side, a currency sign ("$"), brackets for a negative number, commas between the digits, one
// decimal point, an exponent; or a whole number in hexadecimal or octal. Nothing for any other
// text.
std::optional<double> wholeNumber(std::string_view text);

// Decimal digits, with a minus sign when below 0.
std::string decimal(std::int64_t number);

// A number as the runtime writes it: fifteen digits at most, no zeros behind the point, an exponent
// where it would be longer than that.
std::string numberText(double number);

}  // namespace zelvreg

#endif
