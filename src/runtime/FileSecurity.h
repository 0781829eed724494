// Owner and access list of a file or a folder.
#ifndef ZELVREG_RUNTIME_FILE_SECURITY_H
#define ZELVREG_RUNTIME_FILE_SECURITY_H

#include <windows.h>

#include <string>
#include <vector>

namespace zelvreg {

// The parts that `what` names, as one descriptor in its form without pointers; an empty one, with
// the system's last error set, if they cannot be read.
std::vector<BYTE> fileSecurity(const std::string& path, SECURITY_INFORMATION what);

// Sets the parts of a descriptor that `what` names; whether the system did it.
bool setFileSecurity(const std::string& path, SECURITY_INFORMATION what,
                     PSECURITY_DESCRIPTOR descriptor);

}  // namespace zelvreg

#endif
