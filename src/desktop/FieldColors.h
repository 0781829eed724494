// The colors of a field in which the user types or chooses.
#ifndef ZELVREG_DESKTOP_FIELD_COLORS_H
#define ZELVREG_DESKTOP_FIELD_COLORS_H

#include "desktop/Colors.h"

namespace zelvreg::desktop {

struct FieldState {
  bool isEnabled = true;
  bool isFocused = false;
  bool isHovered = false;
};

// Like the box of a check box, it has the accent where a press would do something.
constexpr Tone edgeOf(const FieldState& field) {
  return field.isEnabled && (field.isFocused || field.isHovered) ? Tone::Mark : Tone::Border;
}

// Of the arrow that opens its list.
constexpr Tone arrowOf(const FieldState& field) {
  return !field.isEnabled ? Tone::Disabled : field.isHovered ? Tone::Mark : Tone::Secondary;
}

}  // namespace zelvreg::desktop

#endif
