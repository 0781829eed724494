// The emulated computer has its environment from its settings alone.
#include "runtime/Environment.h"
#include "runtime/WindowsFolder.h"

namespace zelvreg {

std::string windowsFolder() { return environmentVariable("SystemRoot"); }

}  // namespace zelvreg
