// The wildcard match of the runtime.
#ifndef ZELVREG_TEXT_PATTERN_H
#define ZELVREG_TEXT_PATTERN_H

#include <cstdint>
#include <string_view>

namespace zelvreg {

// Refused: the pattern has a "[" without a "]", or a range that runs backwards. The runtime raises
// an error then. A caller that skips failing conditions treats it as a match.
enum class Match : std::uint8_t { No, Yes, Refused };

// Whether all of `text` fits `pattern`: "?" is any one character, "*" any number of them, "#" one
// digit, "[a-z]" one of a list and "[!a-z]" one that is not in it. "[]" stands for the empty text,
// a "-" at the edge of a list for itself. Upper and lower case differ. A range is one of code
// points. Both texts are UTF-8; a character is a code point.
Match matchesPattern(std::string_view text, std::string_view pattern);

}  // namespace zelvreg

#endif
