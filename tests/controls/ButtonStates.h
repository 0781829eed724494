// The states that a button can be in, each of which must look different.
#ifndef ZELVREG_TESTS_CONTROLS_BUTTON_STATES_H
#define ZELVREG_TESTS_CONTROLS_BUTTON_STATES_H

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

}  // namespace zelvreg::controls

#endif
