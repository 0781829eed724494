#include "console/ResultPage.h"

#include <algorithm>
#include <memory>
#include <sstream>

#include "fleet/Merging.h"
#include "fleet/Page.h"
#include "form/Version.h"
#include "scan/CategoryTable.h"

namespace zelvreg::console {

void complete(fleet::Merged& merged, const std::string& made) {
  merged.version = programVersion();
  merged.made = made;
  for (fleet::CategorySummary& category : merged.categories) {
    const auto known = std::ranges::find(categories(), category.key, &Category::valueName);
    category.name = known == categories().end() ? category.key : std::string(known->english);
  }
}

std::string resultPage(const std::string& json, const std::string& made) {
  const auto open = [&json] { return std::make_unique<std::istringstream>(json); };
  fleet::Merged merged =
      fleet::mergeResults({{.path = {}, .file = {}, .isFailureNote = false, .open = open}}, {});
  complete(merged, made);
  return fleet::pageText(merged);
}

}  // namespace zelvreg::console
