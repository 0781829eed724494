// Whether a file is there, and if not, why not. Answers are kept, since many entries name the same
// folders. Opens nothing; whether another computer may be asked is the caller's to decide.
#ifndef ZELVREG_EVIDENCE_FILE_LOOK_H
#define ZELVREG_EVIDENCE_FILE_LOOK_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "text/TextTable.h"

namespace zelvreg {

enum class FileIs : std::uint8_t {
  File,
  Folder,
  Missing,  // its folder is there
  InMissingFolder,
  Denied,  // it could not be asked for
  BehindBrokenLink,
};

enum class DriveIs : std::uint8_t { Fixed, Removable, Remote, Absent };

// The longest path that programs can open without special care, in UTF-16 units.
inline constexpr std::size_t longestUsualPath = 259;

class FileLook {
 public:
  // For as many files as are expected: a table of 100,000 that grows holds everybody up.
  explicit FileLook(std::size_t expectedFiles) { known.reserve(expectedFiles); }

  // `path` begins with a drive, or with a share that may be asked.
  FileIs at(const std::string& path);

  // Of a letter in either case.
  DriveIs drive(char letter);

 private:
  struct Answer {
    FileIs is = FileIs::InMissingFolder;
    bool isLink = false;  // one whose target is there
  };
  static Answer ask(const std::string& path);
  Answer look(const std::string& path);
  FileIs whyMissing(const std::string& path);
  [[nodiscard]] bool isBelowMissing(const std::string& path) const;

  TextTable<Answer> known;
  std::array<std::optional<DriveIs>, 26> drives;
};

}  // namespace zelvreg

#endif
