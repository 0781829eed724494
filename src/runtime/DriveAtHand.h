// Whether what lies on a path's drive can be known at all.
#ifndef ZELVREG_RUNTIME_DRIVE_AT_HAND_H
#define ZELVREG_RUNTIME_DRIVE_AT_HAND_H

#include <string>

namespace zelvreg {

// False only for a drive of a computer that is not running when that drive was not given. A running
// computer knows all its drives, so there the answer is always true.
bool isDriveAtHand(const std::string& path);

}  // namespace zelvreg

#endif
