// What it costs to scan a disk in an image file instead of a mounted one.
#ifndef ZELVREG_BENCH_IMAGE_BENCH_H
#define ZELVREG_BENCH_IMAGE_BENCH_H

#include <cstddef>
#include <filesystem>
#include <optional>

namespace zelvreg::bench {

// Puts the content of a folder, a disk, on a volume of NTFS in an image. The seconds by the clock
// that a scan of the image takes more than one of the same volume mounted, each a whole run of
// zelvreg; a median of so many pairs. None where no image can be mounted. Throws
// std::runtime_error.
std::optional<double> measureImage(const std::filesystem::path& disk, std::size_t pairs);

}  // namespace zelvreg::bench

#endif
