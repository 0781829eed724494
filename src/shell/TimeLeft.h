// How far a scan is, and how long it will still take, told by how long each of its parts took in
// the last scan.
//
// A scan that is slower or faster than the last one shows it in the parts that have ended, and what
// is left is taken to be so, too. A part of which no time is known, or one that takes far longer
// than it should, leaves nothing to tell.
#ifndef ZELVREG_SHELL_TIME_LEFT_H
#define ZELVREG_SHELL_TIME_LEFT_H

#include <chrono>
#include <cstddef>
#include <optional>
#include <vector>

#include "languages/Texts.h"

namespace zelvreg {

class TimeLeft {
 public:
  using Duration = std::chrono::milliseconds;

  // Of no scan.
  TimeLeft() = default;
  // The last times of the parts in the order in which they run. The first one begins at `start`,
  // which like every time below counts from any moment and never falls.
  TimeLeft(std::vector<std::optional<Duration>> lastTimes, Duration start);

  // The part with this number, from 0, begins, and all before it have ended.
  void begin(std::size_t part, Duration now);
  // From 0 to 1. It never falls.
  std::optional<double> share(Duration now);
  // What is left, without jumps: a new estimate is taken over in the course of some seconds. To be
  // asked again and again.
  std::optional<Duration> left(Duration now);

 private:
  [[nodiscard]] std::optional<Duration> estimate(Duration now) const;
  [[nodiscard]] double pace() const;

  std::vector<std::optional<Duration>> expected;
  std::size_t running = 0;
  Duration started{};      // the scan
  Duration partStarted{};  // the part that runs
  // Of the parts that have ended.
  Duration expectedBefore{};
  double reached = 0;
  std::optional<Duration> shown;
  Duration shownAt{};
};

// What is said of the time that is left: it is rounded, and goes up only when it has to.
class TimeText {
 public:
  // In the language in use; empty where nothing can be told.
  std::string of(const Form42& form, std::optional<TimeLeft::Duration> left);

 private:
  std::optional<std::chrono::seconds> told;
};

}  // namespace zelvreg

#endif
