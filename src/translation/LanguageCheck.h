// What is wrong with a language file.
#ifndef ZELVREG_TRANSLATION_LANGUAGE_CHECK_H
#define ZELVREG_TRANSLATION_LANGUAGE_CHECK_H

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "translation/TranslatableTexts.h"

namespace zelvreg {

enum class LanguageProblem : std::uint8_t {
  LineEnd,        // a line ends otherwise than with CR LF
  BadBytes,       // a line is no text of the code page
  NoSection,      // the file lacks a section
  NoPair,         // a line is neither a section nor key=text
  UnknownKey,     // the program does not ask for it
  Twice,          // the first one counts
  Forbidden,      // "=" or a quotation mark, which a text cannot hold
  Missing,        // no text
  Unwritable,     // a character that the code page does not have
  Values,         // "%1" and its kin are not those of English
  AccessKey,      // the letter after "&" is that of another control of the page
  TooLong,        // for its place in the window
  SameAsEnglish,  // which it may be: a hint
};

// "missing", in --json.
const char* codeOf(LanguageProblem problem);
// Hints are no problems.
inline bool isHint(LanguageProblem problem) { return problem == LanguageProblem::SameAsEnglish; }

struct LanguageFinding {
  LanguageProblem problem;
  std::string section = {};
  std::string key = {};
  std::size_t line = 0;     // from 1; 0 where it is about no line
  std::string detail = {};  // what is lost or too much, or the other key
};

// The finding in an English sentence.
std::string sentenceOf(const LanguageFinding& finding);

// What one text needs to be looked at for. `codePage` is that of its file, CP_UTF8 if that is
// UTF-8.
std::vector<LanguageFinding> problemsOfText(const TranslatableText& text,
                                            std::string_view translation, UINT codePage);

// A text of a file, as the check of access keys needs it.
struct TranslatedText {
  const TranslatableText* text;
  std::string translation;
  std::size_t line = 0;
};
std::vector<LanguageFinding> doubledAccessKeys(const std::vector<TranslatedText>& texts);

// All of a file, in the order of its lines, what is missing last. The charset is that of the
// language; a file that begins with a byte order mark is UTF-8. `english` is the English file,
// whose texts are compared; null where the file is that itself.
std::vector<LanguageFinding> checkLanguageFile(std::string_view bytes, int charset,
                                               const LanguageFile* english);

// The charset that the list of languages, given by its bytes, has for a language; none if it does
// not have the language.
std::optional<int> charsetInList(std::string_view list, std::string_view tag);
// "german" of "zelvreg-german.lang", with or without a folder; empty for any other name.
std::string tagOfFile(std::string_view path);

}  // namespace zelvreg

#endif
