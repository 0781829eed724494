// A language file while it is translated: its texts beside those of English, and what is wrong with
// them.
#ifndef ZELVREG_TRANSLATION_TRANSLATION_H
#define ZELVREG_TRANSLATION_TRANSLATION_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "languages/readlangfile.h"
#include "translation/LanguageCheck.h"
#include "translation/LanguageLines.h"
#include "translation/TranslatableTexts.h"

namespace zelvreg {

class Translation {
 public:
  struct Entry {
    const TranslatableText* text;
    std::string english;
    std::string translation;
    std::string read;  // what the file has
    std::vector<LanguageFinding> problems;
  };

  // A language without a text, to be written in UTF-8.
  explicit Translation(const LanguageFile& english);

  // Takes over a file. It keeps its encoding, its lines and their order; what the program does not
  // know in it stays, too. A mark decides before the charset.
  void read(std::string_view bytes, int charset);

  [[nodiscard]] const std::vector<Entry>& entries() const { return all; }
  // Lines end where a text begins to hold what a line cannot: the first of several lines counts.
  void translate(std::size_t entry, std::string_view text);

  // Hints included.
  [[nodiscard]] const std::vector<LanguageFinding>& problemsOf(std::size_t entry) const {
    return all.at(entry).problems;
  }
  [[nodiscard]] bool needsWork(std::size_t entry) const;
  // The next entry that needs work, from the beginning again after the last; none if none does.
  [[nodiscard]] std::optional<std::size_t> nextProblem(std::optional<std::size_t> after) const;

  [[nodiscard]] int charset() const { return charsetInUse; }
  // Of what is typed from now on. The bytes that were read keep their meaning.
  void setCharset(int charset);
  [[nodiscard]] UINT codePage() const;
  [[nodiscard]] bool isUtf8() const { return usesUtf8; }
  void setUtf8(bool isWanted);

  // Whether it differs from what was read or last kept.
  [[nodiscard]] bool isChanged() const { return differs; }
  // What was written is now what the file has.
  void markAsKept();

  // The bytes of the file, lines ended as on Windows; none if the code page cannot hold a text.
  [[nodiscard]] std::optional<std::string> bytes() const;

 private:
  [[nodiscard]] std::string text() const;
  void findProblems();

  std::vector<Entry> all;
  std::vector<LanguageLine> lines;
  int charsetInUse = 0;
  bool usesUtf8 = true;
  bool differs = false;
};

}  // namespace zelvreg

#endif
