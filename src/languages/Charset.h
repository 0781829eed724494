// Charset numbers of fonts and the code pages of text.
#ifndef ZELVREG_LANGUAGES_CHARSET_H
#define ZELVREG_LANGUAGES_CHARSET_H

namespace zelvreg {

// The code page in which a language file of this charset is written, or 1252 for a charset that has
// none of its own.
unsigned codePageOfCharset(int charset);

// Whether the languages of this charset are read from right to left.
bool charsetReadsFromRight(int charset);

// Whether a language counts as matching the system. The pairs are the program's own, odd ones
// included: 0 and 1 both match 1252, and 238 matches 1257.
bool charsetMatchesCodePage(int charset, unsigned codePage);

}  // namespace zelvreg

#endif
