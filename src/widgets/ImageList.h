// The small pictures that rows show, by their keys.
#ifndef ZELVREG_WIDGETS_IMAGE_LIST_H
#define ZELVREG_WIDGETS_IMAGE_LIST_H

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace zelvreg {

struct ImageList {
  std::vector<std::string> keys;

  [[nodiscard]] bool holds(std::string_view key) const {
    return std::ranges::find(keys, key) != keys.end();
  }
};

}  // namespace zelvreg

#endif
