#include "controls/FormShape.h"

namespace zelvreg::controls {

FormShape readFormShape(const PropertyBag& bag) {
  FormShape shape;
  shape.MaskColor =
      static_cast<std::uint32_t>(bag.read("MaskColor", static_cast<std::int32_t>(shape.MaskColor)));
  shape.Transparent = bag.read("Transparent", shape.Transparent);
  shape.AutoDrag = bag.read("AutoDrag", shape.AutoDrag);
  return shape;
}

void writeFormShape(const FormShape& shape, PropertyBag& bag) {
  bag.write("MaskColor", static_cast<std::int32_t>(shape.MaskColor));
  bag.write("Transparent", shape.Transparent);
  bag.write("AutoDrag", shape.AutoDrag);
}

std::string secondControlTitle() { return "Multiple TransForm Controls"; }

std::string secondControlText() {
  return "Only one TransForm control is allowed or \r\n"
         "needed on a single form.\r\n"
         "All TransForm functionality will be disabled \r\n"
         "for this form.";
}

}  // namespace zelvreg::controls
