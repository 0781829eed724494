// Whether the drive of a path is there to be looked at.
#ifndef ZELVREG_RUNTIME_DRIVE_AT_HAND_H
#define ZELVREG_RUNTIME_DRIVE_AT_HAND_H

#include <string>

namespace zelvreg {

// False only for an offline disk, and there only for a path on a drive that was not given. A
// running computer knows all its drives, so the answer is always true there. Never fails.
bool isDriveAtHand(const std::string& path);

}  // namespace zelvreg

#endif
