// The fourteen styles of a button: one family, whose members are the rows of a table.
#ifndef ZELVREG_CONTROLS_BUTTON_STYLES_H
#define ZELVREG_CONTROLS_BUTTON_STYLES_H

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zelvreg::controls {

inline constexpr std::int32_t styleCount = 14;
// The style whose buttons have no ground of their own; a form at design time must know it.
inline constexpr std::int32_t transparentStyle = 5;
// The style whose outline changes under the mouse.
inline constexpr std::int32_t changingStyle = 11;

// The corners of a button that ends in half circles, whatever its height.
inline constexpr double roundEnds = 1000;

enum class Fill : std::uint8_t { None, Plain, Gradient, Glass };

// The faces that a window's palette has.
enum class Face : std::uint8_t { White, Gray, Tinted };
inline constexpr std::size_t faceCount = 3;

enum class Edge : std::uint8_t {
  None,
  Line,
  Bevel,      // light above and left, dark below and right
  Groove,     // a line pressed into the ground
  Underline,  // below only
  Bar,        // a bar at the left, once it is checked or under the mouse
  Ledge,      // the side of a key seen from above
};

// Lengths are in pixels at 96 dots to the inch; shares go from 0 to 1.
struct ButtonStyle {
  std::string_view name;
  Fill fill;
  Edge edge;
  double radius;
  double radiusHovered;
  double line;          // the width of the edge
  Face face;            // used for the default BackColor
  double hoveredShare;  // of the accent color, in the face under the mouse
  double pressedShare;  // the same while pressed
  double defaultShare;  // the same in the face of the default button
  bool hasAccentEdge;   // an edge in the accent color
  bool isLeftAligned;   // caption and picture begin at the left
  double focusInset;    // how far inside the focus is shown
};

// `type` is a ButtonType; one that does not exist has the default style, 2.
const ButtonStyle& styleOf(std::int32_t type);

}  // namespace zelvreg::controls

#endif
