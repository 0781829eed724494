// Takes the time that another program's window needs, from outside. For each line on standard input
// it answers one line of JSON, all times in microseconds:
//   answers CLASS MILLISECONDS   how long the window of a class lets a question wait
//   scroll CLASS PAGES           how long its longest visible list takes for a page down, drawn
#include <windows.h>

// These need <windows.h> before them.
#include <commctrl.h>

#include <algorithm>
#include <iostream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Json = nlohmann::ordered_json;

constexpr UINT patience = 10'000;  // milliseconds

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

std::vector<double> answers(HWND window, double milliseconds) {
  constexpr DWORD pause = 3;  // milliseconds
  std::vector<double> times;
  const double end = now() + milliseconds * 1000;
  while (now() < end) {
    const double start = now();
    ask(window, WM_NULL);
    times.push_back(now() - start);
    Sleep(pause);
  }
  return times;
}

struct LongestList {
  HWND window = nullptr;
  LONG rows = -1;
};

BOOL CALLBACK noteList(HWND child, LPARAM parameter) {
  wchar_t name[64] = {};
  GetClassNameW(child, name, 64);
  auto& longest = *reinterpret_cast<LongestList*>(parameter);
  if (std::wstring(name) == WC_LISTVIEWW && IsWindowVisible(child) != FALSE) {
    const LONG rows = ask(child, LVM_GETITEMCOUNT);
    if (rows > longest.rows) {
      longest = {child, rows};
    }
  }
  return TRUE;
}

// Ends at the last page or after so many.
std::vector<double> scroll(HWND list, int pages) {
  std::vector<double> times;
  ask(list, LVM_ENSUREVISIBLE, 0, FALSE);
  for (int page = 0; page < pages; ++page) {
    const LONG top = ask(list, LVM_GETTOPINDEX);
    const double start = now();
    ask(list, WM_VSCROLL, SB_PAGEDOWN);
    RedrawWindow(list, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    // Answered after what was drawn.
    ask(list, WM_NULL);
    times.push_back(now() - start);
    if (ask(list, LVM_GETTOPINDEX) == top) {
      ask(list, LVM_ENSUREVISIBLE, 0, FALSE);
    }
  }
  return times;
}

Json answered(const std::string& line) {
  std::istringstream words(line);
  std::string what;
  std::string windowClass;
  int number = 0;
  words >> what >> windowClass >> number;
  // Names of classes are ASCII.
  HWND window = FindWindowW(std::wstring(windowClass.begin(), windowClass.end()).c_str(), nullptr);
  if (window == nullptr) {
    return {{"error", "there is no window of the class " + windowClass}};
  }
  if (what == "answers") {
    return summary(answers(window, number));
  }
  LongestList longest;
  EnumChildWindows(window, noteList, reinterpret_cast<LPARAM>(&longest));
  if (longest.window == nullptr) {
    return {{"error", "no list is seen"}};
  }
  Json found = summary(scroll(longest.window, number));
  found["rows"] = longest.rows;
  return found;
}

}  // namespace

int main() {
  std::string line;
  while (std::getline(std::cin, line)) {
    std::cout << answered(line).dump() << std::endl;
  }
  return 0;
}
