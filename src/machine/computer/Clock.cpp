#include "machine/computer/Clock.h"

#include <chrono>
#include <ctime>
#include <utility>

namespace zelvreg::machine {

namespace {

using std::chrono::milliseconds;
using LocalMoment = std::chrono::local_time<milliseconds>;

std::chrono::year_month_day dateOf(const SYSTEMTIME& time) {
  return {std::chrono::year(time.wYear), std::chrono::month(time.wMonth),
          std::chrono::day(time.wDay)};
}

LocalMoment momentOf(const SYSTEMTIME& time) {
  return LocalMoment(std::chrono::local_days(dateOf(time))) + std::chrono::hours(time.wHour) +
         std::chrono::minutes(time.wMinute) + std::chrono::seconds(time.wSecond) +
         milliseconds(time.wMilliseconds);
}

SYSTEMTIME timeOf(LocalMoment moment) {
  const auto midnight = std::chrono::floor<std::chrono::days>(moment);
  const std::chrono::year_month_day date(midnight);
  const std::chrono::hh_mm_ss clock(moment - midnight);
  SYSTEMTIME time{};
  time.wYear = static_cast<WORD>(static_cast<int>(date.year()));
  time.wMonth = static_cast<WORD>(static_cast<unsigned>(date.month()));
  time.wDayOfWeek = static_cast<WORD>(std::chrono::weekday(midnight).c_encoding());
  time.wDay = static_cast<WORD>(static_cast<unsigned>(date.day()));
  time.wHour = static_cast<WORD>(clock.hours().count());
  time.wMinute = static_cast<WORD>(clock.minutes().count());
  time.wSecond = static_cast<WORD>(clock.seconds().count());
  time.wMilliseconds = static_cast<WORD>(clock.subseconds().count());
  return time;
}

// This computer's own local time, moved forward.
SYSTEMTIME ownTime(std::uint64_t advanced) {
  const auto now = std::chrono::system_clock::now() + milliseconds(advanced);
  const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
  std::tm parts{};
  localtime_r(&seconds, &parts);
  SYSTEMTIME time{};
  time.wYear = static_cast<WORD>(parts.tm_year + 1900);
  time.wMonth = static_cast<WORD>(parts.tm_mon + 1);
  time.wDayOfWeek = static_cast<WORD>(parts.tm_wday);
  time.wDay = static_cast<WORD>(parts.tm_mday);
  time.wHour = static_cast<WORD>(parts.tm_hour);
  time.wMinute = static_cast<WORD>(parts.tm_min);
  time.wSecond = static_cast<WORD>(parts.tm_sec);
  const auto sinceEpoch = std::chrono::duration_cast<milliseconds>(now.time_since_epoch());
  time.wMilliseconds = static_cast<WORD>(sinceEpoch.count() % 1000);
  return time;
}

}  // namespace

Clock::Clock(const std::optional<SYSTEMTIME>& now) {
  if (now) standsAt = momentOf(*now).time_since_epoch().count();
}

SYSTEMTIME Clock::localTime() {
  const std::uint64_t offset = std::exchange(advanced, advanced + perLook);
  if (!standsAt) return ownTime(offset);
  return timeOf(LocalMoment(milliseconds(*standsAt) + milliseconds(offset)));
}

ULONGLONG Clock::tickCount() const {
  if (standsAt) return advanced;
  const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
  return advanced +
         static_cast<ULONGLONG>(std::chrono::duration_cast<milliseconds>(sinceStart).count());
}

void Clock::advance(std::uint64_t milliseconds) { advanced += milliseconds; }

bool isRealTime(const SYSTEMTIME& time) {
  return dateOf(time).ok() && time.wHour < 24 && time.wMinute < 60 && time.wSecond < 60 &&
         time.wMilliseconds < 1000;
}

}  // namespace zelvreg::machine
