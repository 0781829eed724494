#include "console/Installation.h"

#include <algorithm>
#include <utility>

#include "translation/LanguageCheck.h"

namespace zelvreg::console {

std::vector<std::string> languageTags(const std::vector<std::string>& files) {
  std::vector<std::string> tags;
  for (const std::string& file : files) {
    std::string tag = tagOfFile(file);
    if (!tag.empty()) {
      tags.push_back(std::move(tag));
    }
  }
  std::ranges::sort(tags);
  return tags;
}

}  // namespace zelvreg::console
