// Columns of text for a terminal.
#ifndef ZELVREG_CONSOLE_TABLE_H
#define ZELVREG_CONSOLE_TABLE_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zelvreg::console {

struct TableColumn {
  std::string heading;
  bool isRightAligned = false;
  bool mayShrink = false;  // its cells may lose their middle so that the table fits
};

class Table {
 public:
  explicit Table(std::vector<TableColumn> tableColumns) : columns(std::move(tableColumns)) {}

  // One cell for each column, in UTF-8; control characters are made harmless.
  void addRow(const std::vector<std::string>& cells);

  // The table with its headings underlined. With a `width` above 0, columns that may shrink share
  // what the others leave; without, nothing is shortened.
  [[nodiscard]] std::string text(std::size_t width) const;

 private:
  [[nodiscard]] std::vector<std::size_t> columnWidths(std::size_t width) const;

  std::vector<TableColumn> columns;
  std::vector<std::vector<std::string>> rows;
};

// A text of at most `width` columns that keeps both ends.
std::string shortened(std::string_view text, std::size_t width);

}  // namespace zelvreg::console

#endif
