#include <windows.h>

#include <algorithm>
#include <atomic>
#include <iostream>

#include "console/Terminal.h"
#include "console/WideOutput.h"
#include "runtime/Environment.h"
#include "text/Wide.h"

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

// Windows before 10 has no colors by codes in the text.
bool takesCodes(DWORD standardHandle) {
  HANDLE console = GetStdHandle(standardHandle);
  DWORD mode = 0;
  return GetConsoleMode(console, &mode) != FALSE &&
         SetConsoleMode(
             console, mode | ENABLE_PROCESSED_OUTPUT | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != FALSE;
}

bool isColored(ColorUse asked, DWORD standardHandle) {
  if (asked == ColorUse::Never) {
    return false;
  }
  if (!isConsole(standardHandle)) {
    return asked == ColorUse::Always;
  }
  const bool isWanted =
      asked == ColorUse::Always || environmentAllowsColor(environmentVariable("NO_COLOR").c_str(),
                                                          environmentVariable("TERM").c_str());
  return isWanted && takesCodes(standardHandle);
}

bool writeToConsole(HANDLE console, std::u16string_view text) {
  while (!text.empty()) {
    DWORD written = 0;
    if (WriteConsoleW(console, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) ==
            FALSE ||
        written == 0) {
      return false;
    }
    text.remove_prefix(written);
  }
  return true;
}

// A stream whose text goes to the console as UTF-16. A file still gets UTF-8.
class ShownByConsole {
 public:
  ShownByConsole(std::ostream& shownStream, DWORD standardHandle)
      : stream(shownStream),
        buffer([handle = GetStdHandle(standardHandle)](std::u16string_view text) {
          return writeToConsole(handle, text);
        }),
        before(isConsole(standardHandle) ? stream.rdbuf(&buffer) : stream.rdbuf()) {}
  ~ShownByConsole() {
    stream.flush();
    stream.rdbuf(before);
  }
  ShownByConsole(const ShownByConsole&) = delete;
  ShownByConsole& operator=(const ShownByConsole&) = delete;

 private:
  std::ostream& stream;
  WideOutput buffer;
  std::streambuf* before;
};

}  // namespace

bool isInputTerminal() { return isConsole(STD_INPUT_HANDLE); }

bool isOutputTerminal() { return isConsole(STD_OUTPUT_HANDLE); }

bool isErrorTerminal() { return isConsole(STD_ERROR_HANDLE); }

bool isOutputColored(ColorUse asked) { return isColored(asked, STD_OUTPUT_HANDLE); }

bool isErrorColored(ColorUse asked) { return isColored(asked, STD_ERROR_HANDLE); }

std::size_t terminalWidth() {
  CONSOLE_SCREEN_BUFFER_INFO info{};
  if (GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &info) == FALSE) {
    return 0;
  }
  // A line that fills the last column would wrap.
  return static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left);
}

std::string typedLine() {
  constexpr std::size_t longest = 1000;
  std::u16string line(longest, u'\0');
  DWORD size = 0;
  ReadConsoleW(GetStdHandle(STD_INPUT_HANDLE), roomIn(line), longest, &size, nullptr);
  line.resize(std::min<std::size_t>(size, line.find_first_of(u"\r\n")));
  return utf8(line);
}

void prepareTerminal() {
  static const ShownByConsole output(std::cout, STD_OUTPUT_HANDLE);
  static const ShownByConsole error(std::cerr, STD_ERROR_HANDLE);
  SetConsoleCtrlHandler(onControl, TRUE);
}

bool isStopRequested() { return stopRequested; }

}  // namespace zelvreg::console
