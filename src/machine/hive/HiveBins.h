// Where the bins of a hive begin. Every cell lies in one bin, behind its header.
#ifndef ZELVREG_MACHINE_HIVE_HIVE_BINS_H
#define ZELVREG_MACHINE_HIVE_HIVE_BINS_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "machine/hive/HiveBytes.h"

namespace zelvreg::machine {

class HiveBins {
 public:
  // The header of the file and all bins. They are somebody else's, and must outlive this object.
  explicit HiveBins(std::span<const std::byte> hive);

  // Whether a cell that lies in these bytes reaches over the header of a bin. Almost no cell can,
  // since bins begin where pages do. Once more pages have been looked at for this than whoever
  // reads an honest hive looks at, the answer is yes for each cell of several pages.
  [[nodiscard]] bool areCrossedBy(std::uint64_t place, std::size_t size) {
    using namespace hiveFormat;
    const std::uint64_t border = (place + pageSize - binHeader) / pageSize * pageSize;
    return border < place + size && isBinFrom(border, place + size);
  }

 private:
  [[nodiscard]] bool isBinFrom(std::uint64_t border, std::uint64_t end);
  [[nodiscard]] bool looksLikeBin(std::uint64_t page) const;
  [[nodiscard]] bool isBin(std::uint64_t page);
  void findBins();

  std::span<const std::byte> bytes;
  std::size_t looksLeft;
  // Whether a bin begins there, by page. Found out when something first looks like a bin that may
  // be data, since all headers together lie in as many pages as there are bins.
  std::optional<std::vector<bool>> begins;
};

}  // namespace zelvreg::machine

#endif
