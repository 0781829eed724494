#include "shell/TimeLeft.h"

#include <algorithm>
#include <utility>

#include "text/Numbers.h"

namespace zelvreg {
namespace {

using Duration = TimeLeft::Duration;
using std::chrono::minutes;
using std::chrono::seconds;

// How much has to be measured before it counts as much as the last scan does.
constexpr seconds inertia(5);
// How fast a new estimate is taken over.
constexpr seconds settling(4);
// A part that takes this many times as long as it should, and this much more, may take any time.
constexpr int farTooLong = 2;
constexpr seconds grace(10);

constexpr seconds shortest(10);

Duration scaled(Duration time, double factor) {
  return std::chrono::duration_cast<Duration>(time * factor);
}

// To 5 seconds below a minute, to minutes above. Less than `shortest` is 0.
seconds rounded(Duration left) {
  constexpr seconds step(5);
  if (left < shortest) {
    return seconds(0);
  }
  const seconds bySteps = step * ((left + step / 2) / step);
  return bySteps < minutes(1) ? bySteps : std::max(minutes(1), std::chrono::round<minutes>(left));
}

}  // namespace

TimeLeft::TimeLeft(std::vector<std::optional<Duration>> lastTimes, Duration start)
    : expected(std::move(lastTimes)), started(start), partStarted(start) {
  // What cannot be told of one part cannot be told of all.
  if (!std::ranges::all_of(expected, [](const auto& time) { return time.has_value(); })) {
    expected.clear();
  }
}

void TimeLeft::begin(std::size_t part, Duration now) {
  for (; running < part && running < expected.size(); ++running) {
    expectedBefore += *expected[running];
  }
  partStarted = now;
}

// 1 for a scan that is as fast as the last one.
double TimeLeft::pace() const {
  return static_cast<double>((partStarted - started + inertia).count()) /
         static_cast<double>((expectedBefore + inertia).count());
}

std::optional<Duration> TimeLeft::estimate(Duration now) const {
  if (running >= expected.size()) {
    return std::nullopt;
  }
  const Duration partTime = scaled(*expected[running], pace());
  const Duration elapsed = now - partStarted;
  if (elapsed > partTime * farTooLong + grace) {
    return std::nullopt;
  }
  Duration later{};
  for (std::size_t part = running + 1; part < expected.size(); ++part) {
    later += *expected[part];
  }
  return std::max(Duration(0), partTime - elapsed) + scaled(later, pace());
}

std::optional<double> TimeLeft::share(Duration now) {
  if (expected.empty()) {
    return std::nullopt;
  }
  const auto left = estimate(now);
  const auto spent = static_cast<double>((now - started).count());
  if (left && spent > 0) {
    reached = std::max(reached, spent / (spent + static_cast<double>(left->count())));
  }
  return reached;
}

std::optional<Duration> TimeLeft::left(Duration now) {
  const auto fresh = estimate(now);
  if (fresh && shown) {
    const Duration passed = now - shownAt;
    const Duration asTold = std::max(Duration(0), *shown - passed);
    const double weight =
        std::min(1.0, static_cast<double>(passed.count()) / Duration(settling).count());
    shown = asTold + scaled(*fresh - asTold, weight);
  } else {
    shown = fresh;
  }
  shownAt = now;
  return shown;
}

std::string TimeText::of(const Form42& form, std::optional<Duration> left) {
  if (!left) {
    told.reset();
    return {};
  }
  const seconds next = rounded(*left);
  const seconds step = next > minutes(1) ? seconds(minutes(1)) : seconds(5);
  if (!told || next < *told || next > *told + step) {
    told = next;
  }
  if (*told < shortest) {
    return textOf(form, "time-moment");
  }
  if (*told < minutes(1)) {
    return textOf(form, "time-seconds", {decimal(told->count())});
  }
  const auto count = std::chrono::duration_cast<minutes>(*told).count();
  return count == 1 ? textOf(form, "time-minute") : textOf(form, "time-minutes", {decimal(count)});
}

}  // namespace zelvreg
