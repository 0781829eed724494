// Whether a hive file is whole. Reading passes over damage; writing must not begin on it, since
// what was passed over would be lost, and what two keys share would go with the first of them.
#ifndef ZELVREG_MACHINE_HIVE_HIVE_CHECK_H
#define ZELVREG_MACHINE_HIVE_HIVE_CHECK_H

#include <optional>
#include <string>

namespace zelvreg::machine {

class HiveFile;

// Walks all keys and values: each part must lie within the file, be in use, and belong to one owner
// alone. Throws MachineError that says only what is wrong, with the key.
void checkHive(std::string content);

// The same for a hive that is open, with its logs where they were taken over: in one line that
// names it and says what to do; none if it is whole.
std::optional<std::string> whyUnsound(const HiveFile& hive);

}  // namespace zelvreg::machine

#endif
