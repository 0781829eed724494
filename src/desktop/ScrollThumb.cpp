#include "desktop/ScrollThumb.h"

#include <algorithm>
#include <cstdint>

namespace zelvreg::desktop {
namespace {

std::int64_t countOf(const ScrollRange& range) {
  return std::int64_t{range.last} - range.first + 1;
}

// How many positions the first seen one can have, beside the first.
std::int64_t waysOf(const ScrollRange& range) {
  return std::max<std::int64_t>(0, countOf(range) - std::max(1, range.page));
}

std::int64_t rounded(std::int64_t dividend, std::int64_t divisor) {
  return (dividend + divisor / 2) / divisor;
}

}  // namespace

ThumbPlace thumbOf(const ScrollRange& range, int track, int least) {
  const std::int64_t ways = waysOf(range);
  if (ways == 0) {
    return {0, track};
  }
  const std::int64_t share = std::int64_t{track} * std::max(1, range.page) / countOf(range);
  const std::int64_t length = std::min<std::int64_t>(track, std::max<std::int64_t>(least, share));
  const std::int64_t at =
      std::clamp<std::int64_t>(std::int64_t{range.position} - range.first, 0, ways);
  return {static_cast<int>(rounded(at * (track - length), ways)), static_cast<int>(length)};
}

int positionOfThumb(const ScrollRange& range, int track, int least, int start) {
  const std::int64_t room = std::int64_t{track} - thumbOf(range, track, least).length;
  if (room <= 0) {
    return range.first;
  }
  const std::int64_t at = std::clamp<std::int64_t>(start, 0, room);
  return static_cast<int>(range.first + rounded(at * waysOf(range), room));
}

}  // namespace zelvreg::desktop
