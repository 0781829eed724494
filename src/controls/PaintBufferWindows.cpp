#include "controls/PaintBuffer.h"

#include <algorithm>
#include <cmath>

#include "controls/Units.h"
#include "text/Wide.h"
#include "unicode/ReadingOrder.h"

namespace zelvreg::controls {
namespace {

// A pixel as icons hold it, with colors that are not multiplied by its alpha.
std::uint32_t unmultiplied(std::uint32_t pixel) {
  const std::uint32_t alpha = pixel >> 24;
  if (alpha == 0) {
    return 0;
  }
  std::uint32_t result = alpha << 24;
  for (const int shift : {0, 8, 16}) {
    const std::uint32_t part = pixel >> shift & 0xFF;
    result |= std::min<std::uint32_t>((part * 255 + alpha / 2) / alpha, 255) << shift;
  }
  return result;
}

// A line that is read from the right and has room for all of it, so that it ends at its edge: not
// every system measures joined letters, which are narrower than single ones. Whether it was such.
bool writeFlushRight(HDC context, std::u16string_view text, const RECT& place, UINT format) {
  constexpr UINT wanted = DT_SINGLELINE | DT_RTLREADING | DT_RIGHT | DT_NOPREFIX;
  SIZE extent{};
  const auto length = static_cast<int>(text.size());
  if ((format & wanted) != wanted ||
      GetTextExtentPoint32W(context, wideUnits(text), length, &extent) == FALSE ||
      extent.cx > place.right - place.left) {
    return false;
  }
  const LONG room = place.bottom - place.top - extent.cy;
  const LONG top = place.top + ((format & DT_VCENTER) != 0 ? room / 2 : 0);
  const UINT before = SetTextAlign(context, TA_RIGHT | TA_TOP | TA_NOUPDATECP);
  ExtTextOutW(context, place.right, top, ETO_RTLREADING | ETO_CLIPPED, &place, wideUnits(text),
              static_cast<UINT>(length), nullptr);
  SetTextAlign(context, before);
  return true;
}

}  // namespace

BitmapHandle makeSection(Size size, void*& bits) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
  info.bmiHeader.biWidth = size.width;
  // Negative for the top row first.
  info.bmiHeader.biHeight = -size.height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  return BitmapHandle(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
}

Side sideOf(HDC context) {
  return (GetLayout(context) & LAYOUT_RTL) != 0 ? Side::Right : Side::Left;
}

PaintBuffer::PaintBuffer(Size sizeInPixels, Side layoutSide)
    : extent{std::max(1, sizeInPixels.width), std::max(1, sizeInPixels.height)},
      from(layoutSide),
      section(makeSection(extent, bits)),
      selected(context.get(), section.get()) {}

std::span<std::uint32_t> PaintBuffer::pixels() const {
  GdiFlush();
  const auto count =
      static_cast<std::size_t>(extent.width) * static_cast<std::size_t>(extent.height);
  return {static_cast<std::uint32_t*>(bits), bits == nullptr ? 0 : count};
}

Canvas PaintBuffer::canvas() const {
  const auto all = pixels();
  return all.empty() ? Canvas(all, 0, 0)
                     : Canvas(all, extent.width, extent.height, from == Side::Right);
}

Bitmap PaintBuffer::copy() const {
  Bitmap bitmap(extent.width, extent.height);
  std::ranges::copy(pixels(), bitmap.pixels.begin());
  return bitmap;
}

void PaintBuffer::write(std::u16string_view text, RECT place, UINT format) const {
  if (from == Side::Right) {
    const LONG right = extent.width - place.left;
    place.left = extent.width - place.right;
    place.right = right;
    format ^= (format & DT_CENTER) != 0 ? 0U : static_cast<UINT>(DT_RIGHT);
    format |= readsFromRight(text) ? DT_RTLREADING : 0U;
  }
  if (!writeFlushRight(dc(), text, place, format)) {
    DrawTextW(dc(), wideUnits(text), static_cast<int>(text.size()), &place, format);
  }
}

// It has been drawn for the side of the target, and must not be turned again.
void PaintBuffer::show(HDC target, int left, int top) const {
  HWND window = from == Side::Right ? WindowFromDC(target) : nullptr;
  if (window == nullptr) {
    BitBlt(target, left, top, extent.width, extent.height, dc(), 0, 0, SRCCOPY);
    return;
  }
  RECT client{};
  GetClientRect(window, &client);
  const DWORD layout = SetLayout(target, 0);
  BitBlt(target, client.right - left - extent.width, top, extent.width, extent.height, dc(), 0, 0,
         SRCCOPY);
  SetLayout(target, layout);
}

FontHandle makeFont(const FontDescription& font, int dpi) {
  LOGFONTW description{};
  description.lfHeight = -static_cast<LONG>(std::lround(font.size * dpi / 72));
  description.lfWeight = font.isBold ? FW_SEMIBOLD : FW_NORMAL;
  description.lfItalic = font.isItalic ? TRUE : FALSE;
  description.lfUnderline = font.isUnderlined ? TRUE : FALSE;
  description.lfCharSet = DEFAULT_CHARSET;
  description.lfQuality = DEFAULT_QUALITY;
  copyUnits(utf16(font.name), description.lfFaceName);
  return FontHandle(CreateFontIndirectW(&description));
}

HICON makeIcon(const Bitmap& picture, bool isCursor) {
  void* bits = nullptr;
  const BitmapHandle colors = makeSection({picture.width, picture.height}, bits);
  if (bits == nullptr) {
    return nullptr;
  }
  std::ranges::transform(picture.pixels, static_cast<std::uint32_t*>(bits), unmultiplied);
  // For programs that do not know alpha. Each row of a mask is a whole number of words.
  const auto rowBytes = static_cast<std::size_t>((picture.width + 15) / 16 * 2);
  std::vector<std::uint8_t> maskBits(rowBytes * static_cast<std::size_t>(picture.height));
  for (int row = 0; row < picture.height; ++row) {
    for (int column = 0; column < picture.width; ++column) {
      if (picture.at(column, row) >> 24 < 128) {
        maskBits[static_cast<std::size_t>(row) * rowBytes + static_cast<std::size_t>(column / 8)] |=
            static_cast<std::uint8_t>(0x80 >> column % 8);
      }
    }
  }
  const BitmapHandle mask(CreateBitmap(picture.width, picture.height, 1, 1, maskBits.data()));
  ICONINFO info{};
  info.fIcon = isCursor ? FALSE : TRUE;
  info.hbmColor = colors.get();
  info.hbmMask = mask.get();
  return CreateIconIndirect(&info);
}

COLORREF colorRef(Rgb color) { return RGB(color.red, color.green, color.blue); }

COLORREF colorOfNow(std::uint32_t property) {
  return isSystemColor(property) ? GetSysColor(static_cast<int>(property & 0xFF)) : property;
}

}  // namespace zelvreg::controls
