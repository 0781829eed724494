// How far a scan is, where it shows outside the pages: in the bar, on the taskbar, in a notice.
#include "desktop/MainWindow.h"
#include "form/Form42.h"

namespace zelvreg::desktop {

void MainWindow::followScan(Clock::time_point now) {
  follower.follow(std::chrono::duration_cast<ScanFollower::Duration>(now.time_since_epoch()));
  progress->showShare(follower.share());
}

// The system makes the button anew when the window comes back, or the shell starts again.
void MainWindow::taskbarButtonMade() {
  taskbar = makeTaskbar();
  showTask(task);
}

void MainWindow::showTask(const TaskProgress& told) {
  task = told;
  if (taskbar != nullptr) {
    taskbar->show(window, task);
  }
}

bool MainWindow::isInFront() {
  return IsIconic(window) == FALSE && IsWindowVisible(window) != FALSE &&
         GetAncestor(GetForegroundWindow(), GA_ROOTOWNER) == window;
}

// Where the form shows no icon, there is one from now until the window is in front again.
void MainWindow::showNotice(const std::string& title, const std::string& text) {
  tray.area().setVisible(true);
  tray.showNotice(title, text);
}

void MainWindow::comeToFront() {
  if (form.TrayArea1.visible) {
    form.TrayArea1.click();
    return;
  }
  if (IsIconic(window) != FALSE) {
    ShowWindow(window, SW_RESTORE);
  }
  SetForegroundWindow(window);
}

}  // namespace zelvreg::desktop
