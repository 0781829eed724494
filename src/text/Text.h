// Operations on text in UTF-8 (unicode/Unicode.h), such as texts of the registry and captions.
//
// A blank is a space (0x20). Everything else, NUL included, is a character like any other.
// Positions and sizes are in bytes. A returned view points into the text that was given, and lives
// as long as that. Nothing here fails.
#ifndef ZELVREG_TEXT_TEXT_H
#define ZELVREG_TEXT_TEXT_H

#include <concepts>
#include <string>
#include <string_view>
#include <vector>

namespace zelvreg {

// Without the blanks at both ends.
std::string_view trim(std::string_view text);

// Each character becomes one character, as the system maps it. The size in bytes may change.
std::string lowerCase(std::string_view text);
std::string upperCase(std::string_view text);

// The parts between the separators. An empty text has no parts. Any other text has one more than it
// has separators. `separator` must not be empty.
// The parts lie in `text`, so a text that is gone at the end of the statement has none.
std::vector<std::string_view> split(std::string_view text, std::string_view separator);
template <std::same_as<std::string> Text>
void split(Text&& text, std::string_view separator) = delete;

// Replaces each `from`, from left to right, without overlaps. `from` must not be empty.
std::string replaceAll(std::string_view text, std::string_view from, std::string_view to);

// Whether the text contains `part`; it always contains the empty text.
bool contains(std::string_view text, std::string_view part);

// The same without regard to case. The part must be in lower-case ASCII.
bool containsIgnoringCase(std::string_view text, std::string_view lowerCasePart);

// The position of the first such part; npos if there is none.
std::size_t findIgnoringCase(std::string_view text, std::string_view lowerCasePart);

// The text before its first NUL.
std::string_view untilNul(std::string_view text);

}  // namespace zelvreg

#endif
