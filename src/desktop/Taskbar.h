// The button of the window in the taskbar, which shows how far a task is.
#ifndef ZELVREG_DESKTOP_TASKBAR_H
#define ZELVREG_DESKTOP_TASKBAR_H

#include <windows.h>

#include <memory>

#include "shell/ScanFollower.h"

namespace zelvreg::desktop {

class Taskbar {
 public:
  Taskbar() = default;
  Taskbar(const Taskbar&) = delete;
  Taskbar& operator=(const Taskbar&) = delete;
  virtual ~Taskbar() = default;
  // The window has its button by now: the system says so by the message "TaskbarButtonCreated".
  virtual void show(HWND window, const TaskProgress& task) = 0;
};

// That of the system, or null where it has none that shows progress.
std::unique_ptr<Taskbar> systemTaskbar();

}  // namespace zelvreg::desktop

#endif
