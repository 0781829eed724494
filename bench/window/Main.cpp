// Takes the time that another program's window needs, from outside. For each line on standard input
// it answers one line of JSON, all times in microseconds:
//   answers CLASS MILLISECONDS   how long the window of a class lets a question wait
//   scroll CLASS PAGES           how long its longest visible list takes for a page down, drawn
//   highlight CLASS ROWS         highlights that many rows of that list, from the first one
//   press CLASS CAPTION          how long what a button does takes, until that list is drawn again,
//                                and how long the window lets a question wait meanwhile, also
//                                without the first and the last half second ("within")
//   close CLASS                  how long the window takes to go, and its process to end
#include <windows.h>

// These need <windows.h> before them.
#include <commctrl.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <iostream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using Json = nlohmann::ordered_json;

constexpr UINT patience = 3'600'000;       // milliseconds
constexpr double changeOfPages = 500'000;  // microseconds; a scan begins and ends with one

double now() {
  LARGE_INTEGER count{};
  LARGE_INTEGER perSecond{};
  QueryPerformanceCounter(&count);
  QueryPerformanceFrequency(&perSecond);
  return static_cast<double>(count.QuadPart) * 1'000'000 / static_cast<double>(perSecond.QuadPart);
}

LONG ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
  DWORD_PTR answer = 0;
  SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, patience, &answer);
  return static_cast<LONG>(answer);
}

Json summary(std::vector<double> times) {
  if (times.empty()) {
    return {{"count", 0}};
  }
  std::ranges::sort(times);
  const auto share = [&times](std::size_t percent) {
    return times[(times.size() - 1) * percent / 100];
  };
  return {
      {"count", times.size()}, {"median", share(50)}, {"most", share(99)}, {"longest", share(100)}};
}

struct Wait {
  double start;
  double end;
};

// Asks the window every few milliseconds as long as that is wanted.
template <class IsWanted>
std::vector<Wait> askAgainAndAgain(HWND window, const IsWanted& isWanted) {
  constexpr DWORD pause = 3;  // milliseconds
  std::vector<Wait> waits;
  while (isWanted()) {
    const double start = now();
    ask(window, WM_NULL);
    waits.push_back({start, now()});
    Sleep(pause);
  }
  return waits;
}

// Of the waits that lie between two moments.
Json summaryBetween(const std::vector<Wait>& waits, double from, double to) {
  std::vector<double> times;
  for (const Wait& wait : waits) {
    if (wait.start >= from && wait.end <= to) {
      times.push_back(wait.end - wait.start);
    }
  }
  return summary(times);
}

Json answers(HWND window, double milliseconds) {
  const double end = now() + milliseconds * 1000;
  const auto waits = askAgainAndAgain(window, [end] { return now() < end; });
  return summaryBetween(waits, 0, now());
}

std::wstring captionOf(HWND button) {
  std::array<wchar_t, 128> text{};
  SendMessageTimeoutW(button, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()),
                      SMTO_NORMAL, patience, nullptr);
  std::wstring caption(text.data());
  std::erase(caption, L'&');
  return caption;
}

std::wstring classOf(HWND window) {
  std::array<wchar_t, 64> name{};
  GetClassNameW(window, name.data(), static_cast<int>(name.size()));
  return name.data();
}

struct ButtonSearch {
  std::wstring caption;
  HWND found = nullptr;
};

BOOL CALLBACK noteButton(HWND child, LPARAM parameter) {
  auto& search = *reinterpret_cast<ButtonSearch*>(parameter);
  if (classOf(child) == WC_BUTTONW && IsWindowVisible(child) != FALSE &&
      captionOf(child) == search.caption) {
    search.found = child;
  }
  return TRUE;
}

HWND buttonOf(HWND window, const std::wstring& caption) {
  ButtonSearch search{caption};
  EnumChildWindows(window, noteButton, reinterpret_cast<LPARAM>(&search));
  if (search.found == nullptr) {
    throw std::runtime_error("the button is not seen");
  }
  return search.found;
}

struct LongestList {
  HWND window = nullptr;
  LONG rows = -1;
};

BOOL CALLBACK noteList(HWND child, LPARAM parameter) {
  auto& longest = *reinterpret_cast<LongestList*>(parameter);
  if (classOf(child) == WC_LISTVIEWW && IsWindowVisible(child) != FALSE) {
    const LONG rows = ask(child, LVM_GETITEMCOUNT);
    if (rows > longest.rows) {
      longest = {child, rows};
    }
  }
  return TRUE;
}

LongestList longestList(HWND window) {
  LongestList longest;
  EnumChildWindows(window, noteList, reinterpret_cast<LPARAM>(&longest));
  if (longest.window == nullptr) {
    throw std::runtime_error("no list is seen");
  }
  return longest;
}

void drawNow(HWND list) {
  RedrawWindow(list, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
  // Answered after what was drawn.
  ask(list, WM_NULL);
}

// Ends at the last page or after so many.
Json scroll(HWND window, int pages) {
  const auto [list, rows] = longestList(window);
  std::vector<double> times;
  ask(list, LVM_ENSUREVISIBLE, 0, FALSE);
  for (int page = 0; page < pages; ++page) {
    const LONG top = ask(list, LVM_GETTOPINDEX);
    const double start = now();
    ask(list, WM_VSCROLL, SB_PAGEDOWN);
    drawNow(list);
    times.push_back(now() - start);
    if (ask(list, LVM_GETTOPINDEX) == top) {
      ask(list, LVM_ENSUREVISIBLE, 0, FALSE);
    }
  }
  Json found = summary(times);
  found["rows"] = rows;
  return found;
}

// Memory of the other program, because a list reads the request there.
Json highlight(HWND window, int count) {
  const auto [list, rows] = longestList(window);
  DWORD id = 0;
  GetWindowThreadProcessId(list, &id);
  HANDLE process = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_WRITE, FALSE, id);
  LVITEMW item{};
  item.state = LVIS_SELECTED;
  item.stateMask = LVIS_SELECTED;
  void* memory = VirtualAllocEx(process, nullptr, sizeof item, MEM_COMMIT, PAGE_READWRITE);
  WriteProcessMemory(process, memory, &item, sizeof item, nullptr);
  const double start = now();
  for (int row = 0; row < count; ++row) {
    ask(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(memory));
  }
  drawNow(list);
  const double end = now();
  VirtualFreeEx(process, memory, 0, MEM_RELEASE);
  CloseHandle(process);
  return {{"rows", rows}, {"highlighted", ask(list, LVM_GETSELECTEDCOUNT)}, {"took", end - start}};
}

Json press(HWND window, const std::wstring& caption) {
  HWND button = buttonOf(window, caption);
  const LongestList list = longestList(window);
  std::atomic<bool> isDone = false;
  std::vector<Wait> waits;
  std::thread beside([&] { waits = askAgainAndAgain(window, [&] { return !isDone; }); });
  const double start = now();
  ask(button, BM_CLICK);
  // The list is told of its rows when the window next serves its messages.
  ask(window, WM_NULL);
  drawNow(list.window);
  const double end = now();
  isDone = true;
  beside.join();
  Json found = summaryBetween(waits, start, end);
  found["took"] = end - start;
  found["within"] = summaryBetween(waits, start + changeOfPages, end - changeOfPages);
  found["rows"] = ask(list.window, LVM_GETITEMCOUNT);
  return found;
}

Json close(HWND window) {
  DWORD id = 0;
  GetWindowThreadProcessId(window, &id);
  HANDLE process = OpenProcess(SYNCHRONIZE, FALSE, id);
  const double start = now();
  PostMessageW(window, WM_CLOSE, 0, 0);
  while (IsWindowVisible(window) != FALSE) {
    Sleep(1);
  }
  const double gone = now();
  const bool hasEnded = WaitForSingleObject(process, patience) == WAIT_OBJECT_0;
  const double end = now();
  CloseHandle(process);
  if (!hasEnded) {
    throw std::runtime_error("the process does not end");
  }
  return {{"gone", gone - start}, {"ended", end - start}};
}

Json answered(const std::string& line) {
  std::istringstream words(line);
  std::string what;
  std::string windowClass;
  std::string more;
  words >> what >> windowClass >> std::ws;
  std::getline(words, more);
  // Names of classes and captions are ASCII.
  HWND window = FindWindowW(std::wstring(windowClass.begin(), windowClass.end()).c_str(), nullptr);
  if (window == nullptr) {
    throw std::runtime_error("there is no window of the class " + windowClass);
  }
  const std::wstring caption(more.begin(), more.end());
  if (what == "answers") {
    return answers(window, std::stod(more));
  }
  if (what == "scroll") {
    return scroll(window, std::stoi(more));
  }
  if (what == "highlight") {
    return highlight(window, std::stoi(more));
  }
  return what == "press" ? press(window, caption) : close(window);
}

}  // namespace

int main() {
  std::string line;
  while (std::getline(std::cin, line)) {
    Json answer;
    try {
      answer = answered(line);
    } catch (const std::exception& failure) {
      answer = {{"error", failure.what()}};
    }
    std::cout << answer.dump() << std::endl;
  }
  return 0;
}
