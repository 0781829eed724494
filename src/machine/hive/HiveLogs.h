// Whether a hive file holds everything that Windows has written of it.
#ifndef ZELVREG_MACHINE_HIVE_HIVE_LOGS_H
#define ZELVREG_MACHINE_HIVE_HIVE_LOGS_H

#include <filesystem>
#include <optional>
#include <string>

namespace zelvreg::machine {

// Why this hive must not be written, in one line that names it and says what to do; none if it was
// shut down cleanly. It was not if its two sequence numbers differ, or if a transaction log beside
// it (its name followed by ".LOG", ".LOG1" or ".LOG2", in any case of letters) holds pages with a
// higher number: Windows would throw away what the log has, or what we wrote. Logs stay as they are
// after a clean shutdown, with pages of lower numbers, which mean nothing.
std::optional<std::string> whyUnclean(const std::filesystem::path& hive);

}  // namespace zelvreg::machine

#endif
