// Who the process runs as.
#ifndef ZELVREG_RUNTIME_PROCESS_USER_H
#define ZELVREG_RUNTIME_PROCESS_USER_H

#include <windows.h>

#include <vector>

namespace zelvreg {

// The security identifier of that user; empty if it cannot be read.
std::vector<BYTE> processUser();

}  // namespace zelvreg

#endif
