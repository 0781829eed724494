#include "OpeningBench.h"

#include <memory>
#include <vector>

#include "Measure.h"
#include "OpenMachine.h"

namespace zelvreg::bench {
namespace {

constexpr double megabyte = 1024 * 1024;

std::vector<double> openHere(const std::filesystem::path& folder) {
  const double before = memoryNow();
  std::unique_ptr<console::Computer> computer;
  const double seconds = secondsOf([&] { computer = openMachine(folder); });
  return {seconds, (memoryNow() - before) * megabyte};
}

}  // namespace

OpeningFigures measureOpening(const std::filesystem::path& folder, std::size_t runs) {
  std::vector<double> seconds;
  std::vector<double> bytes;
  for (std::size_t run = 0; run < runs; ++run) {
    const std::vector<double> numbers = runInChild([&] { return openHere(folder); });
    seconds.push_back(numbers.at(0));
    bytes.push_back(numbers.at(1));
  }
  return {median(seconds), median(bytes)};
}

}  // namespace zelvreg::bench
