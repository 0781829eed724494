// What somebody meant who has mistyped a name.
#ifndef ZELVREG_CONSOLE_NEAREST_NAME_H
#define ZELVREG_CONSOLE_NEAREST_NAME_H

#include <string>
#include <string_view>
#include <vector>

namespace zelvreg::console {

// The name that differs least from what was typed, the first of several; empty if none is near. A
// letter that is missing, too many, or another one counts as one difference, and so do two
// neighbors in the wrong order. A third of the letters may differ.
std::string nearestName(std::string_view typed, const std::vector<std::string>& names);

}  // namespace zelvreg::console

#endif
