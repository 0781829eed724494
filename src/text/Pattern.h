// The wildcard match of the runtime.
#ifndef ZELVREG_TEXT_PATTERN_H
#define ZELVREG_TEXT_PATTERN_H

#include <cstdint>
#include <string_view>

namespace zelvreg {

// Refused: the pattern has a "[" without a "]", or a range that runs backwards. The runtime raises
// an error then, which a caller that skips failing conditions takes for a match.
enum class Match : std::uint8_t { No, Yes, Refused };

// Whether all of `text` fits `pattern`: "?" is any one character, "*" any number of them, "#" one
// digit, "[a-z]" one of a list and "[!a-z]" one that is not in it. "[]" stands for nothing at all,
// a "-" at the edge of a list for itself. Capital letters differ from small ones, and ranges go by
// the numbers of characters.
Match matchesPattern(std::string_view text, std::string_view pattern);

}  // namespace zelvreg

#endif
