#include "runtime/HiveLogs.h"

namespace zelvreg {

bool isBehindItsLogs(const std::string& /*key*/) { return false; }

}  // namespace zelvreg
