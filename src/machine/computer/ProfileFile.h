// A profile (INI) file: sections of NAME=value lines. Lines that are not asked for stay as they
// are, in their order, with their comments.
#ifndef ZELVREG_MACHINE_COMPUTER_PROFILE_FILE_H
#define ZELVREG_MACHINE_COMPUTER_PROFILE_FILE_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "machine/base/CodePage.h"

namespace zelvreg::machine {

// Names are compared without regard to case. Of two sections or keys of one name the first counts.
class ProfileFile {
 public:
  // Bytes in the code page, or UTF-16 after its byte order mark. `page` must outlive this.
  ProfileFile(std::string_view content, const CodePage& page);

  // Names as they are written, in the order of the file.
  [[nodiscard]] std::vector<std::u16string> sections() const;
  [[nodiscard]] std::vector<std::u16string> keys(std::u16string_view section) const;
  // "NAME=value" without blanks around either; comments and empty lines are passed over.
  [[nodiscard]] std::vector<std::u16string> entries(std::u16string_view section) const;
  // Without blanks around it; quotes stay.
  [[nodiscard]] std::optional<std::u16string> value(std::u16string_view section,
                                                    std::u16string_view key) const;

  // In place of the old line; a new key goes after the last line of its section, a new section to
  // the end.
  void set(std::u16string_view section, std::u16string_view key, std::u16string_view value);
  // Nothing happens if it is not there.
  void removeKey(std::u16string_view section, std::u16string_view key);
  void removeSection(std::u16string_view section);

  // The whole file in the form in which it was read, every line ended by CR LF. A character that
  // the code page does not have becomes "?".
  [[nodiscard]] std::string content() const;

 private:
  struct Line {
    enum class Kind { Other, Section, Entry } kind = Kind::Other;
    std::string bytes;      // as the file holds it, so that what is not changed stays to the bit
    std::u16string name;    // of the section or the key
    std::u16string value;   // of an entry
    bool hasValue = false;  // it has "="
  };
  [[nodiscard]] std::string bytesOf(std::u16string_view text) const;
  [[nodiscard]] std::u16string textOf(std::string_view bytes) const;
  [[nodiscard]] Line lineOf(std::u16string_view text) const;
  // The lines of a section without its head: from `first` up to `end`; both 0 if there is no such
  // section.
  struct Range {
    std::size_t first = 0;
    std::size_t end = 0;
  };
  [[nodiscard]] Range range(std::u16string_view section) const;
  [[nodiscard]] std::optional<std::size_t> find(std::u16string_view section,
                                                std::u16string_view key) const;
  [[nodiscard]] bool isEmpty(const Line& line) const;

  const CodePage& page;
  bool isUtf16 = false;
  std::vector<Line> lines;
};

}  // namespace zelvreg::machine

#endif
