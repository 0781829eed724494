// The folder of Windows.
#ifndef ZELVREG_RUNTIME_WINDOWS_FOLDER_H
#define ZELVREG_RUNTIME_WINDOWS_FOLDER_H

#include <string>

namespace zelvreg {

// Its full path, without a backslash at its end; empty if the system does not tell. On Windows it
// comes from the system, not from the environment: a user can change variables, and a program that
// runs as administrator must not start what they lead to.
std::string windowsFolder();

}  // namespace zelvreg

#endif
