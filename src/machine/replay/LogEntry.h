// What a transaction log wants to be written into its hive: a group of pages that belong together.
// Since Windows 8.1 a log is a row of such entries; before, it was one bitmap with pages.
#ifndef ZELVREG_MACHINE_REPLAY_LOG_ENTRY_H
#define ZELVREG_MACHINE_REPLAY_LOG_ENTRY_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>

#include "machine/replay/BaseBlock.h"

namespace zelvreg::machine {

using LogBytes = std::span<const std::byte>;

// Takes a page and its offset from the first bin.
using TakePage = std::function<void(std::uint64_t offset, LogBytes page)>;

// The bytes are those of the log, and live as long as they do. Each page has been found to lie in
// them, and to end within the bins; that is made sure again before it is given, since a log may be
// written meanwhile. Throws MachineError, a few words, if it no longer does.
struct LogEntry {
  std::uint64_t size = 0;  // in the log
  std::uint32_t sequence = 0;
  std::uint32_t flags = 0;
  std::uint32_t binsSize = 0;  // of all bins once it is written
  std::uint32_t pageCount = 0;
  LogBytes places;  // an offset and a size for each page
  LogBytes pages;

  void forEachPage(const TakePage& take) const;
};

// The entry of a log since Windows 8.1 at an offset; none if there is none, or it was not written
// whole.
std::optional<LogEntry> entryAt(LogBytes log, std::uint64_t offset);

// All of a log of before, whose base block is given.
struct BitmapLog {
  std::uint32_t pageCount = 0;
  LogBytes bitmap;  // a bit for each page of the bins, the lowest of a byte first
  LogBytes pages;   // one for each bit that is set

  void forEachPage(const TakePage& take) const;
};

// None if the log holds none, or is shorter than its pages need.
std::optional<BitmapLog> bitmapLog(LogBytes log, const BaseBlock& base);

}  // namespace zelvreg::machine

#endif
