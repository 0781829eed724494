// What a list measures and tells of texts that are wider than their columns.
#ifndef ZELVREG_DESKTOP_LIST_TEXT_H
#define ZELVREG_DESKTOP_LIST_TEXT_H

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "widgets/ListView.h"

namespace zelvreg::desktop {

// The rows with the longest texts of a column, at most `most`, the longest first. Of a list with
// more than 100,000 rows only so many are looked at.
std::vector<std::size_t> longestRows(const ListView& list, std::size_t column, std::size_t most);

// A text in lines of at most so many characters, each ended by a line feed but the last. It is cut
// behind a blank or a backslash, or anywhere if a line has neither. The same text without the line
// feeds is the whole one.
std::u16string inLines(std::u16string_view text, std::size_t most);

// A path as it is shown in so much room: whole, or without its middle, so that its start and its
// end can be read. Its last name stays whole if the start keeps a third of what is left then.
// A text without a
// backslash loses its end. `widthOf` measures a text.
std::u16string withoutMiddle(std::u16string_view path, int room,
                             const std::function<int(std::u16string_view)>& widthOf);

}  // namespace zelvreg::desktop

#endif
