#include "gallery/GalleryPage.h"

#include <array>

#include "controls/ButtonPainter.h"
#include "controls/ButtonStyles.h"
#include "controls/WindowRegion.h"
#include "gallery/GalleryIcons.h"
#include "text/Wide.h"

namespace zelvreg::gallery {

using namespace controls;

namespace {

struct Sample {
  const char* name;
  ButtonState state;
  bool isEnabled = true;
  bool isChecked = false;
};

// The first column has real buttons.
const std::array<Sample, 7> samples = {{
    {"Normal", {}},
    {"Hovered", {.isHovered = true}},
    {"Pressed", {.isHovered = true, .isPressed = true}},
    {"Focused", {.isFocused = true}},
    {"Disabled", {}, false},
    {"Default", {.isDefault = true}},
    {"Checked", {}, true, true},
}};

constexpr Rgb secondaryText = rgb(0x5B6675);

void paintSample(const PaintBuffer& page, const ButtonProperties& properties,
                 const ButtonState& state, const Rectangle& place, int dpi) {
  const FontHandle font = makeFont(properties.Font, dpi);
  const PaintBuffer cell({place.width(), place.height()});
  BitBlt(cell.dc(), 0, 0, place.width(), place.height(), page.dc(), place.left, place.top, SRCCOPY);
  ButtonSetting setting;
  setting.font = font.get();
  setting.dpi = dpi;
  paintButton(cell, properties, state, setting);
  cell.show(page.dc(), place.left, place.top);
}

void paintTable(const PaintBuffer& page) {
  FontDescription heading;
  heading.isBold = true;
  for (int column = 0; column < static_cast<int>(samples.size()); ++column) {
    paintText(page, samples[static_cast<std::size_t>(column)].name, cellOf(1, column).left,
              tableTop - 26, heading, secondaryText);
  }
  for (int style = 1; style <= styleCount; ++style) {
    const std::string name = std::to_string(style) + "  " + std::string(styleOf(style).name);
    paintText(page, name, tableLeft, cellOf(style, 0).top + 7, {}, Palette().text);
    for (std::size_t column = 1; column < samples.size(); ++column) {
      const Sample& sample = samples[column];
      ButtonProperties properties;
      properties.ButtonType = style;
      properties.Caption = "&Button";
      properties.Enabled = sample.isEnabled;
      properties.CheckBoxBehaviour = properties.Value = sample.isChecked;
      paintSample(page, properties, sample.state, cellOf(style, static_cast<int>(column)), 96);
    }
  }
}

void paintResolutions(const PaintBuffer& page) {
  const int left = cellOf(1, 7).left + 24;
  int top = tableTop;
  FontDescription heading;
  heading.isBold = true;
  paintText(page, "144 and 192 DPI", left, top - 26, heading, secondaryText);
  for (const int dpi : {144, 192}) {
    ButtonProperties properties;
    properties.Caption = "Start";
    properties.PictureNormal = makePicture(Icon::Play, dpi);
    properties.SpecialEffect = static_cast<std::int16_t>(PictureEffect::TextColor);
    const Size size{scaled(104, dpi), scaled(32, dpi)};
    paintSample(page, properties, {.isDefault = true},
                {left, top, left + size.width, top + size.height}, dpi);
    top += size.height + 12;
  }
  paintText(page, "System colors", left, top + 14, heading, secondaryText);
  ButtonProperties properties;
  properties.Caption = "ColorScheme 2";
  properties.ColorScheme = 2;
  paintSample(page, properties, {.isFocused = true}, {left, top + 40, left + 130, top + 72}, 96);
}

void paintGround(const PaintBuffer& page) {
  const Palette palette;
  Canvas canvas = page.canvas();
  canvas.clear(palette.ground);
  const int below = bandHeight + barHeight;
  canvas.fill({0, 0, pageSize.width, bandHeight}, palette.accent);
  canvas.fill({0, bandHeight, pageSize.width, below}, rgb(0xFFFFFF));
  canvas.fill({0, below - 1, pageSize.width, below}, palette.line);
  canvas.fill({0, below, sideWidth, pageSize.height}, rgb(0xEEF2F7));
  canvas.fill({sideWidth - 1, below, sideWidth, pageSize.height}, palette.line);
  FontDescription title;
  title.size = 13;
  title.isBold = true;
  paintText(page, "Fix Registry Problems", 20, 8, title, rgb(0xFFFFFF));
  paintText(page, "All controls in all their states", 20, 34, {}, rgb(0xDCE6F2));
}

}  // namespace

Rectangle cellOf(int style, int column) {
  const int left = tableLeft + nameWidth + column * columnWidth;
  const int top = tableTop + (style - 1) * rowHeight;
  return {left, top, left + cellSize.width, top + cellSize.height};
}

void paintText(const PaintBuffer& page, const std::string& text, int left, int top,
               const FontDescription& font, Rgb color) {
  const FontHandle handle = makeFont(font, 96);
  const Selection selected(page.dc(), handle.get());
  SetBkMode(page.dc(), TRANSPARENT);
  SetTextColor(page.dc(), colorRef(color));
  const std::u16string wide = utf16(text);
  TextOutW(page.dc(), left, top, wideText(wide), static_cast<int>(wide.size()));
}

void paintPage(const PaintBuffer& page) {
  paintGround(page);
  paintTable(page);
  paintResolutions(page);
  Canvas canvas = page.canvas();
  maskCorners(canvas, pageSize, 8, fromProperty(maskColor));
}

}  // namespace zelvreg::gallery
