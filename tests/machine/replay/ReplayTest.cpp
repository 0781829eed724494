// What Windows has written to its logs becomes part of the hive, and nothing else does.
#include "machine/replay/Replay.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>

#include "machine/replay/OwnBytes.h"
#include "machine/replay/StoppedHive.h"

namespace zelvreg::fixture {
namespace {

using bench::LoggedEntry;
using bench::putWord;
using bench::wordAt;
using machine::HiveState;
using machine::Replay;

constexpr std::size_t page = 4096;

std::string imageOf(const Replay& done) {
  if (!done.image) {
    return "";
  }
  const auto bytes = done.image->bytes();
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

void expectWhole(const StoppedHive& hive) {
  EXPECT_TRUE(machine::needsLogs(OwnBytes(hive.file).span()));
  const Replay done = replay(hive.file, hive.logs);
  ASSERT_EQ(done.outcome.state, HiveState::Replayed) << done.outcome.why;
  EXPECT_EQ(done.outcome.entries, hive.entries);
  EXPECT_EQ(done.outcome.pages, hive.pages);
  EXPECT_EQ(done.outcome.why, "");
  EXPECT_TRUE(imageOf(done) == hive.whole);
}

int rounds() {
  constexpr int usual = 400;
  constexpr int many = 6000;
  return std::getenv("ZELVREG_RANDOM_MACHINES") == nullptr ? usual : many;
}

TEST(ReplayTest, LogsOfAnyLifeLeadToTheHiveThatWindowsHad) {
  HiveLife life(1);
  for (int round = 0; round < rounds() && !testing::Test::HasFailure(); ++round) {
    SCOPED_TRACE(round);
    expectWhole(life.stopped());
  }
}

TEST(ReplayTest, LogsWithABitmapDoSoToo) {
  HiveLife life(2);
  for (int round = 0; round < rounds() && !testing::Test::HasFailure(); ++round) {
    SCOPED_TRACE(round);
    expectWhole(life.stoppedBefore());
  }
}

// A hive that was stopped at the number 11, and one with other content in its first page. A log of
// this one has a single entry.
class ReplayRules : public ::testing::Test {
 protected:
  ReplayRules() : hive(HiveLife(3).clean(10)), next(hive), stopped(hive) {
    next.replace(page + 64, 5, "first");
    bench::setSequences(stopped, 11, 10);
  }

  [[nodiscard]] LoggedEntry entry(std::uint32_t sequence, const std::string& text) const {
    std::string content = next.substr(page, page);
    content.replace(64, text.size(), text);
    return {.sequence = sequence,
            .flags = wordAt(hive, 144),
            .binsSize = wordAt(hive, 40),
            .pages = {{0, content}}};
  }
  [[nodiscard]] std::string log(std::uint32_t sequence, const std::string& text) const {
    return bench::newLogHead(hive, sequence) + bench::entryBytes(entry(sequence, text));
  }

  // The text in the first page; why there is none otherwise.
  static std::string textOf(const Replay& done) {
    return done.image ? imageOf(done).substr(page + 64, 5) : done.outcome.why;
  }
  [[nodiscard]] std::string textWith(const std::vector<std::string>& logs) const {
    return textOf(replay(stopped, logs));
  }

  std::string hive;
  std::string next;
  std::string stopped;
};

TEST_F(ReplayRules, AHiveWithEqualNumbersAndATrueChecksumNeedsNoLogs) {
  EXPECT_FALSE(machine::needsLogs(OwnBytes(hive).span()));
  EXPECT_TRUE(machine::needsLogs(OwnBytes(stopped).span()));
  hive[100] = static_cast<char>(hive[100] ^ 1);
  EXPECT_TRUE(machine::needsLogs(OwnBytes(hive).span()));
}

TEST_F(ReplayRules, WithoutAWholeLogItSaysSo) {
  EXPECT_EQ(textWith({}), "there are none");
  EXPECT_EQ(textWith({"", ""}), "none of them is whole");
  std::string torn = log(10, "first");
  putWord(torn, 8, 9);
  bench::signBaseBlock(torn);
  EXPECT_EQ(textWith({torn}), "none of them is whole");
  std::string unsigned_ = log(10, "first");
  unsigned_[100] = static_cast<char>(unsigned_[100] ^ 1);
  EXPECT_EQ(textWith({unsigned_}), "none of them is whole");
  std::string ofOtherKind = log(10, "first");
  putWord(ofOtherKind, 28, 5);
  bench::signBaseBlock(ofOtherKind);
  EXPECT_EQ(textWith({ofOtherKind}), "none of them is whole");
}

TEST_F(ReplayRules, ALogThatBeginsBeforeTheHiveIsNotTakenOver) {
  EXPECT_EQ(textWith({log(9, "older")}), "they hold nothing newer");
  EXPECT_EQ(textWith({log(9, "older"), log(10, "first")}), "first");
  EXPECT_EQ(textWith({log(10 + 900, "later")}), "later");
}

TEST_F(ReplayRules, TheEarlierLogComesFirstWhateverItsName) {
  EXPECT_EQ(textWith({log(10, "first"), log(11, "after")}), "after");
  EXPECT_EQ(textWith({log(11, "after"), log(10, "first")}), "after");
}

TEST_F(ReplayRules, AGapBetweenTwoLogsEndsTheReplay) {
  EXPECT_EQ(textWith({log(10, "first"), log(12, "after")}), "first");
}

TEST_F(ReplayRules, ALogWhoseFirstEntryIsCutIsPassedOver) {
  EXPECT_EQ(textWith({log(10, "first").substr(0, page), log(12, "after")}), "after");
  EXPECT_EQ(textWith({log(10, "first").substr(0, page)}), "no entry in them is whole");
  std::string misnumbered = bench::newLogHead(hive, 10) + bench::entryBytes(entry(11, "later"));
  EXPECT_EQ(textWith({misnumbered}), "no entry in them is whole");
}

TEST_F(ReplayRules, WithoutItsBaseBlockAHiveTakesItsLastLogAlone) {
  stopped[100] = static_cast<char>(stopped[100] ^ 1);
  const Replay done = replay(stopped, {log(10, "first"), log(400, "after")});
  EXPECT_EQ(textOf(done), "after");
  EXPECT_EQ(done.outcome.entries, 1U);
  EXPECT_EQ(imageOf(done).substr(0, 4), "regf");
  EXPECT_EQ(wordAt(imageOf(done), 28), 0U);
  EXPECT_EQ(textWith({log(0xFFFFFFF0U, "first"), log(2, "after")}), "after");
}

// Only an entry says how long the hive is.
TEST_F(ReplayRules, TheBaseBlockOfALogMakesTheHiveNoLonger) {
  stopped[100] = static_cast<char>(stopped[100] ^ 1);
  for (const std::uint32_t size : {wordAt(hive, 40) + 0x5000, 0xFFFFF000U, 0U}) {
    std::string larger = hive;
    putWord(larger, 40, size);
    const Replay done =
        replay(stopped, {bench::newLogHead(larger, 10) + bench::entryBytes(entry(10, "first"))});
    EXPECT_EQ(textOf(done), "first");
    EXPECT_EQ(imageOf(done).size(), stopped.size());
    EXPECT_EQ(wordAt(imageOf(done), 40), wordAt(hive, 40));
  }
}

TEST_F(ReplayRules, NewLogsCountAloneWhereThereAreOldOnes) {
  const std::string old = bench::bitmapLogBytes(stopped, {{0, next.substr(page, 512)}}, {11, 1, 1});
  EXPECT_EQ(textWith({old}), "first");
  EXPECT_EQ(textWith({old, log(10, "after")}), "after");
  EXPECT_EQ(textWith({old, log(9, "older")}), "they hold nothing newer");
}

TEST_F(ReplayRules, AnOldLogMustBeAsOldAsTheHive) {
  std::string hiveOfLog = stopped;
  putWord(hiveOfLog, 12, wordAt(stopped, 12) + 1);
  std::string other = next.substr(page, 512);
  other.replace(64, 5, "other");
  const std::string foreign = bench::bitmapLogBytes(hiveOfLog, {{0, other}}, {11, 1, 1});
  const std::string own = bench::bitmapLogBytes(stopped, {{0, next.substr(page, 512)}}, {11, 1, 1});
  EXPECT_EQ(textWith({foreign}), "none of them is whole and as old as the hive");
  EXPECT_EQ(textWith({foreign, own}), "first");
  // Without its base block it takes the newest.
  stopped[100] = static_cast<char>(stopped[100] ^ 1);
  stopped.replace(page + 20, 8, 8, '\0');
  EXPECT_EQ(textWith({own, foreign}), "other");
  stopped.replace(page + 20, 8, 8, '\xFF');
  EXPECT_EQ(textWith({own, foreign}), "none of them is whole and as old as the hive");
}

TEST_F(ReplayRules, AnOldLogThatIsShorterThanItsPagesIsNotTakenOver) {
  const std::string own = bench::bitmapLogBytes(stopped, {{0, next.substr(page, 512)}}, {11, 1, 1});
  for (const std::size_t size : {own.size() - 1, std::size_t{600}, std::size_t{512}}) {
    EXPECT_EQ(textWith({own.substr(0, size)}), "none of them is whole and as old as the hive");
  }
}

TEST_F(ReplayRules, AHiveMayShrinkAndItsFileStaysAsLong) {
  std::string larger = stopped + std::string(page, 'x');
  const Replay done = replay(larger, {log(10, "first")});
  EXPECT_EQ(textOf(done), "first");
  EXPECT_EQ(imageOf(done).size(), larger.size());
  EXPECT_EQ(wordAt(imageOf(done), 40), wordAt(hive, 40));
}

TEST_F(ReplayRules, ABinThatIsBadAfterwardsMakesItUnreplayable) {
  const std::function<void(LoggedEntry&)> changes[] = {
      [](LoggedEntry& bad) { bad.pages[0].bytes[0] = 'x'; },
      [](LoggedEntry& bad) { putWord(bad.pages[0].bytes, 4, page); },
      [](LoggedEntry& bad) { putWord(bad.pages[0].bytes, 8, 0); },
      [](LoggedEntry& bad) { putWord(bad.pages[0].bytes, 8, page + 8); },
      [](LoggedEntry& bad) { putWord(bad.pages[0].bytes, 8, bad.binsSize + page); },
  };
  for (const auto& change : changes) {
    LoggedEntry bad = entry(10, "first");
    change(bad);
    EXPECT_EQ(textWith({bench::newLogHead(hive, 10) + bench::entryBytes(bad)}),
              "the hive would be damaged at 0x1000 with them");
  }
  LoggedEntry larger = entry(10, "first");
  larger.binsSize += page;
  EXPECT_NE(textWith({bench::newLogHead(hive, 10) + bench::entryBytes(larger)}).find("damaged at"),
            std::string::npos);
}

TEST_F(ReplayRules, NoResultIsLargerThan2GiB) {
  LoggedEntry larger = entry(10, "first");
  larger.binsSize = 0x80000000;
  EXPECT_EQ(textWith({bench::newLogHead(hive, 10) + bench::entryBytes(larger)}),
            "the hive would be larger than 2 GiB with them");
}

}  // namespace
}  // namespace zelvreg::fixture
