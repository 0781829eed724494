// A registry hive file: its content read where it lies, or in memory where its logs had to be taken
// over; damage noted, and whether it is still the file that was opened. All files are opened for
// reading only.
#ifndef ZELVREG_MACHINE_HIVE_HIVE_FILE_H
#define ZELVREG_MACHINE_HIVE_HIVE_FILE_H

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "machine/base/MappedFile.h"
#include "machine/base/MemoryFile.h"
#include "machine/base/PlainFile.h"
#include "machine/hive/HiveReader.h"
#include "machine/replay/LogFiles.h"
#include "machine/replay/Replay.h"

namespace zelvreg::machine {

// What is done with the transaction logs of a hive that needs them.
enum class LogUse : std::uint8_t {
  Replay,
  LeaveAlone,
  Hibernated,  // nothing, for any hive: Windows is hibernated, and holds newer content
};

class HiveFile {
 public:
  // Logs that cannot be taken over leave the hive as it is. Throws MachineError, one line with the
  // path and the reason, if the file cannot be read or is no hive with a root key.
  explicit HiveFile(std::filesystem::path hiveFile, LogUse logUse = LogUse::Replay);
  ~HiveFile() = default;
  HiveFile(const HiveFile&) = delete;
  HiveFile& operator=(const HiveFile&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const { return file; }
  // Where the whole content can be read as a file: the hive, or one in memory.
  [[nodiscard]] std::filesystem::path source() const {
    return isReplaced || !replayed ? file : replayed->path();
  }

  // What became of its logs when it was opened.
  [[nodiscard]] const ReplayOutcome& replay() const { return outcome; }
  // The file in which changes may wait that only Windows takes over; none of a hive that was shut
  // down cleanly.
  [[nodiscard]] const std::optional<std::filesystem::path>& pendingFile() const { return pending; }

  // What it gives lives as long as this object. A file that is cut short meanwhile ends the process
  // when its lost end is read, by a signal that the console turns into one line: a copy of
  // everything would take as much memory again, and reading piece by piece a call for each key.
  [[nodiscard]] HiveReader& content() { return *reader; }
  [[nodiscard]] std::uint32_t root() const { return reader->root(); }

  // What was passed over, one line each with the file in front; of many, the first few. A hive with
  // any must not be written: what was passed over would be lost.
  [[nodiscard]] const std::vector<std::string>& damage() const { return damageLines; }
  // `line` says which key has not been read whole.
  void noteDamage(std::string line);

  // Whether the file on the disk, and each log that was taken over, is still the one that was
  // opened, by its place, size and time.
  [[nodiscard]] bool isAsOpened() const;
  [[nodiscard]] const FileStamp& stamp() const { return readStamp; }
  // After this program has put another file in its place, in which every node that was read has
  // kept its number. What is read from now on still comes from what was opened.
  void noteReplaced();

 private:
  void takeLogs(LogUse logUse);
  std::filesystem::path file;
  FileStamp readStamp;
  std::optional<MappedFile> mapped;
  ReplayOutcome outcome;
  LogFiles::Stamps logStamps;
  std::optional<std::filesystem::path> pending;
  std::optional<MemoryFile> replayed;
  std::optional<HiveReader> reader;
  std::vector<std::string> damageLines;
  bool isReplaced = false;
};

}  // namespace zelvreg::machine

#endif
