#include "runtime/ShortNames.h"

namespace zelvreg {

std::string withLongNames(const std::string& path) { return path; }

}  // namespace zelvreg
