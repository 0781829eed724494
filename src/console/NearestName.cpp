#include "console/NearestName.h"

#include <algorithm>
#include <cstddef>

namespace zelvreg::console {
namespace {

std::size_t differences(std::string_view left, std::string_view right) {
  // Of the beginning of `left` and each beginning of `right`: two rows ago, one ago, and now.
  std::vector<std::size_t> beforeLast(right.size() + 1);
  std::vector<std::size_t> last(right.size() + 1);
  std::vector<std::size_t> now(right.size() + 1);
  for (std::size_t size = 0; size <= right.size(); ++size) {
    last[size] = size;
  }
  for (std::size_t row = 1; row <= left.size(); ++row) {
    now[0] = row;
    for (std::size_t column = 1; column <= right.size(); ++column) {
      const bool isSame = left[row - 1] == right[column - 1];
      now[column] = std::min({last[column] + 1, now[column - 1] + 1,
                              last[column - 1] + (isSame ? std::size_t{0} : std::size_t{1})});
      if (row > 1 && column > 1 && left[row - 1] == right[column - 2] &&
          left[row - 2] == right[column - 1]) {
        now[column] = std::min(now[column], beforeLast[column - 2] + 1);
      }
    }
    beforeLast.swap(last);
    last.swap(now);
  }
  return last[right.size()];
}

}  // namespace

std::string nearestName(std::string_view typed, const std::vector<std::string>& names) {
  constexpr std::size_t lettersForEach = 3;
  // One letter too many or too few is no reason to give up on a short name.
  std::size_t least = std::max<std::size_t>(typed.size() / lettersForEach, 1) + 1;
  std::string nearest;
  for (const std::string& name : names) {
    const std::size_t different = differences(typed, name);
    if (different < least && different < name.size()) {
      least = different;
      nearest = name;
    }
  }
  return nearest;
}

}  // namespace zelvreg::console
