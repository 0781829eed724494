#include "console/TimeArguments.h"

#include <charconv>
#include <string_view>

#include "console/OptionGroups.h"
#include "runtime/DateTime.h"

namespace zelvreg::console {
namespace {

using Seconds = std::chrono::sys_seconds;

std::string twoDigits(long long number) { return digits(static_cast<int>(number), 2); }

std::string utcText(Seconds time) {
  const auto day = std::chrono::floor<std::chrono::days>(time);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss clock(time - day);
  return digits(static_cast<int>(date.year()), 4) + "-" +
         twoDigits(static_cast<unsigned>(date.month())) + "-" +
         twoDigits(static_cast<unsigned>(date.day())) + "T" + twoDigits(clock.hours().count()) +
         ":" + twoDigits(clock.minutes().count()) + ":" + twoDigits(clock.seconds().count()) + "Z";
}

// The digits from `first` on as a number; 0 for other text, which then is not written as it was
// read.
unsigned numberIn(std::string_view text, std::size_t first, std::size_t count) {
  unsigned number = 0;
  const std::string_view digits = text.substr(std::min(first, text.size()), count);
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return number;
}

// What is no such time, or a day that the month does not have, is written otherwise than it was
// read.
bool isUtcText(std::string_view text) {
  const std::chrono::year_month_day date(std::chrono::year(static_cast<int>(numberIn(text, 0, 4))),
                                         std::chrono::month(numberIn(text, 5, 2)),
                                         std::chrono::day(numberIn(text, 8, 2)));
  const Seconds time = std::chrono::sys_days(date) + std::chrono::hours(numberIn(text, 11, 2)) +
                       std::chrono::minutes(numberIn(text, 14, 2)) +
                       std::chrono::seconds(numberIn(text, 17, 2));
  return date.ok() && utcText(time) == text;
}

}  // namespace

std::string utcNow() {
  return utcText(std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now()));
}

void NowArgument::addTo(CLI::App& command, std::string& now) {
  command
      .add_option_function<std::string>(
          "--now",
          [&now](const std::string& text) {
            if (!isUtcText(text)) {
              throw UsageError("--now takes a time in UTC, as 2026-11-23T06:53:29Z");
            }
            now = text;
          },
          "the time that a result tells, in UTC; else the clock's")
      ->type_name("TIME")
      ->group(outputGroup);
}

}  // namespace zelvreg::console
