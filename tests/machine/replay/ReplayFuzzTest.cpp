// Logs with any bytes changed: each is taken over to a hive whose bins follow each other, or
// refused, and neither takes more memory than hive and logs are large.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "machine/replay/BinWalk.h"
#include "machine/replay/Marvin32.h"
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
        makeTrue(file);
      }
    }
  }

 private:
  void change(std::string& file) {
    constexpr std::array<std::uint32_t, 14> numbers{
        0,      1,      8,          0x200,      0x1000,     0x2000,     0x7FFFF000,
        0xFFFF, 0x1001, 0x80000000, 0xFFFFF000, 0xFFFFFFFF, 0x7FFFFFFF, 0x40000000};
    if (random.oneIn(10)) {
      file.resize(random.below(file.size() + 1));
      return;
    }
    const std::size_t place = somewhere(file);
    if (random.oneIn(3)) {
      file[place] = static_cast<char>(random.below(256));
    } else if (place / 4 * 4 + 4 <= file.size()) {
      bench::putWord(file, place / 4 * 4, numbers[random.below(numbers.size())]);
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

  // Puts the checksum of the base block right, and the hashes of all entries that are as long as
  // they say.
  static void makeTrue(std::string& file) {
    if (file.size() < 512) {
      return;
    }
    bench::signBaseBlock(file);
    for (std::size_t at = file.find("HvLE"); at != std::string::npos;
         at = file.find("HvLE", at + 4)) {
      const std::size_t size = at + 8 > file.size() ? 0 : bench::wordAt(file, at + 4);
      if (size < 64 || size > file.size() - at) {
        continue;
      }
      const auto bytes = std::as_bytes(std::span(file)).subspan(at, size);
      const std::uint64_t content = machine::marvin32(bytes.subspan(40));
      std::memcpy(file.data() + at + 24, &content, sizeof content);
      const std::uint64_t head = machine::marvin32(bytes.first(32));
      std::memcpy(file.data() + at + 32, &head, sizeof head);
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
