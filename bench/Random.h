// Random numbers that are the same everywhere.
#ifndef ZELVREG_BENCH_RANDOM_H
#define ZELVREG_BENCH_RANDOM_H

#include <cstddef>
#include <cstdint>
#include <random>

namespace zelvreg::bench {

// The engine's numbers are the same everywhere; the library's distributions are not, so ranges are
// cut out here.
class Random {
 public:
  explicit Random(std::uint64_t seed) : engine(seed) {}

  std::uint64_t bits() { return engine(); }
  // 0 to limit - 1.
  std::size_t below(std::size_t limit) { return static_cast<std::size_t>(engine() % limit); }
  bool oneIn(std::size_t count) { return below(count) == 0; }

 private:
  std::mt19937_64 engine;
};

}  // namespace zelvreg::bench

#endif
