#include "shell/ScanFollower.h"

#include <algorithm>
#include <cmath>

#include "form/Form42.h"
#include "languages/Texts.h"
#include "registry/SubkeyEnumerators.h"
#include "scan/Findings.h"
#include "text/Numbers.h"

namespace zelvreg {
namespace {

// How often what is shown changes.
constexpr std::chrono::milliseconds pause(250);

constexpr const char* betweenParts = "  \xC2\xB7  ";

}  // namespace

void ScanFollower::follow(Duration now) {
  if (!form.testedRow) {
    if (isRunning) {
      end(now);
    }
    return;
  }
  if (!isRunning) {
    begin(now);
  }
  // A search knows no other word for it.
  isCancelled = isCancelled || (isScan ? isStopAsked(form) : form.cancelRequested);
  follow(*form.testedRow, now);
}

// A search begins without a row.
void ScanFollower::begin(Duration now) {
  isRunning = true;
  isScan = *form.testedRow != 0;
  isCancelled = false;
  parts.clear();
  part = 0;
  began = now;
  partBegan = now;
  times = readScanTimes();
  std::vector<std::optional<Duration>> expected;
  for (std::size_t row = 1; isScan && row < times.size(); ++row) {
    if (form.View1.isChecked(row)) {
      parts.push_back(row);
      expected.push_back(times[row]);
    }
  }
  parts.push_back(0);
  expected.push_back(isScan ? times[0] : std::nullopt);
  timeLeft = TimeLeft(std::move(expected), now);
}

void ScanFollower::follow(std::size_t row, Duration now) {
  goOn(static_cast<std::size_t>(std::ranges::find(parts, row) - parts.begin()), now);
  if (!shownAt || now - *shownAt >= pause) {
    shownAt = now;
    showPlace(now);
  }
}

// A part that was too short to be seen has taken no time.
void ScanFollower::goOn(std::size_t next, Duration now) {
  if (next <= part || next > parts.size()) {
    return;
  }
  for (; part < next; ++part) {
    times[parts[part]] = now - partBegan;
    partBegan = now;
  }
  timeLeft.begin(part, now);
  shownAt.reset();
}

void ScanFollower::showPlace(Duration now) {
  const auto known = isScan ? timeLeft.share(now) : std::nullopt;
  const double counted = static_cast<double>(form.Bar1.value()) / form.Bar1.maximum();
  reached = isScan ? std::optional(known.value_or(counted)) : std::nullopt;
  form.ProgressText.caption.renew(placeText(now));
  showTask();
}

// Which of the categories it is, and the time that is left.
std::string ScanFollower::placeText(Duration now) {
  if (!isScan) {
    return {};
  }
  std::string time = timeText.of(form, isCancelled ? std::nullopt : timeLeft.left(now));
  if (parts[part] == 0) {
    return time;
  }
  const std::string place = textOf(form, "scan-place",
                                   {decimal(static_cast<std::int64_t>(part + 1)),
                                    decimal(static_cast<std::int64_t>(parts.size() - 1))});
  return time.empty() ? place : place + betweenParts + time;
}

void ScanFollower::showTask() {
  constexpr double whole = 1000;
  TaskProgress task;
  if (isRunning) {
    task.state = isCancelled ? TaskState::Paused : isScan ? TaskState::Normal : TaskState::Endless;
    task.perMille = static_cast<int>(std::lround(reached.value_or(0) * whole));
  }
  if (message) {
    // Without a scan there is nothing that could wait, but something that can go wrong.
    if (*message == TaskState::Failed) {
      task = {.state = TaskState::Failed, .perMille = isScan && isRunning ? task.perMille : 1000};
    } else if (isRunning) {
      task.state = *message;
    }
  }
  if (task != shown) {
    shown = task;
    signs.showTask(task);
  }
}

void ScanFollower::showMessage(std::optional<TaskState> told) {
  message = told;
  showTask();
}

void ScanFollower::end(Duration now) {
  isRunning = false;
  reached.reset();
  form.ProgressText.caption = "";
  showTask();
  if (isCancelled) {
    return;
  }
  if (isScan) {
    goOn(parts.size(), now);
    keepScanTimes(times);
  }
  if (now - began >= longScan && !form.hasCommandLine && !signs.isInFront()) {
    signs.showNotice(textOf(form, "notice-finished"), form.View2.count() > 0
                                                          ? problemsFoundText(form)
                                                          : textOf(form, "notice-nothing"));
  }
}

}  // namespace zelvreg
