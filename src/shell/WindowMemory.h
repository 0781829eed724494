// What the window remembers of how its user has arranged it, from one start to the next.
#ifndef ZELVREG_SHELL_WINDOW_MEMORY_H
#define ZELVREG_SHELL_WINDOW_MEMORY_H

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace zelvreg {

struct WindowMemory {
  // Pixels of the screen, from the upper left corner of the main one.
  int left = 0;
  int top = 0;
  // Pixels at 96 dpi.
  int width = 0;
  int height = 0;
  bool isMaximized = false;

  bool operator==(const WindowMemory&) const = default;
};

// Nothing before the first time, or when a value is missing or is no number. What is read may name
// a screen that is no longer there.
std::optional<WindowMemory> readWindowMemory();
void keepWindowMemory(const WindowMemory& memory);

// The widths of a list's columns in pixels at 96 dpi. The last one is 0 as long as it takes what is
// left. `list` is the name of the list, `standard` its widths before the first time; a width of 0
// there is a hidden column, which stays hidden. They are also the answer when what is stored does
// not fit the list. A visible column is never so narrow that it could not be found again.
std::vector<int> readColumnWidths(const std::string& list, std::span<const int> standard);
void keepColumnWidths(const std::string& list, std::span<const int> widths);

}  // namespace zelvreg

#endif
