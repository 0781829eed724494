#include "desktop/ListText.h"

#include <algorithm>

#include "unicode/Unicode.h"

namespace zelvreg::desktop {
namespace {

constexpr std::size_t mostRows = 100'000;

// Where the line that begins a text ends.
std::size_t endOfLine(std::u16string_view text, std::size_t most) {
  if (text.size() <= most) {
    return text.size();
  }
  const std::size_t after = text.substr(0, most).find_last_of(u" \\");
  if (after != std::u16string_view::npos) {
    return after + 1;
  }
  return most > 1 && isLowSurrogate(text[most]) ? most - 1 : most;
}

// Of a path with so many characters left.
std::u16string cutTo(std::u16string_view path, std::size_t left) {
  constexpr std::size_t parts = 3;
  const std::size_t lastName = path.size() - std::min(path.size(), path.rfind(u'\\'));
  std::size_t start = lastName + left / parts <= left ? left - lastName : left / parts;
  std::size_t end = path.size() - (left - start);
  start -= start > 0 && isLowSurrogate(path[start]) ? 1 : 0;
  end += end < path.size() && isLowSurrogate(path[end]) ? 1 : 0;
  return std::u16string(path.substr(0, start)) + u"..." + std::u16string(path.substr(end));
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

std::u16string withoutMiddle(std::u16string_view path, int room,
                             const std::function<int(std::u16string_view)>& widthOf) {
  if (path.empty() || widthOf(path) <= room) {
    return std::u16string(path);
  }
  std::size_t fitting = 0;
  for (std::size_t tooMany = path.size(); fitting + 1 < tooMany;) {
    const std::size_t middle = fitting + (tooMany - fitting) / 2;
    (widthOf(cutTo(path, middle)) <= room ? fitting : tooMany) = middle;
  }
  return cutTo(path, fitting);
}

}  // namespace zelvreg::desktop
