// Texts of a test computer written in another script, letter by letter: what a program makes of
// them must be the same but for that.
#ifndef ZELVREG_TESTS_SUPPORT_OTHER_SCRIPT_H
#define ZELVREG_TESTS_SUPPORT_OTHER_SCRIPT_H

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace zelvreg::fixture {

class OtherScript {
 public:
  // What stands for a to z and for A to Z, each in the order of its characters. A script without
  // capitals gives the same letters twice.
  OtherScript(std::string scriptName, std::u32string_view smallLetters,
              std::u32string_view capitalLetters);

  [[nodiscard]] const std::string& name() const { return ownName; }

  // The text with each letter replaced. Words that rules look for stay, as do letters of drives,
  // versions, class identifiers and security identifiers.
  [[nodiscard]] std::string write(std::string_view text) const;
  // The same of a cell of the results, where some texts are the program's own words.
  [[nodiscard]] std::string writeCell(const std::string& text) const;

 private:
  [[nodiscard]] std::string letterFor(char letter) const;

  std::string ownName;
  std::vector<std::string> small;
  std::vector<std::string> capital;
};

inline void PrintTo(const OtherScript& script, std::ostream* out) { *out << script.name(); }

// Every letter for itself.
const OtherScript& latinScript();

// Scripts with capitals and without, whose characters have bytes of the code pages of Japanese,
// Chinese and Korean that are separators or letters of ASCII; characters beyond the first 65,536,
// and marks that combine with the character before them.
const std::vector<OtherScript>& otherScripts();

}  // namespace zelvreg::fixture

#endif
