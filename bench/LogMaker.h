// Makes transaction logs of hives, as Windows leaves them beside a hive that it has not written
// yet. It shares no code with what reads them.
#ifndef ZELVREG_BENCH_LOG_MAKER_H
#define ZELVREG_BENCH_LOG_MAKER_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zelvreg::bench {

// A number in the bytes of a hive or a log.
std::uint32_t wordAt(std::string_view bytes, std::size_t offset);
void putWord(std::string& bytes, std::size_t offset, std::uint32_t number);

// Puts the checksum of a base block right.
void signBaseBlock(std::string& bytes);
// Sets both sequence numbers of a hive or a log, and signs it.
void setSequences(std::string& bytes, std::uint32_t first, std::uint32_t second);

// Pages that lie together, and their offset from the first bin.
struct LoggedPages {
  std::uint32_t offset = 0;
  std::string bytes;
};
// What must be written into one content of a hive so that it becomes another, in units of this
// size; units that lie together are one. What was not there counts as different.
std::vector<LoggedPages> changedPages(std::string_view before, std::string_view after,
                                      std::size_t unit);

// An entry of a log since Windows 8.1.
struct LoggedEntry {
  std::uint32_t sequence = 0;
  std::uint32_t flags = 0;
  std::uint32_t binsSize = 0;
  std::vector<LoggedPages> pages;
};
std::string entryBytes(const LoggedEntry& entry);

// A log since Windows 8.1 without entries, of this hive: they follow it.
std::string newLogHead(const std::string& hive, std::uint32_t sequence);

// A log of before. The hive is the one to be, whose base block the log repeats; `pages` are of 512
// bytes each.
struct BitmapLogForm {
  std::uint32_t sequence = 0;
  std::uint32_t type = 1;
  std::uint32_t clustering = 1;
};
std::string bitmapLogBytes(const std::string& hive, const std::vector<LoggedPages>& pages,
                           const BitmapLogForm& form);

}  // namespace zelvreg::bench

#endif
