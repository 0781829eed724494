#include "console/ProcessStart.h"
#include "libraries/SystemLibrary.h"

namespace zelvreg::console {

void beginProcess() { loadFromSystemFolderOnly(); }

}  // namespace zelvreg::console
