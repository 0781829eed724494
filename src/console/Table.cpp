#include "console/Table.h"

#include <algorithm>

#include "console/CharacterWidth.h"
#include "console/DisplayText.h"
#include "unicode/Unicode.h"

namespace zelvreg::console {
namespace {

constexpr std::string_view gap = "  ";
constexpr std::string_view ellipsis = "…";
constexpr std::size_t narrowestColumn = 12;

// As much of the text's start as fits into the columns.
std::string_view headOf(std::string_view text, std::size_t columns) {
  std::size_t end = 0;
  while (end < text.size()) {
    const Utf8Character next = firstCharacter(text.substr(end));
    if (characterWidth(next.code) > columns) {
      break;
    }
    columns -= characterWidth(next.code);
    end += next.size;
  }
  return text.substr(0, end);
}

// As much of its end. Marks that combine with an earlier character do not belong to it.
std::string_view tailOf(std::string_view text, std::size_t columns) {
  std::size_t left = displayWidth(text);
  while (!text.empty()) {
    const Utf8Character next = firstCharacter(text);
    if (left <= columns && characterWidth(next.code) > 0) {
      break;
    }
    left -= characterWidth(next.code);
    text.remove_prefix(next.size);
  }
  return text;
}

std::string padded(const std::string& cell, std::size_t width, bool isRightAligned) {
  const std::string blanks(width - std::min(width, displayWidth(cell)), ' ');
  return isRightAligned ? blanks + cell : cell + blanks;
}

std::string withoutTrailingBlanks(std::string line) {
  line.erase(line.find_last_not_of(' ') + 1);
  return line + "\n";
}

}  // namespace

std::string shortened(std::string_view text, std::size_t width) {
  if (displayWidth(text) <= width) {
    return std::string(text);
  }
  // The end of a path says more than its start.
  const std::size_t front = (width - 1) / 3;
  std::string result(headOf(text, front));
  return result.append(ellipsis).append(tailOf(text, width - 1 - front));
}

void Table::addRow(const std::vector<std::string>& cells) {
  auto& row = rows.emplace_back();
  std::ranges::transform(cells, std::back_inserter(row),
                         [](const std::string& cell) { return printable(cell); });
}

std::vector<std::size_t> Table::columnWidths(std::size_t width) const {
  std::vector<std::size_t> widths;
  std::vector<std::size_t> shrinking;
  std::size_t fixed = gap.size() * (columns.size() - 1);
  for (std::size_t column = 0; column < columns.size(); ++column) {
    std::size_t widest = displayWidth(columns[column].heading);
    for (const auto& row : rows) {
      widest = std::max(widest, displayWidth(row[column]));
    }
    widths.push_back(widest);
    if (columns[column].mayShrink) {
      shrinking.push_back(column);
    } else {
      fixed += widest;
    }
  }
  if (width > 0) {
    // The narrowest first: what a column does not need of its share goes to the next ones.
    std::ranges::sort(shrinking, {}, [&](std::size_t column) { return widths[column]; });
    std::size_t room = width > fixed ? width - fixed : 0;
    for (std::size_t index = 0; index < shrinking.size(); ++index) {
      std::size_t& own = widths[shrinking[index]];
      own = std::min(own, std::max(narrowestColumn, room / (shrinking.size() - index)));
      room -= std::min(room, own);
    }
  }
  return widths;
}

std::string Table::text(std::size_t width) const {
  const auto widths = columnWidths(width);
  const auto line = [&](auto cellOf) {
    std::string result;
    for (std::size_t column = 0; column < columns.size(); ++column) {
      result.append(column == 0 ? "" : gap);
      result.append(padded(shortened(cellOf(column), widths[column]), widths[column],
                           columns[column].isRightAligned));
    }
    return withoutTrailingBlanks(std::move(result));
  };
  std::string result = line([&](std::size_t column) { return columns[column].heading; });
  result += line([&](std::size_t column) { return std::string(widths[column], '-'); });
  for (const auto& row : rows) {
    result += line([&](std::size_t column) { return row[column]; });
  }
  return result;
}

}  // namespace zelvreg::console
