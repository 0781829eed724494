#include "machine/replay/Replay.h"

#include <algorithm>
#include <array>
#include <iomanip>
#include <sstream>
#include <utility>
#include <vector>

#include "machine/base/MachineError.h"
#include "machine/replay/BinWalk.h"
#include "machine/replay/LogEntry.h"

namespace zelvreg::machine {

using namespace hiveFormat;

namespace {

constexpr std::uint64_t largest = std::uint64_t{2} << 30;

struct UsableLog {
  LogBytes bytes;
  BaseBlock base;
};

template <typename Number>
void put(std::span<std::byte> bytes, std::size_t offset, Number number) {
  std::memcpy(bytes.data() + offset, &number, sizeof number);
}

void copyTo(std::span<std::byte> bytes, std::uint64_t offset, LogBytes content) {
  std::memcpy(bytes.data() + offset, content.data(), content.size());
}

// Those that were written whole. Logs of both kinds lie side by side where Windows was replaced by
// a newer one, and then the newer kind counts.
std::vector<UsableLog> usableLogs(std::span<const LogBytes> logs) {
  std::vector<UsableLog> usable;
  for (const LogBytes& log : logs) {
    const auto base = soundBaseBlock(log);
    if (base && base->firstSequence == base->secondSequence) {
      usable.push_back({log, *base});
    }
  }
  const auto isNew = [](const UsableLog& log) { return log.base.isOf(BaseBlock::Type::NewLog); };
  const auto isOld = [](const UsableLog& log) {
    return log.base.isOf(BaseBlock::Type::OldLog) || log.base.isOf(BaseBlock::Type::OlderLog);
  };
  if (std::ranges::any_of(usable, isNew)) {
    std::erase_if(usable, std::not_fn(isNew));
  } else {
    std::erase_if(usable, std::not_fn(isOld));
  }
  return usable;
}

// What is to be written into the hive, before anything is.
class Plan {
 public:
  // Throws MachineError, a few words, if nothing can be taken over.
  Plan(LogBytes hiveBytes, std::span<const LogBytes> logs)
      : hive(hiveBytes), base(soundBaseBlock(hiveBytes)) {
    if (logs.empty()) {
      throw MachineError("there are none");
    }
    std::vector<UsableLog> usable = usableLogs(logs);
    if (usable.empty()) {
      throw MachineError("none of them is whole");
    }
    if (usable.front().base.isOf(BaseBlock::Type::NewLog)) {
      takeEntries(std::move(usable));
    } else {
      takeBitmap(usable);
    }
    if (size > largest) {
      throw MachineError("the hive would be larger than 2 GiB with them");
    }
  }

  void fill(std::span<std::byte> image) const {
    copyTo(image, 0, hive);
    const auto takePage = [image](std::uint64_t offset, LogBytes page) {
      copyTo(image, binsOffset + offset, page);
    };
    if (baseOfLog) {
      copyTo(image, 0, baseOfLog->first(baseBlockSize));
      put(image, fileTypeOffset, static_cast<std::uint32_t>(BaseBlock::Type::Hive));
    }
    for (const LogEntry& entry : entries) {
      entry.forEachPage(takePage);
      put(image, binsSizeOffset, entry.binsSize);
      const auto flags = numberIn<std::uint32_t>(image, flagsOffset);
      put(image, flagsOffset, (flags & ~transactionsFlag) | (entry.flags & transactionsFlag));
    }
    if (bitmap) {
      bitmap->forEachPage(takePage);
      for (const std::size_t field :
           {majorVersionOffset, minorVersionOffset, rootOffset, binsSizeOffset}) {
        copyTo(image, field, bitmapBase.subspan(field, sizeof(std::uint32_t)));
      }
    }
    put(image, firstSequenceOffset, sequence);
    put(image, secondSequenceOffset, sequence);
    put(image, checksumOffset, baseBlockChecksum(image));
  }

  [[nodiscard]] std::uint64_t imageSize() const { return size; }
  [[nodiscard]] ReplayOutcome outcome() const {
    ReplayOutcome done{.state = HiveState::Replayed,
                       .entries = entries.size() + (bitmap ? 1 : 0),
                       .pages = bitmap ? bitmap->pageCount : 0,
                       .why = {}};
    for (const LogEntry& entry : entries) {
      done.pages += entry.pageCount;
    }
    return done;
  }

 private:
  void takeEntries(std::vector<UsableLog> logs) {
    if (base) {
      orderFrom(base->secondSequence, logs);
    } else {
      keepLast(logs);
    }
    for (const UsableLog& log : logs) {
      if (!entries.empty() && log.base.firstSequence != entries.back().sequence + 1) {
        break;
      }
      takeEntriesOf(log);
    }
    if (entries.empty()) {
      throw MachineError("no entry in them is whole");
    }
    sequence = entries.back().sequence + 1;
  }

  // The first entry of a log carries all that the hive did not have then, so a log that begins
  // later than the hive ends leaves no gap.
  static void orderFrom(std::uint32_t first, std::vector<UsableLog>& logs) {
    std::erase_if(logs,
                  [&](const UsableLog& log) { return isBefore(log.base.firstSequence, first); });
    if (logs.empty()) {
      throw MachineError("they hold nothing newer");
    }
    std::ranges::stable_sort(logs, {},
                             [&](const UsableLog& log) { return log.base.firstSequence - first; });
  }

  // Nobody knows where a hive without a base block ends, so its last log must do, with its own.
  void keepLast(std::vector<UsableLog>& logs) {
    UsableLog last = logs.front();
    for (const UsableLog& log : logs) {
      last = isBefore(last.base.firstSequence, log.base.firstSequence) ? log : last;
    }
    logs = {last};
    baseOfLog = last.bytes;
  }

  // What follows the last entry is left over from earlier rounds.
  void takeEntriesOf(const UsableLog& log) {
    std::uint64_t offset = baseBlockSize;
    std::uint32_t next = log.base.firstSequence;
    for (auto entry = entryAt(log.bytes, offset); entry && entry->sequence == next;
         entry = entryAt(log.bytes, offset)) {
      makeRoomFor(entry->binsSize);
      offset += entry->size;
      ++next;
      entries.push_back(*entry);
    }
  }

  void takeBitmap(const std::vector<UsableLog>& logs) {
    const UsableLog* chosen = nullptr;
    for (const UsableLog& log : logs) {
      const bool isNewer = chosen == nullptr || log.base.written > chosen->base.written;
      auto found = bitmapLog(log.bytes, log.base);
      if (found && belongsToHive(log.base) && isNewer) {
        chosen = &log;
        bitmap = found;
      }
    }
    if (chosen == nullptr) {
      throw MachineError("none of them is whole and as old as the hive");
    }
    if (!base) {
      baseOfLog = chosen->bytes;
    }
    bitmapBase = chosen->bytes;
    makeRoomFor(chosen->base.binsSize);
    sequence = chosen->base.firstSequence + 1;
  }

  [[nodiscard]] bool belongsToHive(const BaseBlock& log) const {
    if (base) {
      return log.written == base->written;
    }
    return hive.size() < binsOffset + binHeader ||
           log.written >= numberIn<std::uint64_t>(hive, binsOffset + binWritten);
  }

  void makeRoomFor(std::uint32_t binsSize) {
    size = std::max(size, binsOffset + std::uint64_t{binsSize});
  }

  LogBytes hive;
  std::optional<BaseBlock> base;  // none if the hive's is damaged
  std::optional<LogBytes> baseOfLog;
  std::vector<LogEntry> entries;
  std::optional<BitmapLog> bitmap;
  LogBytes bitmapBase;
  std::uint64_t size = std::max<std::uint64_t>(hive.size(), binsOffset);
  std::uint32_t sequence = 0;
};

std::string inHexadecimal(std::uint64_t number) {
  std::ostringstream text;
  text << "0x" << std::hex << number;
  return text.str();
}

}  // namespace

bool needsLogs(std::span<const std::byte> hive) {
  const auto base = soundBaseBlock(hive);
  return !base || base->firstSequence != base->secondSequence;
}

Replay replayLogs(std::span<const std::byte> hive,
                  std::span<const std::span<const std::byte>> logs) {
  try {
    const Plan plan(hive, logs);
    MemoryFile image(plan.imageSize());
    plan.fill(image.bytes());
    if (const auto bad = firstBadBin(image.bytes())) {
      throw MachineError("the hive would be damaged at " + inHexadecimal(*bad) + " with them");
    }
    return {.outcome = plan.outcome(), .image = std::move(image)};
  } catch (const MachineError& error) {
    return {.outcome = {.state = HiveState::Unreplayable, .why = error.what()}, .image = {}};
  }
}

}  // namespace zelvreg::machine
