#include "machine/replay/LogEntry.h"

#include <gtest/gtest.h>

#include <functional>

#include "LogMaker.h"
#include "machine/base/MachineError.h"
#include "machine/replay/Marvin32.h"

namespace zelvreg::machine {
namespace {

using bench::LoggedEntry;
using bench::putWord;

std::span<const std::byte> bytesOf(std::string_view text) { return std::as_bytes(std::span(text)); }

TEST(Marvin32, HasTheValuesThatAreKnown) {
  EXPECT_EQ(marvin32({}), 0xB39EFCA403966E08U);
  EXPECT_EQ(marvin32(bytesOf("abcd")), 0x20094FB11A6CD086U);
  EXPECT_EQ(marvin32(bytesOf("HvLEHvLE")), 0xB4FA8E15B9621001U);
  EXPECT_EQ(marvin32(bytesOf("a")), 0x21A013C726F292F4U);
  EXPECT_EQ(marvin32(bytesOf("ab")), 0x7911DA00317285F8U);
  EXPECT_EQ(marvin32(bytesOf("abcdefg")), 0x0C00597AC6BF45F2U);
  // Bytes that fill no number of four count in their order.
  EXPECT_NE(marvin32(bytesOf("abcde")), marvin32(bytesOf("abcd")));
  EXPECT_NE(marvin32(bytesOf("ab")), marvin32(bytesOf("ba")));
}

TEST(BaseBlock, AChecksumIsNeitherZeroNorAllOnes) {
  std::string block(512, '\0');
  EXPECT_EQ(baseBlockChecksum(bytesOf(block)), 1U);
  putWord(block, 100, 0xFFFFFFFF);
  EXPECT_EQ(baseBlockChecksum(bytesOf(block)), 0xFFFFFFFEU);
  putWord(block, 104, 0x00FF0000);
  EXPECT_EQ(baseBlockChecksum(bytesOf(block)), 0xFF00FFFFU);
}

TEST(BaseBlock, SequenceNumbersWrap) {
  EXPECT_TRUE(isBefore(1, 2));
  EXPECT_FALSE(isBefore(2, 2));
  EXPECT_FALSE(isBefore(2, 1));
  EXPECT_TRUE(isBefore(0xFFFFFFFF, 0));
  EXPECT_TRUE(isBefore(0xFFFFFFF0, 5));
  EXPECT_FALSE(isBefore(5, 0xFFFFFFF0));
}

// An entry of two pages, the first of two blocks.
LoggedEntry sample() {
  return {.sequence = 7,
          .flags = 1,
          .binsSize = 0x5000,
          .pages = {{0x1000, std::string(0x2000, 'a')}, {0x4000, std::string(0x1000, 'b')}}};
}

// The bytes of an entry with a change after which its hashes are true again.
std::string changed(const std::function<void(std::string&)>& change) {
  std::string bytes = bench::entryBytes(sample());
  change(bytes);
  const std::uint64_t content = marvin32(bytesOf(bytes).subspan(40));
  std::memcpy(bytes.data() + 24, &content, sizeof content);
  const std::uint64_t head = marvin32(bytesOf(bytes).first(32));
  std::memcpy(bytes.data() + 32, &head, sizeof head);
  return bytes;
}

bool isGood(const std::string& bytes) { return entryAt(bytesOf(bytes), 0).has_value(); }

bool isGoodWith(std::size_t offset, std::uint32_t number) {
  return isGood(changed([&](std::string& bytes) { putWord(bytes, offset, number); }));
}

TEST(LogEntry, GivesItsPagesWithTheirPlaces) {
  const std::string bytes = std::string(512, '\0') + bench::entryBytes(sample());
  const auto entry = entryAt(bytesOf(bytes), 512);
  ASSERT_TRUE(entry);
  EXPECT_EQ(entry->sequence, 7U);
  EXPECT_EQ(entry->flags, 1U);
  EXPECT_EQ(entry->binsSize, 0x5000U);
  EXPECT_EQ(entry->pageCount, 2U);
  EXPECT_EQ(entry->size, bytes.size() - 512);
  std::string pages;
  entry->forEachPage([&pages](std::uint64_t offset, LogBytes page) {
    pages += std::to_string(offset) + "+" + std::to_string(page.size()) +
             std::string(1, std::to_integer<char>(page.back())) + " ";
  });
  EXPECT_EQ(pages, "4096+8192a 16384+4096b ");
}

// A log lies in memory as its file is, and another program may write that.
TEST(LogEntry, GivesNoPageBesideItsOwnWhateverIsWrittenMeanwhile) {
  constexpr std::size_t firstPlace = 40;
  for (const auto& [at, number] :
       std::initializer_list<std::pair<std::size_t, std::uint32_t>>{{firstPlace, 0x4000},
                                                                    {firstPlace, 0xFFFFF000},
                                                                    {firstPlace + 4, 0x3000},
                                                                    {firstPlace + 4, 0xFFFFF000},
                                                                    {firstPlace + 12, 0x1001}}) {
    std::string bytes = bench::entryBytes(sample());
    const auto entry = entryAt(bytesOf(bytes), 0);
    ASSERT_TRUE(entry);
    putWord(bytes, at, number);
    EXPECT_THROW(entry->forEachPage([&](std::uint64_t offset, LogBytes page) {
      EXPECT_LE(offset + page.size(), entry->binsSize);
    }),
                 MachineError)
        << at << " " << number;
  }
}

TEST(BitmapLog, GivesNoMorePagesThanItHadWhateverIsWrittenMeanwhile) {
  std::string hive(0x2000, '\0');
  hive.replace(0, 4, "regf");
  putWord(hive, 40, 0x1000);
  std::string bytes = bench::bitmapLogBytes(hive, {{0, std::string(512, 'a')}}, {11, 1, 1});
  const auto base = soundBaseBlock(bytesOf(bytes));
  ASSERT_TRUE(base);
  const auto log = bitmapLog(bytesOf(bytes), *base);
  ASSERT_TRUE(log);
  bytes[hiveFormat::baseBlockSize + 4] = '\x03';
  int pages = 0;
  EXPECT_THROW(log->forEachPage([&pages](std::uint64_t, LogBytes) { ++pages; }), MachineError);
  EXPECT_EQ(pages, 1);
}

TEST(LogEntry, IsGoodOnlyWithTrueHashes) {
  EXPECT_TRUE(isGood(changed([](std::string&) {})));
  const std::string whole = bench::entryBytes(sample());
  for (const std::size_t at :
       {std::size_t{8}, std::size_t{24}, std::size_t{31}, std::size_t{32}, std::size_t{39},
        std::size_t{40}, std::size_t{56}, whole.size() - 1}) {
    std::string bytes = whole;
    bytes[at] = static_cast<char>(bytes[at] ^ 1);
    EXPECT_FALSE(isGood(bytes)) << at;
  }
}

TEST(LogEntry, IsGoodOnlyWithASizeThatItHas) {
  const auto size = static_cast<std::uint32_t>(bench::entryBytes(sample()).size());
  EXPECT_FALSE(isGoodWith(0, 0));
  EXPECT_FALSE(isGoodWith(4, 0));
  EXPECT_FALSE(isGoodWith(4, size - 8));
  EXPECT_FALSE(isGoodWith(4, size + 512));
  EXPECT_FALSE(isGoodWith(4, 0xFFFFFE00));
  const std::string whole = bench::entryBytes(sample());
  EXPECT_FALSE(isGood(whole.substr(0, whole.size() - 1)));
  EXPECT_FALSE(isGood(whole.substr(0, 511)));
  EXPECT_FALSE(isGood(""));
  EXPECT_FALSE(entryAt(bytesOf(whole), whole.size() + 512));
}

TEST(LogEntry, IsGoodOnlyIfItsPagesAreInItAndInTheBins) {
  EXPECT_TRUE(isGoodWith(16, 0x6000));
  EXPECT_FALSE(isGoodWith(16, 0x4000));
  EXPECT_FALSE(isGoodWith(16, 0x5008));
  EXPECT_FALSE(isGoodWith(16, 0));
  EXPECT_FALSE(isGoodWith(20, 0));
  EXPECT_FALSE(isGoodWith(20, 3000));
  EXPECT_FALSE(isGoodWith(20, 0x20000002));
  EXPECT_FALSE(isGoodWith(40, 0xFFFFF000));
  EXPECT_FALSE(isGoodWith(44, 0x4000));
  EXPECT_FALSE(isGoodWith(44, 0xFFFFF000));
}

}  // namespace
}  // namespace zelvreg::machine
