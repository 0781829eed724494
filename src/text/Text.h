// Text in UTF-8 (unicode/Unicode.h): the operations that registry text and captions go through.
// Blanks are spaces (0x20) only; everything else, NUL included, is a character like any.
#ifndef ZELVREG_TEXT_TEXT_H
#define ZELVREG_TEXT_TEXT_H

#include <string>
#include <string_view>
#include <vector>

namespace zelvreg {

// Without the blanks at both ends.
std::string_view trim(std::string_view text);

// One character for one, as the system maps them; its bytes may become more or fewer.
std::string lowerCase(std::string_view text);
std::string upperCase(std::string_view text);

// The parts between the separators. An empty text has no parts at all, any other text has one more
// than it has separators. `separator` is not empty.
std::vector<std::string_view> split(std::string_view text, std::string_view separator);

// Every occurrence of `from`, left to right, not overlapping. `from` is not empty.
std::string replaceAll(std::string_view text, std::string_view from, std::string_view to);

// Whether `part` stands anywhere in the text; an empty part does.
bool contains(std::string_view text, std::string_view part);

// The same without regard to case, for a part in lower-case ASCII.
bool containsIgnoringCase(std::string_view text, std::string_view lowerCasePart);

// Where such a part stands first; npos if it does not.
std::size_t findIgnoringCase(std::string_view text, std::string_view lowerCasePart);

// The text before its first NUL.
std::string_view untilNul(std::string_view text);

}  // namespace zelvreg

#endif
