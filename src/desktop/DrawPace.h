// When the window draws itself anew beside a scan.
#ifndef ZELVREG_DESKTOP_DRAW_PACE_H
#define ZELVREG_DESKTOP_DRAW_PACE_H

#include <algorithm>
#include <chrono>

namespace zelvreg::desktop {

// About 60 times a second. Where drawing is slow, as it is over a network, a scan has three times
// as long for itself as the drawing before took.
class DrawPace {
 public:
  using Clock = std::chrono::steady_clock;

  [[nodiscard]] bool isDue(Clock::time_point now, bool isScanning) const {
    const Clock::duration rest = isScanning ? scanToDrawing * taken : Clock::duration::zero();
    return now - ended >= std::max<Clock::duration>(interval, rest);
  }

  void noteDrawing(Clock::time_point from, Clock::time_point to) {
    ended = to;
    taken = std::min<Clock::duration>(to - from, longest);
  }

  // The next one is due at once.
  void start() { ended = {}; }

 private:
  static constexpr std::chrono::milliseconds interval{16};
  static constexpr int scanToDrawing = 3;
  // What takes longer has waited for the user.
  static constexpr std::chrono::milliseconds longest{200};

  Clock::time_point ended;
  Clock::duration taken{};
};

}  // namespace zelvreg::desktop

#endif
