// The files of a made machine: their paths as the registry names them, live and dead.
#ifndef ZELVREG_BENCH_FILE_POOL_H
#define ZELVREG_BENCH_FILE_POOL_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <random>
#include <string>

namespace zelvreg::bench {

// The engine's numbers are the same everywhere; the library's distributions are not, so ranges are
// cut out here.
class Random {
 public:
  explicit Random(std::uint64_t seed) : engine(seed) {}

  std::uint64_t bits() { return engine(); }
  // 0 to limit - 1.
  std::size_t below(std::size_t limit) { return static_cast<std::size_t>(engine() % limit); }
  bool oneIn(std::size_t count) { return below(count) == 0; }

 private:
  std::mt19937_64 engine;
};

enum class FileKind : std::uint8_t {
  Program,
  Library,
  Picture,
  TypeLibrary,
  Font,
  Help,
  SystemLibrary,
};
inline constexpr std::size_t fileKindCount = 7;

enum class View : std::uint8_t { Bits64, Bits32 };

class FilePool {
 public:
  // As many files as suit a registry of so many keys: many references name one file.
  explicit FilePool(std::size_t keyCount);

  // A path that is there, as of one program of that view.
  [[nodiscard]] std::string live(FileKind kind, View view, Random& random) const;
  // One that is not: a missing file in a folder that is there, or a missing folder.
  [[nodiscard]] std::string dead(FileKind kind, View view, Random& random) const;
  // One in ten is dead.
  [[nodiscard]] std::string any(FileKind kind, View view, Random& random) const;

  // The same, another path for each number: for lists whose entries are named by a path.
  [[nodiscard]] std::string distinct(FileKind kind, View view, std::size_t number,
                                     Random& random) const;

  // Makes all that are there below the folder of drive C, each an empty file. Throws
  // std::runtime_error.
  void write(const std::filesystem::path& drive) const;

 private:
  [[nodiscard]] std::size_t count(FileKind kind) const;

  std::array<std::size_t, fileKindCount> counts{};
};

// "C:\a\b.c" without its last part, and the last part.
std::string folderOf(const std::string& path);
std::string fileNameOf(const std::string& path);

// Decimal digits, filled with zeros in front.
std::string padded(std::size_t number, std::size_t width);

}  // namespace zelvreg::bench

#endif
