// A profile (INI) file: sections of NAME=value lines. Lines that are not asked for stay as they
// are, in their order, with their comments.
#ifndef ZELVREG_MACHINE_PROFILE_FILE_H
#define ZELVREG_MACHINE_PROFILE_FILE_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "machine/CodePage.h"

namespace zelvreg::machine {

// Text is narrow, in the code page; names are compared without regard to case. Of two sections or
// keys of one name the first counts.
class ProfileFile {
 public:
  // `page` must outlive this.
  ProfileFile(std::string_view content, const CodePage& page);

  // Names as they are written, in the order of the file.
  [[nodiscard]] std::vector<std::string> sections() const;
  [[nodiscard]] std::vector<std::string> keys(std::string_view section) const;
  // "NAME=value" without blanks around either; comments and empty lines are passed over.
  [[nodiscard]] std::vector<std::string> entries(std::string_view section) const;
  // Without blanks around it; quotes stay.
  [[nodiscard]] std::optional<std::string> value(std::string_view section,
                                                 std::string_view key) const;

  // In place of the old line; a new key goes behind the last line of its section, a new section to
  // the end.
  void set(std::string_view section, std::string_view key, std::string_view value);
  // Nothing happens if it is not there.
  void removeKey(std::string_view section, std::string_view key);
  void removeSection(std::string_view section);

  // The whole file, every line ended by CR LF.
  [[nodiscard]] std::string content() const;

 private:
  struct Line {
    enum class Kind { Other, Section, Entry } kind = Kind::Other;
    std::string text;       // as it is written
    std::string name;       // of the section or the key
    std::string value;      // of an entry
    bool hasValue = false;  // it has "="
  };
  Line parseLine(std::string_view text) const;
  [[nodiscard]] bool sameName(std::string_view first, std::string_view second) const;
  // The lines of a section without its head: from `first` up to `end`; both 0 if there is none.
  struct Range {
    std::size_t first = 0;
    std::size_t end = 0;
  };
  [[nodiscard]] Range range(std::string_view section) const;
  [[nodiscard]] std::optional<std::size_t> find(std::string_view section,
                                                std::string_view key) const;

  const CodePage& page;
  std::vector<Line> lines;
};

}  // namespace zelvreg::machine

#endif
