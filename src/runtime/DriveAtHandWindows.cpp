#include "runtime/DriveAtHand.h"

namespace zelvreg {

bool isDriveAtHand(const std::string& /*path*/) { return true; }

}  // namespace zelvreg
