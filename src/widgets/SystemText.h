// Texts of the system, such as names of keys and paths, among those of the program's language.
#ifndef ZELVREG_WIDGETS_SYSTEM_TEXT_H
#define ZELVREG_WIDGETS_SYSTEM_TEXT_H

#include <initializer_list>

#include "widgets/Control.h"

namespace zelvreg {

// The bytes of such a text are in the system's own code page, whatever language the form speaks.
// Holds until the form is given the font of a language again.
inline void showSystemText(std::initializer_list<Control*> controls) {
  for (Control* control : controls) {
    Font font = control->font;
    font.charset = 0;
    if (font != control->font.get()) {
      control->font = font;
    }
  }
}

}  // namespace zelvreg

#endif
