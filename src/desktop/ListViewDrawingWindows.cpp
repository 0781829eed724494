// How the rows of a list are drawn.
#include <algorithm>

#include "desktop/CheckMark.h"
#include "desktop/ListText.h"
#include "desktop/ListViewPeer.h"

namespace zelvreg::desktop {
namespace {

constexpr int cellMargin = 10;
constexpr int besideCheck = 36;
constexpr int iconLength = 16;
constexpr int iconPitch = 24;

std::u16string shownIn(HDC context, const std::u16string& text, int room) {
  return withoutMiddle(text, room, [context](std::u16string_view part) {
    SIZE extent{};
    GetTextExtentPoint32W(context, wideUnits(part), static_cast<int>(part.size()), &extent);
    return static_cast<int>(extent.cx);
  });
}

void drawText(const controls::PaintBuffer& buffer, const std::u16string& text, const RECT& place,
              UINT alignment, Rgb color) {
  SetBkMode(buffer.dc(), TRANSPARENT);
  SetTextColor(buffer.dc(), controls::colorRef(color));
  buffer.write(shownIn(buffer.dc(), text, place.right - place.left), place,
               DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS | alignment);
}

}  // namespace

ListViewPeer::Sheet ListViewPeer::readSheet() const {
  Sheet read;
  for (std::size_t column = 0; column < list.columnHeaders().size(); ++column) {
    Header_GetItemRect(header, static_cast<int>(column), &read.columns.emplace_back());
  }
  if (GetFocus() == hwnd()) {
    read.focused = focusedRow();
  }
  return read;
}

LRESULT ListViewPeer::drawItem(NMLVCUSTOMDRAW& request) {
  if (request.nmcd.dwDrawStage == CDDS_PREPAINT) {
    sheet = readSheet();
    return CDRF_NOTIFYITEMDRAW;
  }
  if (request.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) {
    return CDRF_DODEFAULT;
  }
  const RECT& bounds = request.nmcd.rc;
  const controls::Size size{static_cast<int>(bounds.right - bounds.left),
                            static_cast<int>(bounds.bottom - bounds.top)};
  if (size.width <= 0 || size.height <= 0) {
    return CDRF_DODEFAULT;
  }
  const controls::Side side = controls::sideOf(request.nmcd.hdc);
  if (rowBuffer == nullptr || rowBuffer->size() != size || rowBuffer->side() != side) {
    rowBuffer = std::make_unique<controls::PaintBuffer>(size, side);
  }
  drawRow(*rowBuffer, order.rowAt(request.nmcd.dwItemSpec));
  rowBuffer->show(request.nmcd.hdc, bounds.left, bounds.top);
  return CDRF_SKIPDEFAULT;
}

void ListViewPeer::drawRow(const controls::PaintBuffer& buffer, std::size_t row) const {
  const auto [width, height] = buffer.size();
  controls::Canvas canvas = buffer.canvas();
  canvas.fill({0, 0, width, height},
              desk().color(list.isSelected(row) ? Tone::Selected : Tone::Surface));
  canvas.fill({0, height - 1, width, height}, desk().color(Tone::RowLine));
  if (options.hasChecks) {
    const int length = desk().pixels(15);
    drawCheckMark(canvas,
                  {.left = desk().pixels(cellMargin),
                   .top = (height - length) / 2,
                   .length = length,
                   .isOn = list.isChecked(row),
                   .isRound = false,
                   .isEnabled = !list.isLocked(row)},
                  desk().colors);
  }
  const auto drawIcon = [&](const std::string& key, int left) {
    if (const controls::Picture icon = desk().icon(key, iconLength, iconTone(row))) {
      canvas.draw(*icon, desk().pixels(left), (height - icon->height) / 2);
    }
  };
  if (options.hasMarks && markOf) {
    drawIcon(markOf(row), besideCheck);
  }
  if (options.hasIcons) {
    drawIcon(list.smallIcon(row), iconLeft());
  }
  for (std::size_t column = 0; column < sheet.columns.size(); ++column) {
    const RECT& place = sheet.columns[column];
    if (place.right > place.left) {
      drawCell(buffer, row, column, {place.left, 0, place.right, height});
    }
  }
  if (row == sheet.focused) {
    const Rgb ring = desk().color(Tone::Mark);
    canvas.draw(controls::Shape{1, 1, width - 1.0, height - 2.0, 3, 1, ring, ring});
  }
}

void ListViewPeer::drawCell(const controls::PaintBuffer& buffer, std::size_t row,
                            std::size_t column, RECT cell) const {
  cell.left += cellInset(row, column);
  cell.right -= desk().pixels(6);
  if (const controls::Picture icon =
          desk().icon(list.reportIcon(row, column), iconLength, iconTone(row))) {
    buffer.canvas().draw(*icon, cell.left - desk().pixels(iconPitch),
                         (cell.bottom - icon->height) / 2);
  }
  const CellStyle style = list.cellStyle(row, column);
  const controls::Selection selected(buffer.dc(), desk().font(list.font, 0, style.isBold));
  const bool isRight = list.columnHeaders()[column].alignment == Alignment::Right;
  drawText(buffer, utf16(cellText(row, column)), cell, isRight ? DT_RIGHT : DT_LEFT,
           cellColor(row, column));
}

int ListViewPeer::cellInset(std::size_t row, std::size_t column) const {
  const bool isFirst = column == 0;
  int left = cellMargin;
  if (isFirst && options.hasIcons) {
    left = iconLeft() + iconPitch;
  } else if (isFirst && options.hasChecks) {
    left = besideCheck;
  }
  return desk().pixels(left) +
         (list.reportIcon(row, column).empty() ? 0 : desk().pixels(iconPitch));
}

// In pixels at 96 dpi.
int ListViewPeer::iconLeft() const { return besideCheck + (options.hasMarks ? iconPitch : 0); }

// In high contrast everything in a highlighted row has the same color.
std::optional<Tone> ListViewPeer::iconTone(std::size_t row) const {
  return desk().colors.isSystem() && list.isSelected(row) ? std::optional(Tone::OnSelected)
                                                          : std::nullopt;
}

// The form gives a row under test, or with findings, bright red. It is drawn in a calmer color.
Rgb ListViewPeer::cellColor(std::size_t row, std::size_t column) const {
  constexpr std::uint32_t brightRed = 255;
  if (desk().colors.isSystem()) {
    return desk().color(list.isSelected(row) ? Tone::OnSelected : Tone::Text);
  }
  const bool isNumber = list.columnHeaders()[column].alignment == Alignment::Right;
  const bool isFirst = column == 0;
  const std::uint32_t told = isFirst ? list.rowColor(row) : list.cellStyle(row, column).color;
  if (told == brightRed) {
    return desk().color(Tone::Problem);
  }
  return controls::isSystemColor(told)
             ? desk().color(isFirst || isNumber ? Tone::Text : Tone::Secondary)
             : desk().colors.textFrom(told, list.isSelected(row) ? Tone::Selected : Tone::Surface);
}

LRESULT ListViewPeer::drawHeader(NMCUSTOMDRAW& request) const {
  if (request.dwDrawStage == CDDS_PREPAINT) {
    RECT all{};
    GetClientRect(header, &all);
    FillRect(request.hdc, &all, desk().brush(Tone::Header));
    return CDRF_NOTIFYITEMDRAW;
  }
  if (request.dwDrawStage != CDDS_ITEMPREPAINT) {
    return CDRF_DODEFAULT;
  }
  const std::size_t column = request.dwItemSpec;
  const RECT& place = request.rc;
  if (place.right <= place.left || column >= list.columnHeaders().size()) {
    return CDRF_SKIPDEFAULT;
  }
  const int width = place.right - place.left;
  const int height = place.bottom - place.top;
  const controls::PaintBuffer buffer({width, height}, controls::sideOf(request.hdc));
  controls::Canvas canvas = buffer.canvas();
  canvas.fill({0, 0, width, height}, desk().color(Tone::Header));
  canvas.fill({0, height - 1, width, height}, desk().color(Tone::Line));
  const controls::Selection selected(buffer.dc(), desk().font(list.font, 0, true));
  const bool isRight = list.columnHeaders()[column].alignment == Alignment::Right;
  int right = width - desk().pixels(6);
  if (order.sorting() && order.sorting()->column == column) {
    constexpr int arrowLength = 12;
    const char* arrow = order.sorting()->isDescending ? "down" : "up";
    if (const auto picture = desk().icon(arrow, arrowLength, Tone::Secondary)) {
      right -= picture->width;
      canvas.draw(*picture, right, (height - picture->height) / 2);
      right -= desk().pixels(2);
    }
  }
  drawText(buffer, utf16(list.columnHeaders()[column].text),
           {desk().pixels(cellMargin), 0, right, height}, isRight ? DT_RIGHT : DT_LEFT,
           desk().color(Tone::Secondary));
  buffer.show(request.hdc, place.left, place.top);
  return CDRF_SKIPDEFAULT;
}

}  // namespace zelvreg::desktop
