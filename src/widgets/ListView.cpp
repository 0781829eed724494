#include "widgets/ListView.h"

#include <utility>

#include "text/Text.h"

namespace zelvreg {
namespace {

const std::string outside;

std::string cellText(std::string_view text) { return std::string(untilNul(text)); }

}  // namespace

ListView::ListView(const ImageList& smallIcons, MessageQueue& queueInUse,
                   std::vector<ColumnHeader> headers)
    : icons(smallIcons), columns(std::move(headers)), queue(queueInUse) {}

std::size_t ListView::add(std::string_view text) {
  Row& row = rows.emplace_back();
  row.text = cellText(text);
  rowsChanged(rows.size());
  return rows.size();
}

void ListView::remove(std::size_t row) {
  if (find(row) == nullptr) {
    return;
  }
  highlights -= isSelected(row) ? 1 : 0;
  hiddenRows -= isHidden(row) ? 1 : 0;
  rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(row - 1));
  if (selected == row) {
    selected = 0;
  } else if (selected > row) {
    --selected;
  }
  rowsChanged(row);
}

void ListView::removeWhere(const std::function<bool(std::size_t row)>& isToGo) {
  std::size_t kept = 0;
  std::size_t stillSelected = 0;
  for (std::size_t row = 1; row <= rows.size(); ++row) {
    if (isToGo(row)) {
      continue;
    }
    if (kept + 1 < row) {
      std::swap(rows[kept], rows[row - 1]);
    }
    ++kept;
    if (row == selected) {
      stillSelected = kept;
    }
  }
  if (kept == rows.size()) {
    return;
  }
  std::deque<Row> removed;
  for (; rows.size() > kept; rows.pop_back()) {
    highlights -= rows.back().isSelected ? 1 : 0;
    hiddenRows -= rows.back().isHidden ? 1 : 0;
    removed.push_back(std::move(rows.back()));
  }
  queue.discard(std::move(removed));
  selected = stillSelected;
  rowsChanged(0);
}

void ListView::clear() {
  queue.discard(std::exchange(rows, {}));
  selected = 0;
  highlights = 0;
  hiddenRows = 0;
  inView = 0;
  rowsChanged(0);
}

const std::string& ListView::text(std::size_t row, std::size_t column) const {
  if (column == 0) {
    const Row* found = find(row);
    return found == nullptr ? outside : found->text;
  }
  const SubItem* subItem = findSubItem(row, column);
  return subItem == nullptr ? outside : subItem->text;
}

void ListView::setText(std::size_t row, std::size_t column, std::string_view text) {
  Row* found = find(row);
  if (found == nullptr || column >= columns.size()) {
    return;
  }
  if (column == 0) {
    found->text = cellText(text);
  } else {
    if (found->subItems.size() < column) {
      found->subItems.resize(column);
    }
    found->subItems[column - 1].text = cellText(text);
  }
  changed(Change::Row, row);
}

void ListView::addSubItem(std::size_t row, std::size_t position, std::string_view text,
                          std::string_view reportIcon) {
  Row* found = find(row);
  if (found == nullptr || position == 0 || position > found->subItems.size() + 1) {
    return;
  }
  found->subItems.insert(found->subItems.begin() + static_cast<std::ptrdiff_t>(position - 1),
                         SubItem{cellText(text), std::string(reportIcon), {}});
  changed(Change::Row, row);
}

const std::string& ListView::reportIcon(std::size_t row, std::size_t column) const {
  const SubItem* subItem = findSubItem(row, column);
  return subItem == nullptr ? outside : subItem->reportIcon;
}

CellStyle ListView::cellStyle(std::size_t row, std::size_t column) const {
  const SubItem* subItem = findSubItem(row, column);
  return subItem == nullptr ? CellStyle{} : subItem->style;
}

void ListView::setCellStyle(std::size_t row, std::size_t column, CellStyle style) {
  if (SubItem* subItem = findSubItem(row, column)) {
    subItem->style = style;
    changed(Change::Row, row);
  }
}

const std::string& ListView::smallIcon(std::size_t row) const {
  const Row* found = find(row);
  return found == nullptr ? outside : found->smallIcon;
}

void ListView::setSmallIcon(std::size_t row, std::string_view key) {
  Row* found = find(row);
  if (found != nullptr && icons.holds(key)) {
    found->smallIcon = key;
    changed(Change::Row, row);
  }
}

bool ListView::isChecked(std::size_t row) const {
  const Row* found = find(row);
  return found != nullptr && found->isChecked;
}

void ListView::setChecked(std::size_t row, bool checked) {
  Row* found = find(row);
  if (found != nullptr && !found->isLocked) {
    found->isChecked = checked;
    changed(Change::Checks, row);
  }
}

bool ListView::isLocked(std::size_t row) const {
  const Row* found = find(row);
  return found != nullptr && found->isLocked;
}

void ListView::setLocked(std::size_t row, bool isRowLocked) {
  if (Row* found = find(row)) {
    found->isLocked = isRowLocked;
    changed(Change::Row, row);
  }
}

std::size_t ListView::tag(std::size_t row) const {
  const Row* found = find(row);
  return found == nullptr ? 0 : found->tag;
}

void ListView::setTag(std::size_t row, std::size_t tag) {
  if (Row* found = find(row)) {
    found->tag = tag;
  }
}

std::size_t ListView::itemData(std::size_t row) const {
  const Row* found = find(row);
  return found == nullptr ? 0 : found->data;
}

void ListView::setItemData(std::size_t row, std::size_t data) {
  if (Row* found = find(row)) {
    found->data = data;
  }
}

std::uint32_t ListView::rowColor(std::size_t row) const {
  const Row* found = find(row);
  return found == nullptr ? 0 : found->color;
}

void ListView::setRowColor(std::size_t row, std::uint32_t color) {
  if (Row* found = find(row)) {
    found->color = color;
    changed(Change::Row, row);
  }
}

void ListView::select(std::size_t row) {
  if (highlights > 0) {
    for (Row& each : rows) {
      each.isSelected = false;
    }
  }
  highlights = 0;
  selected = 0;
  setSelected(row, true);
  changed(Change::Selection, selected);
}

bool ListView::isSelected(std::size_t row) const {
  const Row* found = find(row);
  return found != nullptr && found->isSelected;
}

void ListView::setSelected(std::size_t row, bool isRowSelected) {
  Row* found = find(row);
  if (found == nullptr) {
    return;
  }
  highlights -= found->isSelected ? 1 : 0;
  highlights += isRowSelected ? 1 : 0;
  found->isSelected = isRowSelected;
  if (isRowSelected) {
    selected = row;
  } else if (selected == row) {
    selected = 0;
  }
  changed(Change::Selection, row);
}

bool ListView::isHidden(std::size_t row) const {
  const Row* found = find(row);
  return found != nullptr && found->isHidden;
}

void ListView::setHidden(std::size_t row, bool isRowHidden) {
  Row* found = find(row);
  if (found == nullptr || found->isHidden == isRowHidden) {
    return;
  }
  if (isRowHidden && found->isSelected) {
    setSelected(row, false);
  }
  found->isHidden = isRowHidden;
  isRowHidden ? ++hiddenRows : --hiddenRows;
  changed(Change::Rows, row);
}

void ListView::ensureVisible(std::size_t row) {
  if (find(row) != nullptr) {
    inView = row;
    changed(Change::Scroll, row);
  }
}

void ListView::setColumnHeader(std::size_t column, std::string_view text) {
  if (column >= 1 && column <= columns.size()) {
    columns[column - 1].text = cellText(text);
    changed(Change::Text);
  }
}

void ListView::rowsChanged(std::size_t row) {
  ++changesOfRows;
  changed(Change::Rows, row);
}

const ListView::Row* ListView::find(std::size_t row) const {
  return row >= 1 && row <= rows.size() ? &rows[row - 1] : nullptr;
}

ListView::Row* ListView::find(std::size_t row) {
  return const_cast<Row*>(std::as_const(*this).find(row));
}

const ListView::SubItem* ListView::findSubItem(std::size_t row, std::size_t column) const {
  const Row* found = find(row);
  return found != nullptr && column >= 1 && column <= found->subItems.size()
             ? &found->subItems[column - 1]
             : nullptr;
}

ListView::SubItem* ListView::findSubItem(std::size_t row, std::size_t column) {
  return const_cast<SubItem*>(std::as_const(*this).findSubItem(row, column));
}

}  // namespace zelvreg
