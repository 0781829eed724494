#include "controls/ButtonPainter.h"

#include <algorithm>

#include "controls/ButtonContent.h"
#include "text/Wide.h"

namespace zelvreg::controls {
namespace {

// A caption and how it wraps.
struct Caption {
  std::u16string text;
  UINT format = 0;
  Size size;
};

Size measured(HDC dc, const std::u16string& text, int width, UINT format) {
  RECT box{0, 0, width, 0};
  DrawTextW(dc, wideText(text), static_cast<int>(text.size()), &box, format | DT_CALCRECT);
  return {static_cast<int>(box.right), static_cast<int>(box.bottom)};
}

// In as many lines as there is room for; a caption that is still too long ends in an ellipsis.
Caption fitted(HDC dc, const std::string& text, Size room) {
  Caption caption{utf16(text), DT_WORDBREAK, {}};
  if (caption.text.empty()) {
    return caption;
  }
  caption.size = measured(dc, caption.text, room.width, caption.format);
  if (caption.size.width > room.width || caption.size.height > room.height) {
    caption.format = DT_SINGLELINE | DT_END_ELLIPSIS;
    caption.size = measured(dc, caption.text, room.width, caption.format);
    caption.size.width = std::min(caption.size.width, room.width);
  }
  return caption;
}

Rgb systemColorNow(int index) { return fromProperty(GetSysColor(index)); }

// The default system color means the style's own; any other is the system's as it is now.
ButtonProperties withSystemColors(ButtonProperties properties) {
  const ButtonProperties usual;
  for (const auto field :
       {&ButtonProperties::BackColor, &ButtonProperties::BackOver, &ButtonProperties::ForeColor,
        &ButtonProperties::ForeOver, &ButtonProperties::MaskColor}) {
    if (properties.*field != usual.*field) {
      properties.*field = colorOfNow(properties.*field);
    }
  }
  return properties;
}

}  // namespace

void paintButton(const PaintBuffer& buffer, const ButtonProperties& told, const ButtonState& state,
                 const ButtonSetting& setting) {
  const ButtonProperties properties = withSystemColors(told);
  const Size size = buffer.size();
  const ButtonLook look = lookOf(properties, state, size, setting.dpi, setting.palette);
  Canvas canvas = buffer.canvas();
  for (const Shape& shape : look.shapes) {
    canvas.draw(shape);
  }

  const Picture picture = shownPicture(properties, state, look.text);
  const Size pictureSize = picture ? Size{picture->width, picture->height} : Size();
  const auto place = static_cast<PicturePlace>(properties.PicturePosition);
  const Selection font(buffer.dc(), setting.font);
  const Caption caption =
      fitted(buffer.dc(), properties.Caption, captionRoom(size, pictureSize, place, setting.dpi));
  const ContentPlaces places =
      placeContent(size, pictureSize, caption.size, place, look.isLeftAligned, setting.dpi);
  if (picture) {
    canvas.draw(*picture, places.picture.left, places.picture.top + look.shift);
  }
  const RECT box{places.text.left, places.text.top + look.shift, places.text.right,
                 places.text.bottom + look.shift};
  SetBkMode(buffer.dc(), TRANSPARENT);
  SetTextColor(buffer.dc(), colorRef(look.text));
  const UINT alignment = look.isLeftAligned ? DT_LEFT : DT_CENTER;
  buffer.write(caption.text, box,
               caption.format | alignment | (setting.hidesKeys ? DT_HIDEPREFIX : 0U));
}

SystemColors systemColors() {
  return {systemColorNow(COLOR_BTNFACE), systemColorNow(COLOR_BTNTEXT),
          systemColorNow(COLOR_GRAYTEXT), systemColorNow(COLOR_HIGHLIGHT),
          systemColorNow(COLOR_HIGHLIGHTTEXT)};
}

}  // namespace zelvreg::controls
