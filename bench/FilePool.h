// The files of a made machine: their paths as the registry names them, live and dead.
#ifndef ZELVREG_BENCH_FILE_POOL_H
#define ZELVREG_BENCH_FILE_POOL_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "Labels.h"
#include "Random.h"

namespace zelvreg::bench {

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
  // The live one of this number; after the last the first one follows again.
  [[nodiscard]] std::string nth(FileKind kind, View view, std::size_t number) const;
  // One that is not, in a folder that is there, and in one that is not. Folders of the system are
  // always there.
  [[nodiscard]] std::string deadFile(FileKind kind, View view, Random& random) const;
  [[nodiscard]] std::string deadFolder(FileKind kind, View view, Random& random) const;
  // Either of the two.
  [[nodiscard]] Reference dead(FileKind kind, View view, Random& random) const;
  // One in ten is dead.
  [[nodiscard]] Reference any(FileKind kind, View view, Random& random) const;

  // The same, another path for each number: for lists whose entries are named by a path.
  [[nodiscard]] Reference distinct(FileKind kind, View view, std::size_t number,
                                   Random& random) const;

  // "C:\\Program Files", with " (x86)" in the 32-bit view.
  static std::string programFolder(View view);
  // Whether files of this kind lie below it.
  static bool isOfPrograms(FileKind kind);
  static std::string_view extensionOf(FileKind kind);

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

// A reference to the folder of a file.
Reference folderOf(const Reference& file);

// Decimal digits, filled with zeros in front.
std::string padded(std::size_t number, std::size_t width);

}  // namespace zelvreg::bench

#endif
