// Takes over what Windows has written to the transaction logs of a hive and not yet into the hive,
// as Windows does when it loads one that was not shut down cleanly. The result is in memory;
// nothing is written.
#ifndef ZELVREG_MACHINE_REPLAY_REPLAY_H
#define ZELVREG_MACHINE_REPLAY_REPLAY_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "machine/base/MemoryFile.h"

namespace zelvreg::machine {

enum class HiveState : std::uint8_t {
  Clean,         // its logs hold nothing that it needs
  Replayed,      // its logs have been taken over
  Unreplayable,  // it needs its logs, and they cannot be taken over
  LeftAsIs,      // it needs its logs, which were to be left alone
  Hibernated,    // Windows holds newer content of it than any file
};

// What became of the logs of a hive.
struct ReplayOutcome {
  HiveState state = HiveState::Clean;
  std::size_t entries = 0;  // groups of pages that were taken over
  std::size_t pages = 0;    // in them
  std::string why;          // of one that is unreplayable, in a few words
};

struct Replay {
  ReplayOutcome outcome;
  std::optional<MemoryFile> image;  // the whole hive as it is with its logs, if it is Replayed
};

// Whether a hive, given with all its bytes, needs what is in its logs.
bool needsLogs(std::span<const std::byte> hive);

// Of a hive that needs them. The logs stand in the order of their names. A result is no larger
// than 2 GiB; of a log only what it holds counts, not how long it is. What they lead to has bins
// that follow each other; more is not known of it.
Replay replayLogs(std::span<const std::byte> hive,
                  std::span<const std::span<const std::byte>> logs);

}  // namespace zelvreg::machine

#endif
