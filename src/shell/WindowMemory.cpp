#include "shell/WindowMemory.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "scan/Settings.h"
#include "text/Numbers.h"

namespace zelvreg {
namespace {

struct Length {
  const char* name;
  int WindowMemory::*member;
};

constexpr std::array lengths{
    Length{"windowleft", &WindowMemory::left},
    Length{"windowtop", &WindowMemory::top},
    Length{"windowwidth", &WindowMemory::width},
    Length{"windowheight", &WindowMemory::height},
};
constexpr const char* maximized = "windowmaximized";

// More than all screens of a computer together.
constexpr int farthest = 100'000;
constexpr int narrowestColumn = 24;
constexpr int widestColumn = 4000;

std::string nameOfColumns(const std::string& list) { return "columns" + list; }

}  // namespace

std::optional<WindowMemory> readWindowMemory() {
  WindowMemory memory;
  for (const Length& each : lengths) {
    const auto length =
        decimalNumber(readSetting(settings::regscan, each.name), -farthest, farthest);
    if (!length) {
      return std::nullopt;
    }
    memory.*each.member = static_cast<int>(*length);
  }
  memory.isMaximized = readSetting(settings::regscan, maximized) == "1";
  return memory;
}

void keepWindowMemory(const WindowMemory& memory) {
  for (const Length& each : lengths) {
    keepSetting(settings::regscan, each.name, decimal(memory.*each.member));
  }
  keepSetting(settings::regscan, maximized, memory.isMaximized ? "1" : "0");
}

std::vector<int> readColumnWidths(const std::string& list, std::span<const int> standard) {
  std::vector<int> widths(standard.begin(), standard.end());
  widths.back() = 0;
  std::vector<int> otherwise = widths;
  const std::string stored = readSetting(settings::regscan, nameOfColumns(list));
  std::string_view rest = stored;
  for (std::size_t column = 0; column < widths.size(); ++column) {
    const std::size_t end = std::min(rest.find(' '), rest.size());
    const auto width = decimalNumber(rest.substr(0, end), 0, widestColumn);
    if (!width) {
      return otherwise;
    }
    const bool isLast = column + 1 == widths.size();
    const bool staysZero = isLast ? *width == 0 : standard[column] == 0;
    widths[column] = staysZero ? 0 : std::max(narrowestColumn, static_cast<int>(*width));
    rest.remove_prefix(std::min(rest.size(), end + 1));
  }
  return rest.empty() ? widths : otherwise;
}

void keepColumnWidths(const std::string& list, std::span<const int> widths) {
  std::string text;
  for (const int width : widths) {
    text += (text.empty() ? "" : " ") + decimal(width);
  }
  keepSetting(settings::regscan, nameOfColumns(list), text);
}

}  // namespace zelvreg
