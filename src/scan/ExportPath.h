// Where a repair keeps what it is about to take.
#ifndef ZELVREG_SCAN_EXPORT_PATH_H
#define ZELVREG_SCAN_EXPORT_PATH_H

#include <string>

namespace zelvreg {

struct Form42;

// The safety export with this name, which has neither folder nor ".reg". It must be plain to be
// opened (undo/UndoStores.h).
std::string exportPath(const Form42& form, const std::string& stem);

}  // namespace zelvreg

#endif
