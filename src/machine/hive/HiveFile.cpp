#include "machine/hive/HiveFile.h"

#include <algorithm>
#include <limits>
#include <span>
#include <system_error>
#include <utility>

#include "machine/base/MachineError.h"

namespace zelvreg::machine {

// The stamp is taken before the file is read, so that another file in its place is never taken for
// this one.
HiveFile::HiveFile(std::filesystem::path hiveFile, LogUse logUse)
    : file(std::move(hiveFile)), readStamp(stampOf(file)) {
  const auto fail = [this](const std::string& reason) {
    throw MachineError(file.string() + ": cannot be read as a registry hive: " + reason);
  };
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(file, ignored)) {
    fail("it is not a file");
  }
  mapped.emplace(file);
  if (mapped->bytes().size() > std::numeric_limits<std::uint32_t>::max()) {
    fail("it is larger than a hive can be");
  }
  takeLogs(logUse);
  if (reader) {
    return;
  }
  try {
    reader.emplace(std::as_bytes(std::span(mapped->bytes())));
  } catch (const MachineError& error) {
    const bool isDirty = outcome.state == HiveState::Unreplayable;
    fail(error.what() + (isDirty ? ", and its logs do not help: " + outcome.why : ""));
  }
}

void HiveFile::takeLogs(LogUse logUse) {
  const std::span<const std::byte> bytes = std::as_bytes(std::span(mapped->bytes()));
  if (logUse == LogUse::Hibernated || !needsLogs(bytes)) {
    outcome.state = logUse == LogUse::Hibernated ? HiveState::Hibernated : HiveState::Clean;
    return;
  }
  if (logUse == LogUse::LeaveAlone) {
    outcome.state = HiveState::LeftAsIs;
    return;
  }
  try {
    const LogFiles logs(file);
    Replay replay = replayLogs(bytes, logs.contents());
    outcome = replay.outcome;
    if (replay.image) {
      const std::uint32_t flags = soundBaseBlock(replay.image->bytes())->flags;
      const bool mayWait = (flags & hiveFormat::transactionsFlag) != 0;
      pending = mayWait ? pendingTransactions(file) : std::nullopt;
      reader.emplace(replay.image->bytes());
      replayed.emplace(std::move(*replay.image));
      mapped.reset();
      logStamps = logs.stamps();
    }
  } catch (const MachineError& error) {
    outcome = {.state = HiveState::Unreplayable, .why = error.what()};
  }
}

bool HiveFile::isAsOpened() const {
  return stampOf(file) == readStamp && std::ranges::all_of(logStamps, [](const auto& log) {
           return stampOf(log.first) == log.second;
         });
}

void HiveFile::noteReplaced() {
  readStamp = stampOf(file);
  logStamps.clear();
  isReplaced = true;
}

void HiveFile::noteDamage(std::string line) {
  constexpr std::size_t mostLines = 10;
  if (damageLines.size() < mostLines) {
    damageLines.push_back(file.string() + ": " + line.append("; it is damaged there"));
  }
}

}  // namespace zelvreg::machine
