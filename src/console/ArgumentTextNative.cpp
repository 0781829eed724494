#include "console/ArgumentText.h"

namespace zelvreg::console {

std::string narrowText(const std::string& argument) { return argument; }

}  // namespace zelvreg::console
