// What is set for a shaped window at design time, and the message about a second such control.
#ifndef ZELVREG_CONTROLS_FORM_SHAPE_H
#define ZELVREG_CONTROLS_FORM_SHAPE_H

#include <cstdint>
#include <string>

#include "controls/PropertyBag.h"

namespace zelvreg::controls {

// Stored under the names of its members.
struct FormShape {
  std::uint32_t MaskColor = 0xFF00FF;  // where the form shows it, the window has a hole
  bool Transparent = true;             // whether MaskColor is cut out
  bool AutoDrag = true;                // whether a press on the form drags the window

  bool operator==(const FormShape&) const = default;
};

FormShape readFormShape(const PropertyBag& bag);
void writeFormShape(const FormShape& shape, PropertyBag& bag);

// The title and the text, with its line breaks, of the message that a form with two such controls
// shows.
std::string secondControlTitle();
std::string secondControlText();

}  // namespace zelvreg::controls

#endif
