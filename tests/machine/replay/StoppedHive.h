// A hive as Windows leaves it when it is stopped while it writes: some pages old, some new, the
// rest in the logs. Made by chance, with what the hive is once its logs are taken over.
#ifndef ZELVREG_TESTS_MACHINE_REPLAY_STOPPED_HIVE_H
#define ZELVREG_TESTS_MACHINE_REPLAY_STOPPED_HIVE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "LogMaker.h"
#include "Random.h"

namespace zelvreg::fixture {

struct StoppedHive {
  std::string file;
  std::vector<std::string> logs;
  std::string whole;
  std::size_t entries = 0;
  std::size_t pages = 0;
};

// One in the life of a hive; each call begins another life.
class HiveLife {
 public:
  explicit HiveLife(std::uint64_t seed) : random(seed) {}

  // With logs as they are since Windows 8.1: one or both in use, in any order, behind their last
  // entry anything; sequence numbers may wrap, and the base block may be damaged.
  StoppedHive stopped();
  // The same with a log of before.
  StoppedHive stoppedBefore();

  // Bins with content by chance, and a base block with these sequence numbers.
  std::string clean(std::uint32_t sequence);
  // The same with some other content, and perhaps one more bin.
  std::string changed(std::string hive);

 private:
  std::string randomBytes(std::size_t size);
  void appendBin(std::string& hive, std::size_t pages);
  std::string torn(const std::string& before, const std::string& after, std::size_t unit);
  void changeByte(std::string& bytes, std::size_t at);
  void damageBase(std::string& hive);
  std::string leftOver(const std::string& hive, std::uint32_t next);
  std::string addEntries(std::string log, std::uint32_t sequence, const std::string& inFile,
                         std::string& hive, StoppedHive& result);
  std::uint32_t sequenceNumber();

  bench::Random random;
};

// The bytes of a hive with these sequence numbers at the end of a replay.
std::string ended(std::string hive, std::uint32_t sequence);

}  // namespace zelvreg::fixture

#endif
