// The one thread's queue of pending work: presses, due timers and the system's own messages.
#ifndef ZELVREG_WIDGETS_MESSAGE_QUEUE_H
#define ZELVREG_WIDGETS_MESSAGE_QUEUE_H

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <utility>
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

  // Frees the entries of a container: a few at once, of many some each time the queue is served, so
  // that nobody waits until 100,000 texts are freed.
  template <class Container>
  void discard(Container unneeded) {
    if (unneeded.size() > mostFreedAtOnce) {
      discarded.push_back([rest = std::make_shared<Container>(std::move(unneeded))] {
        for (std::size_t count = 0; count < mostFreedAtOnce && !rest->empty(); ++count) {
          freeOne(*rest);
        }
        return rest->empty();
      });
    }
  }

  // The runtime's yield: runs what is posted, ticks each due timer once, frees some of what was
  // discarded, then serves the host.
  // Long loops call it in every pass, so a press re-enters the form from here.
  void doEvents();

  // Whether something is posted or discarded, or a timer runs. Then the queue must be served again
  // soon, even if the system has no message.
  [[nodiscard]] bool hasWork() const;

  // Whether something is posted, for which nobody should wait.
  [[nodiscard]] bool hasPosted() const { return !pending.empty(); }

  // What the front end does with the system's own messages; none by default.
  std::function<void()> serveHost;

  static constexpr std::size_t mostFreedAtOnce = 256;

 private:
  template <class Container>
  static void freeOne(Container& container) {
    if constexpr (requires { container.pop_back(); }) {
      container.pop_back();
    } else {
      container.erase(container.begin());
    }
  }

  std::vector<Timer*> timers;
  std::deque<std::function<void()>> pending;
  // Each frees some, and says whether that was all.
  std::deque<std::function<bool()>> discarded;
};

}  // namespace zelvreg

#endif
