// Logs with any bytes changed: each is taken over to a hive whose bins follow each other, or
// refused, and neither takes more memory than hive and logs are large.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <memory>

#include "fuzz/LogFile.h"
#include "fuzz/TellingNumbers.h"
#include "machine/replay/BinWalk.h"
#include "machine/replay/OwnBytes.h"
#include "machine/replay/Replay.h"
#include "machine/replay/StoppedHive.h"

namespace zelvreg::fixture {
namespace {

using machine::HiveState;

class Fuzzer {
 public:
  explicit Fuzzer(std::uint64_t seed) : random(seed) {}

  void damage(StoppedHive& hive) {
    for (std::size_t changes = 1 + random.below(3); changes > 0; --changes) {
      std::string& file = random.oneIn(4) ? hive.file : hive.logs[random.below(hive.logs.size())];
      if (file.empty()) {
        continue;
      }
      change(file);
      if (!random.oneIn(4)) {
        fuzz::signLog(file);
      }
    }
  }

 private:
  void change(std::string& file) {
    if (random.oneIn(10)) {
      file.resize(random.below(file.size() + 1));
      return;
    }
    const std::size_t place = somewhere(file);
    if (random.oneIn(3)) {
      file[place] = static_cast<char>(random.below(256));
    } else if (place / 4 * 4 + 4 <= file.size()) {
      bench::putWord(file, place / 4 * 4,
                     fuzz::tellingNumbers[random.below(fuzz::tellingNumbers.size())]);
    }
  }

  // Mostly where numbers stand that lead somewhere.
  std::size_t somewhere(const std::string& file) {
    const std::size_t any = random.below(file.size());
    const std::size_t entry = file.find("HvLE", any);
    switch (random.below(4)) {
      case 0:
        return any;
      case 1:
        return random.below(std::min<std::size_t>(file.size(), 512));
      default:
        return entry == std::string::npos || entry + 64 > file.size() ? any
                                                                      : entry + random.below(64);
    }
  }

  bench::Random random;
};

// What is taken of the memory that an image may take.
std::size_t memoryOf(const machine::MemoryFile& image) {
  struct stat status {};
  EXPECT_EQ(stat(image.path().c_str(), &status), 0);
  return static_cast<std::size_t>(status.st_blocks) * 512;
}

TEST(ReplayFuzz, AnyBytesLeadToAHiveWithWholeBinsOrToNone) {
  const bool isLong = std::getenv("ZELVREG_RANDOM_MACHINES") != nullptr;
  const int hives = isLong ? 20'000 : 800;
  Fuzzer fuzzer(1);
  HiveLife life(2);
  int replayed = 0;
  int refused = 0;
  for (int number = 0; number < hives && !testing::Test::HasFailure(); ++number) {
    SCOPED_TRACE(number);
    StoppedHive hive = number % 3 == 0 ? life.stoppedBefore() : life.stopped();
    fuzzer.damage(hive);
    std::size_t most = hive.file.size() + 4 * 4096;
    for (const std::string& log : hive.logs) {
      most += log.size();
    }
    const machine::Replay done = replay(hive.file, hive.logs);
    if (done.outcome.state == HiveState::Unreplayable) {
      EXPECT_FALSE(done.outcome.why.empty());
      EXPECT_FALSE(done.image);
      ++refused;
      continue;
    }
    ASSERT_TRUE(done.image);
    EXPECT_FALSE(machine::needsLogs(done.image->bytes()));
    EXPECT_EQ(machine::firstBadBin(done.image->bytes()), std::nullopt);
    EXPECT_LE(done.image->bytes().size(), std::size_t{2} << 30);
    EXPECT_LE(memoryOf(*done.image), most);
    ++replayed;
  }
  // All of it happens.
  EXPECT_GT(replayed, hives / 20);
  EXPECT_GT(refused, hives / 20);
}

}  // namespace
}  // namespace zelvreg::fixture
