// Finding a file, as the runtime's Dir does, and creating folders.
#ifndef ZELVREG_RUNTIME_DIRECTORY_H
#define ZELVREG_RUNTIME_DIRECTORY_H

#include <string>

#include "runtime/Shares.h"

namespace zelvreg {

// The name, without its folder, of the first plain file that a path or a pattern with "*" and "?"
// matches. Hidden and system files do not count. Empty if nothing matches, for the empty text and
// for a folder, and also if the system refuses the path or `shares` forbids it: there are no
// errors.
std::string Dir(const std::string& pattern, Shares shares = Shares::Refused);

// Creates a folder, with all missing folders above it. Whether it exists then.
bool makeFolder(const std::string& path);

}  // namespace zelvreg

#endif
