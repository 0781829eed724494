#include "console/Installation.h"

#include <algorithm>
#include <string_view>

namespace zelvreg::console {

std::vector<std::string> languageTags(const std::vector<std::string>& files) {
  constexpr std::string_view start = "zelvreg-";
  constexpr std::string_view end = ".lang";
  std::vector<std::string> tags;
  for (const std::string& file : files) {
    if (file.starts_with(start) && file.ends_with(end) && file.size() > start.size() + end.size()) {
      tags.push_back(file.substr(start.size(), file.size() - start.size() - end.size()));
    }
  }
  std::ranges::sort(tags);
  return tags;
}

}  // namespace zelvreg::console
