// Where the system's own programs lie.
#ifndef ZELVREG_RUNTIME_WINDOWS_FOLDER_H
#define ZELVREG_RUNTIME_WINDOWS_FOLDER_H

#include <string>

namespace zelvreg {

// Without a backslash at its end. On Windows it is asked of the system: a user may give variables
// of the environment another text, and a program that runs as administrator must not start what
// they lead to.
std::string windowsFolder();

}  // namespace zelvreg

#endif
