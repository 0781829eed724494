// Files that the program keeps in its folder.
#ifndef ZELVREG_SCAN_OWN_PATHS_H
#define ZELVREG_SCAN_OWN_PATHS_H

#include <string>

namespace zelvreg {

struct Form42;

// The safety export with this name, which has neither folder nor ".reg". It must be plain to be
// opened (undo/UndoStores.h).
std::string exportPath(const Form42& form, const std::string& stem);

// What the user does not want to see.
std::string exclusionPath(const Form42& form);

}  // namespace zelvreg

#endif
