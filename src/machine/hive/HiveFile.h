// A registry hive file: its content read where it lies, damage noted, and whether it is still the
// file that was opened. The file is opened for reading only.
#ifndef ZELVREG_MACHINE_HIVE_HIVE_FILE_H
#define ZELVREG_MACHINE_HIVE_HIVE_FILE_H

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "machine/base/MappedFile.h"
#include "machine/base/PlainFile.h"
#include "machine/hive/HiveReader.h"

namespace zelvreg::machine {

class HiveFile {
 public:
  // Throws MachineError, one line with the path and the reason, if the file cannot be read or is no
  // hive with a root key.
  explicit HiveFile(std::filesystem::path hiveFile);
  ~HiveFile() = default;
  HiveFile(const HiveFile&) = delete;
  HiveFile& operator=(const HiveFile&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const { return file; }

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

  // Whether the file on the disk is still the one that was opened, by its place, size and time.
  [[nodiscard]] bool isAsOpened() const { return stampOf(file) == readStamp; }
  [[nodiscard]] const FileStamp& stamp() const { return readStamp; }
  // After this program has put another file in its place, in which every node that was read has
  // kept its number. What is read from now on still comes from the file that was opened.
  void noteReplaced() { readStamp = stampOf(file); }

 private:
  std::filesystem::path file;
  FileStamp readStamp;
  std::optional<MappedFile> mapped;
  std::optional<HiveReader> reader;
  std::vector<std::string> damageLines;
};

}  // namespace zelvreg::machine

#endif
