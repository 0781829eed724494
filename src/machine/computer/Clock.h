// The time of the emulated computer: local time and the tick count.
#ifndef ZELVREG_MACHINE_COMPUTER_CLOCK_H
#define ZELVREG_MACHINE_COMPUTER_CLOCK_H

#include <windows.h>

#include <cstdint>
#include <optional>

namespace zelvreg::machine {

class Clock {
 public:
  // With `now` the clock stands still at that local time until advance() moves it, and the tick
  // count starts at 0. Without it both are this computer's own. `now` must be a real date.
  explicit Clock(const std::optional<SYSTEMTIME>& now);

  [[nodiscard]] SYSTEMTIME localTime();
  // Milliseconds since some moment that stays the same.
  [[nodiscard]] ULONGLONG tickCount() const;

  // Moves both forward.
  void advance(std::uint64_t milliseconds);
  // Moves both forward after each look at the local time from now on, so that a test can tell two
  // looks apart.
  void advanceAtEachLook(std::uint64_t milliseconds) { perLook = milliseconds; }

 private:
  std::optional<std::int64_t> standsAt;  // milliseconds since 1970 in local time
  std::uint64_t advanced = 0;            // milliseconds, as is the next
  std::uint64_t perLook = 0;
};

// Whether the date and the time of day exist.
bool isRealTime(const SYSTEMTIME& time);

}  // namespace zelvreg::machine

#endif
