// The direction in which text is read.
#ifndef ZELVREG_UNICODE_READING_ORDER_H
#define ZELVREG_UNICODE_READING_ORDER_H

#include <string>
#include <string_view>

namespace zelvreg {

// Whether a text has letters that are read from right to left (Hebrew, Arabic and their kin).
bool readsFromRight(std::u16string_view text);

// A path or a key of the registry for use inside such a text: in marks that keep its parts in their
// order, from left to right. Any other text comes back as it was.
std::string keptLeftToRight(std::string_view text);

}  // namespace zelvreg

#endif
