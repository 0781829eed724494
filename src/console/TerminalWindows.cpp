#include <windows.h>

#include <atomic>

#include "console/Terminal.h"

namespace zelvreg::console {
namespace {

std::atomic<bool> stopRequested = false;

BOOL WINAPI onControl(DWORD event) {
  return event == CTRL_C_EVENT && !stopRequested.exchange(true) ? TRUE : FALSE;
}

bool isConsole(DWORD standardHandle) {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(standardHandle), &mode) != FALSE;
}

}  // namespace

bool isInputTerminal() { return isConsole(STD_INPUT_HANDLE); }

bool isOutputTerminal() { return isConsole(STD_OUTPUT_HANDLE); }

bool isErrorTerminal() { return isConsole(STD_ERROR_HANDLE); }

std::size_t terminalWidth() {
  CONSOLE_SCREEN_BUFFER_INFO info{};
  if (GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &info) == FALSE) {
    return 0;
  }
  // A line that fills the last column would wrap.
  return static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left);
}

void prepareTerminal() {
  SetConsoleOutputCP(CP_UTF8);
  SetConsoleCtrlHandler(onControl, TRUE);
}

bool isStopRequested() { return stopRequested; }

}  // namespace zelvreg::console
