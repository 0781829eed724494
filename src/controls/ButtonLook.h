// What is to be drawn for a button in one of its states, as data.
#ifndef ZELVREG_CONTROLS_BUTTON_LOOK_H
#define ZELVREG_CONTROLS_BUTTON_LOOK_H

#include <array>
#include <vector>

#include "controls/ButtonProperties.h"
#include "controls/ButtonStyles.h"
#include "controls/Canvas.h"

namespace zelvreg::controls {

struct ButtonState {
  bool isHovered = false;
  bool isPressed = false;
  bool isFocused = false;
  bool isDefault = false;  // the one that the user would press next

  bool operator==(const ButtonState&) const = default;
};

// The system's colors for ColorScheme 2; the first values are those of a fresh Windows.
struct SystemColors {
  Rgb face = rgb(0xF0F0F0);
  Rgb text = rgb(0x000000);
  Rgb disabledText = rgb(0x6D6D6D);
  Rgb highlight = rgb(0x0078D7);
  Rgb highlightText = rgb(0xFFFFFF);
};

// The colors that all buttons of a window share.
struct Palette {
  Rgb accent = rgb(0x3D649A);
  Rgb ground = rgb(0xF6F8FB);  // of the window, seen through a button without a face
  Rgb line = rgb(0xDDE3EA);
  Rgb border = rgb(0xC6D0DC);
  Rgb text = rgb(0x1F2937);
  Rgb disabledText = rgb(0x667080);
  std::array<Rgb, faceCount> faces{rgb(0xFFFFFF), rgb(0xE9EDF2), rgb(0xE3EBF5)};
  SystemColors system;
};

struct ButtonLook {
  std::vector<Shape> shapes;  // in drawing order
  Rgb face;                   // what the text is drawn on
  Rgb text;
  int shift = 0;  // how far the content moves down, in pixels
  bool isLeftAligned = false;

  bool operator==(const ButtonLook&) const = default;
};

// The look of a button; its size is in pixels. Enabled, Value and the colors are properties.
ButtonLook lookOf(const ButtonProperties& properties, const ButtonState& state, Size size, int dpi,
                  const Palette& palette);

// The radius of the outline's corners in pixels.
double outlineRadius(const ButtonProperties& properties, bool isHovered, int dpi);

}  // namespace zelvreg::controls

#endif
