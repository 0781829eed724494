#include "console/Arguments.h"

namespace zelvreg::console {

// File names may be any bytes.
std::vector<std::string> typedArguments(int count, const char* const* arguments) {
  return {arguments, arguments + count};
}

}  // namespace zelvreg::console
