// Folders: the runtime's look-up, and making them.
#ifndef ZELVREG_RUNTIME_DIRECTORY_H
#define ZELVREG_RUNTIME_DIRECTORY_H

#include <string>

#include "runtime/Shares.h"

namespace zelvreg {

// The name, without its folder, of the first plain file that a path or a pattern with "*" and "?"
// matches. Empty when there is none, for the empty text, for a folder, and for a hidden or system
// file. A path that the system refuses, or that may not be followed, counts as none: no error comes
// out.
std::string Dir(const std::string& pattern, Shares shares = Shares::Refused);

// Makes a folder with all above it that are missing; whether it is there then.
bool makeFolder(const std::string& path);

}  // namespace zelvreg

#endif
