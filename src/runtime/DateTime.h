// The local date and time as text.
#ifndef ZELVREG_RUNTIME_DATE_TIME_H
#define ZELVREG_RUNTIME_DATE_TIME_H

#include <cstddef>
#include <string>
#include <string_view>

namespace zelvreg {

// All in local time: month and day from 1, the year with all its digits.
struct DateTime {
  int year = 0;
  int month = 0;
  int day = 0;
  int hour = 0;
  int minute = 0;
  int second = 0;
};

// The time of the computer's clock now.
DateTime localDateTime();

// At least so many digits, with zeros before it. The number must not be negative.
std::string digits(int number, std::size_t count);

// Day, month and year: "31.01.2026" for the separator ".".
std::string dateText(const DateTime& time, std::string_view separator);
// Hours (0 to 23), minutes and seconds: "13:45:06" for the separator ":".
std::string timeText(const DateTime& time, std::string_view separator);

}  // namespace zelvreg

#endif
