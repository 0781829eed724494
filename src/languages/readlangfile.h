// The texts of the user's language, from plain files in the program's folder.
//
// A file has sections "[Form42]" with lines key=value, in the code page that goes with the
// language's charset (Charset.h), or in UTF-8 with a byte order mark.
#ifndef ZELVREG_LANGUAGES_READLANGFILE_H
#define ZELVREG_LANGUAGES_READLANGFILE_H

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zelvreg {

struct Form42;

// The value of a key, names in any case; empty if file, section or key is missing. The search runs
// from the section's header to the end of the file, so it also finds a key that only a later
// section has. What follows a second "=" is lost, double quotes are removed, blanks stay.
std::string ReadLangValue(const std::string& file, std::string_view section, std::string_view key,
                          int charset);

// One file read once, for those who ask it for many values.
class LanguageFile {
 public:
  LanguageFile(const std::string& file, int charset);
  // Of the bytes of a file.
  static LanguageFile ofBytes(std::string_view bytes, int charset);
  // As ReadLangValue() gives it.
  [[nodiscard]] std::string value(std::string_view section, std::string_view key) const;

 private:
  explicit LanguageFile(std::string text) : content(std::move(text)) {}

  std::string content;
};

// The list of languages: the fields of each entry (name, charset, tag), as many as it has, which
// may be none. A file without a list has no entries. Each entry is in the code page of its own
// charset, unless the whole file is UTF-8.
using LanguageFields = std::vector<std::string>;
std::vector<LanguageFields> readLanguageList(const std::string& file);
// The same of the bytes of a file.
std::vector<LanguageFields> languageListOf(std::string_view bytes);

// The folder of the language files, and a file in it.
std::string languageFolder(const Form42& form);
std::string languagePath(const Form42& form, const std::string& fileName);

// The file of the language in use, whose charset is the form's langCode, and one text of it.
LanguageFile languageInUse(const Form42& form);
std::string readLanguageText(const Form42& form, std::string_view section, std::string_view key);

}  // namespace zelvreg

#endif
