// Columns of text for a terminal.
#ifndef ZELVREG_CONSOLE_TABLE_H
#define ZELVREG_CONSOLE_TABLE_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "console/Paint.h"

namespace zelvreg::console {

// The place that a table has.
struct TableLayout {
  std::size_t width = 0;  // columns of the terminal, 0 for none: then nothing is shortened
  bool isFull = false;    // nothing is shortened on a terminal either
  Paint paint = {};
};

struct TableColumn {
  std::string heading;
  bool isRightAligned = false;
  bool mayShrink = false;     // its cells may lose their middle so that the table fits
  bool isConfidence = false;  // its cells are codes of confidences, each in its own color
};

class Table {
 public:
  explicit Table(std::vector<TableColumn> tableColumns) : columns(std::move(tableColumns)) {}

  // One cell for each column, in UTF-8; control characters are made harmless.
  void addRow(const std::vector<std::string>& cells);

  // The table with its headings underlined. On a terminal, columns that may shrink share what the
  // others leave. A full table breaks their cells into several lines, and where that leaves too
  // little for each it has a block of lines for each row instead, with a heading before each cell.
  [[nodiscard]] std::string text(const TableLayout& layout) const;

 private:
  [[nodiscard]] std::vector<std::size_t> columnWidths(std::size_t width,
                                                      std::size_t narrowest) const;
  [[nodiscard]] std::string rowText(const std::vector<std::string>& cells,
                                    const std::vector<std::size_t>& widths,
                                    const TableLayout& layout) const;
  [[nodiscard]] std::string headText(const std::vector<std::size_t>& widths,
                                     const TableLayout& layout) const;
  [[nodiscard]] std::string blocks(const Paint& paint) const;
  [[nodiscard]] std::string colored(const std::string& cell, std::size_t column,
                                    const Paint& paint) const;

  std::vector<TableColumn> columns;
  std::vector<std::vector<std::string>> rows;
};

// A text of at most `width` columns that keeps both ends.
std::string shortened(std::string_view text, std::size_t width);

}  // namespace zelvreg::console

#endif
