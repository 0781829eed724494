#include "desktop/ListText.h"

#include <algorithm>

namespace zelvreg::desktop {
namespace {

constexpr std::size_t mostRows = 100'000;

bool isSecondHalf(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

// Where the line that begins a text ends.
std::size_t endOfLine(std::u16string_view text, std::size_t most) {
  if (text.size() <= most) {
    return text.size();
  }
  const std::size_t after = text.substr(0, most).find_last_of(u" \\");
  if (after != std::u16string_view::npos) {
    return after + 1;
  }
  return most > 1 && isSecondHalf(text[most]) ? most - 1 : most;
}

}  // namespace

std::vector<std::size_t> longestRows(const ListView& list, std::size_t column, std::size_t most) {
  std::vector<std::size_t> rows(std::min(list.count(), mostRows));
  for (std::size_t index = 0; index < rows.size(); ++index) {
    rows[index] = index + 1;
  }
  const std::size_t kept = std::min(most, rows.size());
  std::ranges::partial_sort(
      rows, rows.begin() + static_cast<std::ptrdiff_t>(kept), std::ranges::greater(),
      [&list, column](std::size_t row) { return list.text(row, column).size(); });
  rows.resize(kept);
  return rows;
}

std::u16string inLines(std::u16string_view text, std::size_t most) {
  std::u16string lines;
  while (!text.empty()) {
    const std::size_t end = endOfLine(text, most);
    lines += lines.empty() ? u"" : u"\n";
    lines += text.substr(0, end);
    text.remove_prefix(end);
  }
  return lines;
}

}  // namespace zelvreg::desktop
