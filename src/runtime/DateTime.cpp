#include "runtime/DateTime.h"

#include <windows.h>

namespace zelvreg {
namespace {

std::string joined(const std::string& first, const std::string& second, const std::string& third,
                   std::string_view separator) {
  std::string text = first;
  return text.append(separator).append(second).append(separator).append(third);
}

}  // namespace

std::string digits(int number, std::size_t count) {
  std::string text = std::to_string(number);
  return text.insert(0, text.size() < count ? count - text.size() : 0, '0');
}

DateTime localDateTime() {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond};
}

std::string dateText(const DateTime& time, std::string_view separator) {
  return joined(digits(time.day, 2), digits(time.month, 2), digits(time.year, 4), separator);
}

std::string timeText(const DateTime& time, std::string_view separator) {
  return joined(digits(time.hour, 2), digits(time.minute, 2), digits(time.second, 2), separator);
}

}  // namespace zelvreg
