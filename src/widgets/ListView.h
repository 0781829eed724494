// A list of rows with columns, check boxes and small icons: the only store of what it shows.
//
// Rows count from 1. Column 0 is the item's own text, column n its sub-item n. Nothing fails:
// reading outside the list gives the empty text, false or 0, writing there does nothing. A cell
// ends at its first NUL when it is set.
#ifndef ZELVREG_WIDGETS_LIST_VIEW_H
#define ZELVREG_WIDGETS_LIST_VIEW_H

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "widgets/Control.h"
#include "widgets/ImageList.h"
#include "widgets/MessageQueue.h"

namespace zelvreg {

enum class Alignment : std::uint8_t { Left, Right };

struct ColumnHeader {
  std::string text;
  int width = 0;
  Alignment alignment = Alignment::Left;
};

// How the text of a cell is drawn.
struct CellStyle {
  bool isBold = false;
  std::uint32_t color = windowTextColor;

  bool operator==(const CellStyle&) const = default;
};

class ListView : public Control {
 public:
  // The queue frees many rows that go. It and the icons are not owned and must outlive the list.
  ListView(const ImageList& smallIcons, MessageQueue& queueInUse,
           std::vector<ColumnHeader> headers);

  [[nodiscard]] std::size_t count() const { return rows.size(); }
  // Another number after rows have come or gone.
  [[nodiscard]] std::size_t revision() const { return changesOfRows; }
  // Appends a row, unchecked, and gives its number.
  std::size_t add(std::string_view text);
  void remove(std::size_t row);
  // Removes all rows for which this is true, as `remove` would one by one from the first to the
  // last, but in one pass. Rows are asked for by the numbers that they have before.
  void removeWhere(const std::function<bool(std::size_t row)>& isToGo);
  void clear();

  [[nodiscard]] const std::string& text(std::size_t row, std::size_t column) const;
  // A column that the list does not have counts as outside it.
  void setText(std::size_t row, std::size_t column, std::string_view text);

  // Inserts a sub-item at a position and moves those from there on one place to the right. The cell
  // of that column shows the new one. A position more than one after the last is refused.
  void addSubItem(std::size_t row, std::size_t position, std::string_view text,
                  std::string_view reportIcon);
  [[nodiscard]] const std::string& reportIcon(std::size_t row, std::size_t column) const;

  // Of a sub-item, which must exist.
  [[nodiscard]] CellStyle cellStyle(std::size_t row, std::size_t column) const;
  void setCellStyle(std::size_t row, std::size_t column, CellStyle style);

  [[nodiscard]] const std::string& smallIcon(std::size_t row) const;
  // A key that the image list does not hold is refused: the row keeps its icon.
  void setSmallIcon(std::size_t row, std::string_view key);

  [[nodiscard]] bool isChecked(std::size_t row) const;
  // Does nothing to a row that is locked.
  void setChecked(std::size_t row, bool checked);
  // Rows that an administrator has decided: nobody else changes them.
  [[nodiscard]] bool isLocked(std::size_t row) const;
  void setLocked(std::size_t row, bool isRowLocked);

  // Two numbers that stay with a row when the row moves; 0 until they are set.
  [[nodiscard]] std::size_t tag(std::size_t row) const;
  void setTag(std::size_t row, std::size_t tag);
  [[nodiscard]] std::size_t itemData(std::size_t row) const;
  void setItemData(std::size_t row, std::size_t data);

  [[nodiscard]] std::uint32_t rowColor(std::size_t row) const;
  void setRowColor(std::size_t row, std::uint32_t color);

  // The row highlighted last, 0 for none.
  [[nodiscard]] std::size_t selectedRow() const { return selected; }
  // Highlights one row and no other; 0 for none.
  void select(std::size_t row);
  // Several rows may be highlighted.
  [[nodiscard]] bool isSelected(std::size_t row) const;
  // How many are highlighted.
  [[nodiscard]] std::size_t selectedCount() const { return highlights; }
  void setSelected(std::size_t row, bool isRowSelected);

  // Rows that the user has filtered out. They keep their ticks, but are not highlighted.
  [[nodiscard]] bool isHidden(std::size_t row) const;
  void setHidden(std::size_t row, bool isRowHidden);
  [[nodiscard]] std::size_t hiddenCount() const { return hiddenRows; }

  // The row last scrolled into view, 0 before the first.
  [[nodiscard]] std::size_t rowInView() const { return inView; }
  void ensureVisible(std::size_t row);

  void setFocus() const { changed(Change::Focus); }

  // Whether the column headers are drawn without the look of buttons.
  Property<bool, Change::Look> hasFlatHeader{*this, false};

  [[nodiscard]] const std::vector<ColumnHeader>& columnHeaders() const { return columns; }
  // `column` counts from 1, the item's own text being column 1.
  void setColumnHeader(std::size_t column, std::string_view text);

 private:
  struct SubItem {
    std::string text;
    std::string reportIcon;
    CellStyle style;
  };
  struct Row {
    std::string text;
    std::vector<SubItem> subItems;
    std::string smallIcon;
    std::size_t tag = 0;
    std::size_t data = 0;
    std::uint32_t color = windowTextColor;
    bool isChecked = false;
    bool isSelected = false;
    bool isHidden = false;
    bool isLocked = false;
  };

  void rowsChanged(std::size_t row);
  [[nodiscard]] const Row* find(std::size_t row) const;
  [[nodiscard]] Row* find(std::size_t row);
  [[nodiscard]] const SubItem* findSubItem(std::size_t row, std::size_t column) const;
  [[nodiscard]] SubItem* findSubItem(std::size_t row, std::size_t column);

  const ImageList& icons;
  std::vector<ColumnHeader> columns;
  MessageQueue& queue;
  // Those that are there are not moved when more are added.
  std::deque<Row> rows;
  std::size_t selected = 0;
  std::size_t highlights = 0;
  std::size_t hiddenRows = 0;
  std::size_t changesOfRows = 0;
  std::size_t inView = 0;
};

}  // namespace zelvreg

#endif
