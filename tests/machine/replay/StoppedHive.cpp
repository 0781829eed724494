#include "machine/replay/StoppedHive.h"

#include <utility>

namespace zelvreg::fixture {

using bench::putWord;
using bench::wordAt;

namespace {

constexpr std::size_t page = 4096;
constexpr std::size_t binHeader = 32;

}  // namespace

std::string ended(std::string hive, std::uint32_t sequence) {
  putWord(hive, 28, 0);
  bench::setSequences(hive, sequence, sequence);
  return hive;
}

std::string HiveLife::randomBytes(std::size_t size) {
  std::string bytes;
  while (bytes.size() < size) {
    bytes += static_cast<char>(random.below(256));
  }
  return bytes;
}

void HiveLife::appendBin(std::string& hive, std::size_t pages) {
  const auto offset = static_cast<std::uint32_t>(hive.size() - page);
  std::string bin = randomBytes(binHeader) + std::string(pages * page - binHeader, '\0');
  for (std::size_t at = 0; at < pages; ++at) {
    bin.replace(at * page + binHeader, 100, randomBytes(100));
  }
  bin.replace(0, 4, "hbin");
  putWord(bin, 4, offset);
  putWord(bin, 8, static_cast<std::uint32_t>(bin.size()));
  hive += bin;
  putWord(hive, 40, static_cast<std::uint32_t>(hive.size() - page));
}

// Now and then numbers are about to wrap.
std::uint32_t HiveLife::sequenceNumber() {
  return random.oneIn(3) ? 0U - static_cast<std::uint32_t>(random.below(8))
                         : static_cast<std::uint32_t>(random.below(100'000));
}

std::string HiveLife::clean(std::uint32_t sequence) {
  std::string hive = randomBytes(512) + std::string(page - 512, '\0');
  hive.replace(0, 4, "regf");
  putWord(hive, 20, 1);
  putWord(hive, 24, 5);
  putWord(hive, 28, 0);
  putWord(hive, 36, 32);
  putWord(hive, 44, 1);
  putWord(hive, 144, static_cast<std::uint32_t>(random.below(2)));
  for (std::size_t bins = 1 + random.below(6); bins > 0; --bins) {
    appendBin(hive, 1 + random.below(4));
  }
  bench::setSequences(hive, sequence, sequence);
  return hive;
}

std::string HiveLife::changed(std::string hive) {
  for (std::size_t changes = 1 + random.below(6); changes > 0; --changes) {
    const std::size_t at = page + random.below((hive.size() - page) / page) * page + binHeader +
                           random.below(page - 2 * binHeader);
    hive.replace(at, binHeader, randomBytes(binHeader));
  }
  if (random.oneIn(3)) {
    appendBin(hive, 1 + random.below(3));
  }
  return hive;
}

// Some of what differs is written, and the file is as long as it takes.
std::string HiveLife::torn(const std::string& before, const std::string& after, std::size_t unit) {
  std::string file = before;
  for (std::size_t at = page; at < after.size(); at += unit) {
    if (random.oneIn(3)) {
      file.resize(std::max(file.size(), at + unit));
      file.replace(at, unit, after, at, unit);
    }
  }
  return file;
}

void HiveLife::changeByte(std::string& bytes, std::size_t at) {
  const auto byte = static_cast<unsigned char>(bytes[at]);
  bytes[at] = static_cast<char>(byte ^ (1 + random.below(255)));
}

void HiveLife::damageBase(std::string& hive) { changeByte(hive, random.below(512)); }

// What may stand behind the last entry of a log: no part of it may be taken over.
std::string HiveLife::leftOver(const std::string& hive, std::uint32_t next) {
  bench::LoggedEntry entry{.sequence = next,
                           .flags = 0,
                           .binsSize = wordAt(hive, 40),
                           .pages = {{0, std::string(page, 'x')}}};
  std::string zeros(512 * random.below(20), '\0');
  switch (random.below(6)) {
    case 0:
      return "";
    case 1:
      return zeros;
    case 2:
      entry.sequence = next - 1 - static_cast<std::uint32_t>(random.below(100));
      return bench::entryBytes(entry);
    case 3:
      entry.sequence = next + 1;
      return bench::entryBytes(entry);
    case 4:
      return bench::entryBytes(entry).substr(0, 512 * (1 + random.below(8)));
    default: {
      std::string bytes = bench::entryBytes(entry);
      changeByte(bytes, random.below(48 + page));
      return bytes;
    }
  }
}

// The first entry of a log carries what the file has not, each later one what has changed since.
std::string HiveLife::addEntries(std::string log, std::uint32_t sequence, const std::string& inFile,
                                 std::string& hive, StoppedHive& result) {
  std::string before = inFile;
  for (std::size_t entries = 1 + random.below(4); entries > 0; --entries) {
    hive = changed(hive);
    const auto flags = static_cast<std::uint32_t>(random.below(2));
    const bench::LoggedEntry entry{.sequence = sequence++,
                                   .flags = flags,
                                   .binsSize = wordAt(hive, 40),
                                   .pages = bench::changedPages(before, hive, page)};
    log += bench::entryBytes(entry);
    putWord(hive, 144, (wordAt(hive, 144) & ~1U) | flags);
    before = hive;
    ++result.entries;
    result.pages += entry.pages.size();
  }
  return log + leftOver(hive, sequence);
}

StoppedHive HiveLife::stopped() {
  const std::uint32_t first = sequenceNumber();
  const std::string before = clean(first);
  const bool isBaseDamaged = random.oneIn(4);
  StoppedHive result;
  std::string hive = before;
  std::uint32_t next = first + static_cast<std::uint32_t>(random.oneIn(2) ? 0 : random.below(900));
  std::string baseOfLog;
  const std::size_t logs = 1 + random.below(2);
  for (std::size_t log = 0; log < logs; ++log) {
    if (isBaseDamaged) {
      result.entries = 0;
      result.pages = 0;
    }
    const std::string head = bench::newLogHead(hive, next);
    const std::size_t entriesBefore = result.entries;
    result.logs.push_back(addEntries(head, next, before, hive, result));
    next += static_cast<std::uint32_t>(result.entries - entriesBefore);
    baseOfLog = head;
  }
  if (logs == 1) {
    // Of an earlier round, empty, or cut while it was begun.
    const std::string earlier =
        bench::newLogHead(before, first - 1 - std::uint32_t(random.below(9)));
    result.logs.push_back(random.oneIn(3)   ? ""
                          : random.oneIn(2) ? earlier + leftOver(before, wordAt(earlier, 4))
                                            : earlier.substr(0, random.below(512)));
  }
  result.file = torn(before, hive, page);
  bench::setSequences(result.file, first + 1, first);
  result.whole = hive;
  if (isBaseDamaged) {
    damageBase(result.file);
    const std::uint32_t flags = wordAt(hive, 144);
    result.whole.replace(0, 512, baseOfLog);
    putWord(result.whole, 40, wordAt(hive, 40));
    putWord(result.whole, 144, flags);
  }
  result.whole = ended(result.whole, next);
  if (random.oneIn(2)) {
    std::swap(result.logs.front(), result.logs.back());
  }
  return result;
}

StoppedHive HiveLife::stoppedBefore() {
  const std::uint32_t first = sequenceNumber();
  StoppedHive result;
  std::string before = clean(first);
  // The bins are no newer than the base block.
  before.replace(page + 20, 8, 8, '\0');
  std::string hive = changed(before);
  hive.replace(page + 20, 8, 8, '\0');
  putWord(hive, 24, 3);
  putWord(hive, 36, wordAt(hive, 36) + 8);
  const auto pages = bench::changedPages(before, hive, 512);
  result.logs = {bench::bitmapLogBytes(hive, pages,
                                       {.sequence = first + 1,
                                        .type = 1 + static_cast<std::uint32_t>(random.below(2)),
                                        .clustering = random.oneIn(3) ? 8U : 1U})};
  result.entries = 1;
  for (const bench::LoggedPages& run : pages) {
    result.pages += run.bytes.size() / 512;
  }
  result.file = torn(before, hive, 512);
  bench::setSequences(result.file, first + 1, first);
  result.whole = hive;
  if (random.oneIn(4)) {
    damageBase(result.file);
    result.whole.replace(0, 512, result.logs.front(), 0, 512);
  }
  result.whole = ended(result.whole, first + 2);
  return result;
}

}  // namespace zelvreg::fixture
