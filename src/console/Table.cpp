#include "console/Table.h"

#include <algorithm>

#include "console/DisplayText.h"

namespace zelvreg::console {
namespace {

constexpr std::string_view gap = "  ";
constexpr std::string_view ellipsis = "…";
constexpr std::size_t narrowestColumn = 12;

// The position of the byte at which character number `index` begins.
std::size_t byteOf(std::string_view text, std::size_t index) {
  std::size_t position = 0;
  for (; position < text.size(); ++position) {
    const bool isStart = (static_cast<unsigned char>(text[position]) & 0xC0U) != 0x80U;
    if (isStart && index-- == 0) {
      break;
    }
  }
  return position;
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
  const std::size_t length = displayWidth(text);
  if (length <= width) {
    return std::string(text);
  }
  // The end of a path tells more than its beginning.
  const std::size_t front = (width - 1) / 3;
  const std::size_t back = width - 1 - front;
  std::string result(text.substr(0, byteOf(text, front)));
  return result.append(ellipsis).append(text.substr(byteOf(text, length - back)));
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
    // The narrowest first: what a column does not need of its share goes to those behind.
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
