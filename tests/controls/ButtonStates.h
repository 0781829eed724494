// The states that a button can be in, each of which must look different.
#ifndef ZELVREG_TESTS_CONTROLS_BUTTON_STATES_H
#define ZELVREG_TESTS_CONTROLS_BUTTON_STATES_H

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "controls/ButtonLook.h"

namespace zelvreg::controls {

struct NamedState {
  std::string name;
  ButtonState state;
  bool isEnabled = true;
  bool isChecked = false;
};

inline const std::vector<NamedState> states = {
    {"normal", {}},
    {"hovered", {.isHovered = true}},
    {"pressed", {.isHovered = true, .isPressed = true}},
    {"focused", {.isFocused = true}},
    {"disabled", {}, false},
    {"default", {.isDefault = true}},
    {"checked", {}, true, true},
    {"checked and disabled", {}, false, true},
};

inline ButtonProperties propertiesOf(std::int32_t style, const NamedState& named) {
  ButtonProperties properties;
  properties.ButtonType = style;
  properties.Enabled = named.isEnabled;
  properties.CheckBoxBehaviour = named.isChecked;
  properties.Value = named.isChecked;
  return properties;
}

// The text of each style in each state, on its face.
inline void expectReadableInAllStates(const Palette& palette) {
  for (std::int32_t style = 1; style <= styleCount; ++style) {
    for (const NamedState& named : states) {
      const ButtonLook look =
          lookOf(propertiesOf(style, named), named.state, {120, 32}, 96, palette);
      EXPECT_GE(contrast(look.text, look.face), readableContrast)
          << styleOf(style).name << " " << named.name;
    }
  }
}

}  // namespace zelvreg::controls

#endif
