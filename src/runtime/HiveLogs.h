// Whether Windows may have written more of a key than can be read here.
#ifndef ZELVREG_RUNTIME_HIVE_LOGS_H
#define ZELVREG_RUNTIME_HIVE_LOGS_H

#include <string>

namespace zelvreg {

// Whether a key, by its full path, comes from a hive file of an offline disk whose newest entries
// are only in its transaction logs. Always false on a running computer, which has taken them over.
// Reads the headers of the files each time.
bool isBehindItsLogs(const std::string& key);

}  // namespace zelvreg

#endif
