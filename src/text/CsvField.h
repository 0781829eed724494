// A field of a table of comma-separated values (RFC 4180).
#ifndef ZELVREG_TEXT_CSV_FIELD_H
#define ZELVREG_TEXT_CSV_FIELD_H

#include <string>

namespace zelvreg {

// The text as plain UTF-8, in quotation marks if it needs them. What a spreadsheet would run as a
// formula gets an apostrophe in front, which makes it text. Half of a pair of surrogates becomes
// the replacement character.
std::string csvField(const std::string& exactText);

}  // namespace zelvreg

#endif
