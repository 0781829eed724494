#include "form/Version.h"

namespace zelvreg {

const char* programVersion() { return ZELVREG_VERSION; }

}  // namespace zelvreg
