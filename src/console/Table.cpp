#include "console/Table.h"

#include <algorithm>
#include <numeric>
#include <optional>

#include "console/CharacterWidth.h"
#include "console/DisplayText.h"
#include "evidence/Reasons.h"
#include "unicode/Unicode.h"

namespace zelvreg::console {
namespace {

constexpr std::string_view gap = "  ";
constexpr std::string_view ellipsis = "…";
constexpr std::size_t narrowestColumn = 12;
// Less would break most paths into more lines than a reader puts together.
constexpr std::size_t narrowestFullColumn = 24;

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

std::string blanksBeside(const std::string& cell, std::size_t width) {
  std::string blanks;
  blanks.resize(width - std::min(width, displayWidth(cell)), ' ');
  return blanks;
}

std::string padded(const std::string& cell, std::size_t width, bool isRightAligned) {
  const std::string blanks = blanksBeside(cell, width);
  return isRightAligned ? blanks + cell : cell + blanks;
}

// The whole text in lines of at most `width` columns. A line rather ends behind a part of a path
// or between words.
std::vector<std::string> piecesOf(std::string_view text, std::size_t width) {
  std::vector<std::string> pieces;
  while (displayWidth(text) > width) {
    std::string_view head = headOf(text, width);
    const std::size_t end = head.find_last_of("\\/ ");
    if (end != std::string_view::npos && end > head.size() / 2) {
      head = head.substr(0, end + 1);
    }
    // A character that is wider than the column stands alone.
    head = head.empty() ? text.substr(0, firstCharacter(text).size) : head;
    pieces.emplace_back(head);
    text.remove_prefix(head.size());
  }
  pieces.emplace_back(text);
  return pieces;
}

std::string withoutTrailingBlanks(std::string line) {
  line.erase(line.find_last_not_of(' ') + 1);
  return line;
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

std::vector<std::size_t> Table::columnWidths(std::size_t width, std::size_t narrowest) const {
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
      own = std::min(own, std::max(narrowest, room / (shrinking.size() - index)));
      room -= std::min(room, own);
    }
  }
  return widths;
}

std::string Table::colored(const std::string& cell, std::size_t column, const Paint& paint) const {
  const auto confidence =
      columns[column].isConfidence ? confidenceOfCode(cell) : std::optional<Confidence>();
  return confidence ? paint.in(inkOf(*confidence), cell) : cell;
}

std::string Table::headText(const std::vector<std::size_t>& widths,
                            const TableLayout& layout) const {
  std::string headings;
  std::string lines;
  for (std::size_t column = 0; column < columns.size(); ++column) {
    const TableColumn& one = columns[column];
    headings.append(column == 0 ? "" : gap);
    headings.append(
        padded(shortened(one.heading, widths[column]), widths[column], one.isRightAligned));
    lines.append(column == 0 ? "" : gap).append(widths[column], '-');
  }
  return layout.paint.in(Ink::Heading, withoutTrailingBlanks(std::move(headings))) + "\n" +
         withoutTrailingBlanks(std::move(lines)) + "\n";
}

std::string Table::rowText(const std::vector<std::string>& cells,
                           const std::vector<std::size_t>& widths,
                           const TableLayout& layout) const {
  std::vector<std::vector<std::string>> pieces;
  std::size_t lines = 1;
  for (std::size_t column = 0; column < columns.size(); ++column) {
    pieces.push_back(layout.isFull
                         ? piecesOf(cells[column], widths[column])
                         : std::vector<std::string>{shortened(cells[column], widths[column])});
    lines = std::max(lines, pieces.back().size());
  }
  std::string result;
  for (std::size_t line = 0; line < lines; ++line) {
    std::string text;
    for (std::size_t column = 0; column < columns.size(); ++column) {
      const std::string piece = line < pieces[column].size() ? pieces[column][line] : "";
      const std::string blanks = blanksBeside(piece, widths[column]);
      const std::string shown = colored(piece, column, layout.paint);
      text.append(column == 0 ? "" : gap);
      text.append(columns[column].isRightAligned ? blanks + shown : shown + blanks);
    }
    result += withoutTrailingBlanks(std::move(text)) + "\n";
  }
  return result;
}

std::string Table::blocks(const Paint& paint) const {
  std::size_t widest = 0;
  for (const TableColumn& column : columns) {
    widest = std::max(widest, displayWidth(column.heading));
  }
  std::string result;
  for (const auto& row : rows) {
    result += result.empty() ? "" : "\n";
    for (std::size_t column = 0; column < columns.size(); ++column) {
      const std::string& heading = columns[column].heading;
      std::string line = paint.in(Ink::Heading, heading) + blanksBeside(heading, widest);
      line.append(gap).append(colored(row[column], column, paint));
      result += withoutTrailingBlanks(std::move(line)) + "\n";
    }
  }
  return result;
}

std::string Table::text(const TableLayout& layout) const {
  const auto widths =
      columnWidths(layout.width, layout.isFull ? narrowestFullColumn : narrowestColumn);
  const std::size_t needed = std::accumulate(widths.begin(), widths.end(), std::size_t{0}) +
                             gap.size() * (columns.size() - 1);
  if (layout.isFull && layout.width > 0 && needed > layout.width) {
    return blocks(layout.paint);
  }
  std::string result = headText(widths, layout);
  for (const auto& row : rows) {
    result += rowText(row, widths, layout);
  }
  return result;
}

}  // namespace zelvreg::console
