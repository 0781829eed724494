// A text of sections with lines "name=text": how a portable copy of the program keeps its settings.
//
// Sections and names are compared without regard to case, as the registry does. A character that
// would break a line or be lost at its ends is written as "%" and two hexadecimal digits for each
// of its bytes. Lines that are neither a section nor a setting are kept where they are.
#ifndef ZELVREG_RUNTIME_INI_TEXT_H
#define ZELVREG_RUNTIME_INI_TEXT_H

#include <string>
#include <string_view>
#include <vector>

namespace zelvreg {

class IniText {
 public:
  // Lines end with CR LF or LF. Of two lines with one name the first one counts.
  explicit IniText(std::string_view text);

  // Empty if there is none.
  [[nodiscard]] std::string value(std::string_view section, std::string_view name) const;
  // In the order of the lines.
  [[nodiscard]] std::vector<std::string> names(std::string_view section) const;

  // Replaces a line or appends one to its section, which is made if need be.
  void set(std::string_view section, std::string_view name, std::string_view value);
  // Does nothing without such a line.
  void remove(std::string_view section, std::string_view name);

  // The whole text; each line ends with CR LF.
  [[nodiscard]] std::string text() const;

 private:
  struct Section {
    // The lines between two headers, whatever they are. The first section has no header.
    std::string header;
    std::vector<std::string> lines;
  };

  [[nodiscard]] const Section* find(std::string_view name) const;

  std::vector<Section> sections;
};

}  // namespace zelvreg

#endif
