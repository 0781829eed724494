// Owner and access list of a file or a folder.
#ifndef ZELVREG_RUNTIME_FILE_SECURITY_H
#define ZELVREG_RUNTIME_FILE_SECURITY_H

#include <windows.h>

#include <string>
#include <vector>

namespace zelvreg {

// The parts that `what` names, as a self-relative security descriptor. Empty if they cannot be
// read; GetLastError() says why.
std::vector<BYTE> fileSecurity(const std::string& path, SECURITY_INFORMATION what);

// Sets the parts of a descriptor that `what` names. The descriptor stays the caller's. False if the
// system refuses; GetLastError() says why.
bool setFileSecurity(const std::string& path, SECURITY_INFORMATION what,
                     PSECURITY_DESCRIPTOR descriptor);

}  // namespace zelvreg

#endif
