#include <cstring>

#include "controls/CoolMenu.h"
#include "controls/PaintBuffer.h"
#include "text/Wide.h"

namespace zelvreg::controls {
namespace {

// Where the picture is black the brush is drawn; elsewhere nothing changes.
constexpr DWORD brushThroughMask = 0xB8074A;

Rgb systemRgb(int index) { return fromProperty(GetSysColor(index)); }

RECT toRect(const Rectangle& rectangle) {
  return {rectangle.left, rectangle.top, rectangle.right, rectangle.bottom};
}

Shape filled(const Rectangle& place, double radius, Rgb color) {
  return {static_cast<double>(place.left),
          static_cast<double>(place.top),
          static_cast<double>(place.right),
          static_cast<double>(place.bottom),
          radius,
          0,
          color,
          color};
}

void drawText(const PaintBuffer& buffer, std::string_view text, const Rectangle& place, UINT format,
              Rgb color, int offset) {
  RECT box = toRect(place);
  OffsetRect(&box, offset, offset);
  SetTextColor(buffer.dc(), colorRef(color));
  buffer.write(utf16(text), box, DT_SINGLELINE | DT_VCENTER | format);
}

void drawTick(Canvas canvas, const Rectangle& place, Rgb color) {
  const double unit = place.width() / 16.0;
  const double width = 1.6 * unit;
  const double top = place.top;
  // A tick is the same in every direction of reading.
  const auto x = [&](double at) {
    return canvas.isMirrored() ? place.right - at * unit : place.left + at * unit;
  };
  canvas.draw(Stroke{x(3.5), top + 8.5 * unit, x(6.5), top + 11.5 * unit, width}, color);
  canvas.draw(Stroke{x(6.5), top + 11.5 * unit, x(12.5), top + 4.5 * unit, width}, color);
}

// A white picture of one bit a pixel.
class Mask {
 public:
  explicit Mask(Size size)
      : bitmap(CreateBitmap(size.width, size.height, 1, 1, nullptr)),
        selected(context.get(), bitmap.get()) {
    PatBlt(dc(), 0, 0, size.width, size.height, WHITENESS);
  }

  [[nodiscard]] HDC dc() const { return context.get(); }

 private:
  MemoryContext context;
  BitmapHandle bitmap;
  Selection selected;
};

Size sizeOfImages(HIMAGELIST images) {
  IMAGEINFO info{};
  ImageList_GetImageInfo(images, 0, &info);
  return {static_cast<int>(info.rcImage.right - info.rcImage.left),
          static_cast<int>(info.rcImage.bottom - info.rcImage.top)};
}

}  // namespace

bool CoolMenu::draw(LPARAM request) const {
  DRAWITEMSTRUCT record{};
  std::memcpy(&record, reinterpret_cast<const void*>(request), sizeof record);
  const CMyItemData* data = record.CtlType == ODT_MENU ? recordOf(record.itemData) : nullptr;
  if (data == nullptr) {
    return false;
  }
  const RECT& place = record.rcItem;
  const Size size{static_cast<int>(place.right - place.left),
                  static_cast<int>(place.bottom - place.top)};
  const PaintBuffer buffer(size, sideOf(record.hDC));
  drawEntry(buffer, *data, record.itemState);
  buffer.show(record.hDC, place.left, place.top);
  // The system draws the arrow of a submenu over it.
  return true;
}

void CoolMenu::drawEntry(const PaintBuffer& buffer, const CMyItemData& entry, UINT state) const {
  HDC dc = buffer.dc();
  const Size size = buffer.size();
  const Rectangle whole{0, 0, size.width, size.height};
  const MenuEntryPlaces places = placeEntry(entry, whole, metrics());
  const MenuColors inUse = colorsNow(entry.bMainMenu);
  const BrushHandle brush(CreateSolidBrush(colorRef(inUse.ground)));
  const RECT all = toRect(whole);
  FillRect(dc, &all, brush.get());
  if ((entry.fType & menuSeparator) != 0) {
    const BrushHandle lineBrush(CreateSolidBrush(colorRef(inUse.line)));
    const RECT box = toRect(places.separator);
    FillRect(dc, &box, lineBrush.get());
    return;
  }
  const bool isChosen = (state & (ODS_SELECTED | ODS_HOTLIGHT)) != 0;
  if (isChosen) {
    buffer.canvas().draw(filled(places.highlight, scaled(4, resolution), inUse.chosen));
  }
  drawPicture(buffer, entry, places, state);
  const Selection selected(dc, font.get());
  SetBkMode(dc, TRANSPARENT);
  const MenuCaption caption = splitCaption(entry.sMenuText);
  const UINT hidden = (state & ODS_NOACCEL) != 0 ? DT_HIDEPREFIX : 0;
  // What cannot be chosen is drawn twice in the system's colors, dark over light.
  const bool isDisabled = (state & (ODS_GRAYED | ODS_DISABLED)) != 0;
  const auto drawBoth = [&](Rgb color, int offset) {
    drawText(buffer, caption.text, places.text, hidden | (entry.bMainMenu ? DT_CENTER : DT_LEFT),
             color, offset);
    drawText(buffer, caption.keys, places.text, DT_RIGHT, color, offset);
  };
  if (isDisabled && !colors) {
    drawBoth(systemRgb(COLOR_3DHILIGHT), 1);
  }
  drawBoth(isDisabled ? inUse.disabledText : inUse.text, 0);
}

MenuColors CoolMenu::colorsNow(bool isBar) const {
  if (colors) {
    return *colors;
  }
  const Rgb ground = systemRgb(isBar ? COLOR_MENUBAR : COLOR_MENU);
  const Rgb text = systemRgb(COLOR_MENUTEXT);
  return {.ground = ground,
          .chosen = mix(ground, systemRgb(COLOR_HIGHLIGHT), 0.18),
          .text = text,
          .disabledText = systemRgb(COLOR_GRAYTEXT),
          .line = mix(ground, text, 0.15)};
}

void CoolMenu::drawPicture(const PaintBuffer& buffer, const CMyItemData& entry,
                           const MenuEntryPlaces& places, UINT state) const {
  if (entry.bMainMenu) {
    return;
  }
  const bool isChecked = (state & ODS_CHECKED) != 0;
  const bool isDisabled = (state & (ODS_GRAYED | ODS_DISABLED)) != 0;
  if (entry.iButton < 0 || pictures.hImageList == nullptr) {
    if (isChecked) {
      const MenuColors inUse = colorsNow(false);
      drawTick(buffer.canvas(), places.picture, isDisabled ? inUse.disabledText : inUse.text);
    }
    return;
  }
  HDC dc = buffer.dc();
  const Rectangle& place = places.picture;
  const Size size = sizeOfImages(pictures.hImageList);
  if (isDisabled) {
    drawDisabledPicture(dc, pictures.hImageList, entry.iButton, place);
  } else if (size == Size{place.width(), place.height()}) {
    ImageList_Draw(pictures.hImageList, entry.iButton, dc, place.left, place.top, ILD_TRANSPARENT);
  } else if (HICON icon = ImageList_GetIcon(pictures.hImageList, entry.iButton, ILD_TRANSPARENT)) {
    DrawIconEx(dc, place.left, place.top, icon, place.width(), place.height(), 0, nullptr,
               DI_NORMAL);
    DestroyIcon(icon);
  }
  if (isChecked) {
    RECT frame = toRect(places.frame);
    DrawEdge(dc, &frame, BDR_SUNKENOUTER, BF_RECT);
  }
}

void drawDisabledPicture(HDC target, HIMAGELIST images, int index, const Rectangle& place) {
  const Size size = sizeOfImages(images);
  const Mask image(size);
  ImageList_Draw(images, index, image.dc(), 0, 0, ILD_TRANSPARENT);
  const Mask mask({place.width(), place.height()});
  StretchBlt(mask.dc(), 0, 0, place.width(), place.height(), image.dc(), 0, 0, size.width,
             size.height, SRCCOPY);
  const COLORREF text = SetTextColor(target, RGB(0, 0, 0));
  const COLORREF ground = SetBkColor(target, RGB(255, 255, 255));
  // The light to the lower right of the dark makes it look pressed in.
  struct Pass {
    int color;
    int offset;
  };
  for (const Pass& pass : {Pass{COLOR_3DHILIGHT, 1}, Pass{COLOR_3DSHADOW, 0}}) {
    const Selection brush(target, GetSysColorBrush(pass.color));
    BitBlt(target, place.left + pass.offset, place.top + pass.offset, place.width(), place.height(),
           mask.dc(), 0, 0, brushThroughMask);
  }
  SetTextColor(target, text);
  SetBkColor(target, ground);
}

}  // namespace zelvreg::controls
