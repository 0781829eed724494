// What is said of the transaction logs of a hive.
#ifndef ZELVREG_MACHINE_HIVE_HIVE_LOGS_H
#define ZELVREG_MACHINE_HIVE_HIVE_LOGS_H

#include <optional>
#include <string>

#include "machine/hive/HiveFile.h"

namespace zelvreg::machine {

// By which programs know a state: "clean", "replayed" and so on.
const char* codeOf(HiveState state);

// Whether Windows has written more of it than can be read here.
bool isBehindItsLogs(const HiveFile& hive);

// Why it may lack what Windows has written of it, in a few words; empty if it does not, and where
// that is the whole disk's matter.
std::string whyNotWhole(const HiveFile& hive);

// What became of its logs, in one line that names it; none if it was shut down cleanly, and where
// that is the whole disk's matter.
std::optional<std::string> logNotice(const HiveFile& hive);

// Why it must not be written, in one line that names it and says what to do; none as above.
std::optional<std::string> whyUnclean(const HiveFile& hive);

}  // namespace zelvreg::machine

#endif
