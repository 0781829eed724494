// How long each part of the last scan took, kept with the settings: that tells how far the next one
// is.
#ifndef ZELVREG_SHELL_SCAN_TIMES_H
#define ZELVREG_SHELL_SCAN_TIMES_H

#include <array>
#include <chrono>
#include <optional>

namespace zelvreg {

// By the row of the category; 0 is what follows the last of them. Nothing for a part that has never
// ended.
using ScanTimes = std::array<std::optional<std::chrono::milliseconds>, 17>;

// No times at all if what is stored is not what is kept there.
ScanTimes readScanTimes();
void keepScanTimes(const ScanTimes& times);

}  // namespace zelvreg

#endif
