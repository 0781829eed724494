#include "widgets/MessageQueue.h"

#include <windows.h>

#include <algorithm>
#include <utility>

namespace zelvreg {

void Timer::enable(bool enabled) {
  running = enabled;
  due = GetTickCount64() + interval;
}

bool MessageQueue::hasWork() const {
  return !pending.empty() || !discarded.empty() ||
         std::ranges::any_of(timers, [](const Timer* timer) { return timer->isEnabled(); });
}

void MessageQueue::doEvents() {
  // Swapping an empty queue would cost more than everything else here.
  if (!pending.empty()) {
    for (const auto& work : std::exchange(pending, {})) {
      work();
    }
  }
  for (Timer* timer : timers) {
    if (timer->running && GetTickCount64() >= timer->due) {
      timer->due = GetTickCount64() + timer->interval;
      if (timer->onTick) {
        timer->onTick();
      }
    }
  }
  if (!discarded.empty() && discarded.front()()) {
    discarded.pop_front();
  }
  if (serveHost) {
    serveHost();
  }
}

}  // namespace zelvreg
