// The one thread's queue of pending work: presses, due timers and the system's own messages.
#ifndef ZELVREG_WIDGETS_MESSAGE_QUEUE_H
#define ZELVREG_WIDGETS_MESSAGE_QUEUE_H

#include <cstdint>
#include <deque>
#include <functional>
#include <vector>

namespace zelvreg {

// Ticks from the queue while it is enabled. It must not move in memory: the queue keeps its
// address.
class Timer {
 public:
  // The first tick is due one interval after enabling.
  void enable(bool enabled);
  [[nodiscard]] bool isEnabled() const { return running; }

  std::uint32_t interval = 0;  // milliseconds
  std::function<void()> onTick;

 private:
  friend class MessageQueue;
  bool running = false;
  std::uint64_t due = 0;
};

class MessageQueue {
 public:
  // The timers are not owned and must outlive the queue.
  explicit MessageQueue(std::vector<Timer*> formTimers) : timers(std::move(formTimers)) {}

  // Adds work for the next time the queue is served. Work that it posts itself waits for the time
  // after that.
  void post(std::function<void()> work) { pending.push_back(std::move(work)); }

  // The runtime's yield: runs what is posted, ticks each due timer once, then serves the host.
  // Long loops call it in every pass, so a press re-enters the form from here.
  void doEvents();

  // Whether something is posted or a timer runs. Then the queue must be served again soon, even if
  // the system has no message.
  [[nodiscard]] bool hasWork() const;

  // What the front end does with the system's own messages; none by default.
  std::function<void()> serveHost;

 private:
  std::vector<Timer*> timers;
  std::deque<std::function<void()>> pending;
};

}  // namespace zelvreg

#endif
