// Follows a scan or a search for those who wait for it: how far it is, how long it will still take,
// and word of its end for those who look at something else.
#ifndef ZELVREG_SHELL_SCAN_FOLLOWER_H
#define ZELVREG_SHELL_SCAN_FOLLOWER_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "shell/ScanTimes.h"
#include "shell/TimeLeft.h"

namespace zelvreg {

struct Form42;

// What the button of the window in the taskbar shows. `Endless` is work whose end cannot be told,
// `Paused` work that waits or has been told to end, `Failed` work that a message reports on.
enum class TaskState : std::uint8_t { None, Endless, Normal, Paused, Failed };

struct TaskProgress {
  TaskState state = TaskState::None;
  int perMille = 0;

  bool operator==(const TaskProgress&) const = default;
};

// Where it shows outside the pages of the form.
class ScanSigns {
 public:
  virtual ~ScanSigns() = default;
  // Called only when it changes.
  virtual void showTask(const TaskProgress& task) = 0;
  // Whether the user sees the window.
  virtual bool isInFront() = 0;
  virtual void showNotice(const std::string& title, const std::string& text) = 0;
};

class ScanFollower {
 public:
  using Duration = TimeLeft::Duration;
  // Whoever waited longer than this for a scan may have gone on to other work.
  static constexpr std::chrono::seconds longScan{30};

  // Both must outlive it.
  ScanFollower(Form42& followed, ScanSigns& where) : form(followed), signs(where) {}

  // To be called as often as the message queue is served. `now` counts from any moment.
  void follow(Duration now);
  // A message waits for the user; none when it is closed.
  void showMessage(std::optional<TaskState> told);
  // From 0 to 1; nothing when no scan runs.
  [[nodiscard]] std::optional<double> share() const { return reached; }

 private:
  void begin(Duration now);
  void follow(std::size_t row, Duration now);
  void end(Duration now);
  // The parts before the next one have ended.
  void goOn(std::size_t next, Duration now);
  void showPlace(Duration now);
  void showTask();
  [[nodiscard]] std::string placeText(Duration now);

  Form42& form;
  ScanSigns& signs;
  bool isRunning = false;
  bool isScan = false;
  bool isCancelled = false;
  // The rows of the categories that are tested, and 0 for what follows.
  std::vector<std::size_t> parts;
  std::size_t part = 0;
  Duration began{};
  Duration partBegan{};
  std::optional<Duration> shownAt;
  ScanTimes times;
  TimeLeft timeLeft;
  TimeText timeText;
  std::optional<double> reached;
  std::optional<TaskState> message;
  TaskProgress shown;
};

}  // namespace zelvreg

#endif
