#include "console/ArgumentText.h"

namespace zelvreg::console {

// Windows hands arguments over in its code page.
std::string narrowText(const std::string& argument) { return argument; }

}  // namespace zelvreg::console
