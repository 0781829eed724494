// Paints a button from its state.
#ifndef ZELVREG_CONTROLS_BUTTON_PAINTER_H
#define ZELVREG_CONTROLS_BUTTON_PAINTER_H

#include "controls/ButtonLook.h"
#include "controls/PaintBuffer.h"

namespace zelvreg::controls {

// How a button is painted in its window, apart from its properties and its state.
struct ButtonSetting {
  HFONT font = nullptr;
  int dpi = 96;
  Palette palette;
  // Until the user presses Alt, access keys are not underlined.
  bool hidesKeys = false;
};

// Over the ground that the buffer already holds. It fills the buffer.
void paintButton(const PaintBuffer& buffer, const ButtonProperties& told, const ButtonState& state,
                 const ButtonSetting& setting);

// The system's colors as they are now.
SystemColors systemColors();

}  // namespace zelvreg::controls

#endif
