// How wide the columns of a list are, and what is told of a cell that is too narrow for its text.
#include <algorithm>

#include "desktop/ListText.h"
#include "desktop/ListViewPeer.h"
#include "desktop/SystemScreen.h"

namespace zelvreg::desktop {
namespace {

// In pixels at 96 dpi.
constexpr int narrowest = 24;
constexpr int afterText = 8;
constexpr int headingMargins = 20;
// Behind the longest one, another may be wider, because letters are.
constexpr std::size_t measuredRows = 8;
constexpr std::size_t lineLength = 110;

}  // namespace

void ListViewPeer::useColumnWidths(std::vector<int> wanted) {
  widths = std::move(wanted);
  fitColumns();
}

void ListViewPeer::fitColumns() {
  if (isDragging) {
    return;
  }
  // The list takes its scroll bar into account only later.
  RECT whole{};
  GetWindowRect(hwnd(), &whole);
  const int rows =
      (whole.bottom - whole.top - 2 - desk().pixels(headerHeight)) / std::max(1, rowPixels());
  const bool isLong = static_cast<int>(order.count()) > rows;
  int left = whole.right - whole.left - 2 - (isLong ? scrollBarWidth(hwnd()) : 0);
  const std::size_t count = widths.size();
  for (std::size_t column = 0; column < count; ++column) {
    int width = desk().pixels(widths[column]);
    if (column + 1 == count && width == 0) {
      width = std::max(desk().pixels(options.columnWidths.back()), left);
    }
    left -= width;
    // Setting it draws the whole list again.
    if (ListView_GetColumnWidth(hwnd(), static_cast<int>(column)) != width) {
      ListView_SetColumnWidth(hwnd(), static_cast<int>(column), width);
    }
  }
}

std::optional<LRESULT> ListViewPeer::headerNotice(NMHEADERW& told) {
  const auto column = static_cast<std::size_t>(told.iItem);
  if (column >= widths.size()) {
    return std::nullopt;
  }
  const bool isHidden = options.columnWidths[column] == 0;
  switch (told.hdr.code) {
    case HDN_BEGINTRACKA:
    case HDN_BEGINTRACKW:
      isDragging = !isHidden;
      return isHidden ? std::optional<LRESULT>(TRUE) : std::nullopt;
    case HDN_ENDTRACKA:
    case HDN_ENDTRACKW:
      isDragging = false;
      if (told.pitem != nullptr && (told.pitem->mask & HDI_WIDTH) != 0) {
        told.pitem->cxy = std::max(desk().pixels(narrowest), told.pitem->cxy);
        setColumnWidth(column, told.pitem->cxy);
      }
      return std::nullopt;
    case HDN_DIVIDERDBLCLICKA:
    case HDN_DIVIDERDBLCLICKW:
      if (!isHidden) {
        setColumnWidth(column, fittingWidth(column));
      }
      return 0;
    default:
      return std::nullopt;
  }
}

void ListViewPeer::setColumnWidth(std::size_t column, int pixels) {
  widths[column] = std::max(narrowest, desk().fromPixels(pixels));
  if (onColumns) {
    onColumns(widths);
  }
  // The header is still busy.
  stale.widths = true;
  desk().later(this, [this] { catchUp(); });
}

int ListViewPeer::fittingWidth(std::size_t column) const {
  const std::u16string heading = utf16(list.columnHeaders()[column].text);
  int widest = lineWidth(heading, desk().font(list.font, 0, true)) + desk().pixels(headingMargins);
  const auto measure = [this, column, &widest](std::size_t row) {
    widest = std::max(widest, cellWidth(row, column));
  };
  const int top = ListView_GetTopIndex(hwnd());
  const int end =
      std::min(top + ListView_GetCountPerPage(hwnd()) + 1, static_cast<int>(order.count()));
  for (int item = top; item < end; ++item) {
    measure(rowOf(item));
  }
  std::ranges::for_each(longestRows(list, column, measuredRows), measure);
  return widest;
}

int ListViewPeer::cellWidth(std::size_t row, std::size_t column) const {
  const CellStyle style = list.cellStyle(row, column);
  return cellInset(row, column) +
         lineWidth(utf16(cellText(row, column)), desk().font(list.font, 0, style.isBold)) +
         desk().pixels(afterText);
}

std::u16string ListViewPeer::tipText(int item, int column) const {
  const std::size_t row = rowOf(item);
  const auto place = static_cast<std::size_t>(column);
  std::u16string text;
  if (cellWidth(row, place) > ListView_GetColumnWidth(hwnd(), column)) {
    text = inLines(utf16(cellText(row, place)), lineLength);
  }
  const std::string ofRow = tipOf ? tipOf(row) : std::string();
  if (!ofRow.empty()) {
    text += (text.empty() ? u"" : u"\n") + inLines(utf16(ofRow), lineLength);
  }
  return text;
}

}  // namespace zelvreg::desktop
