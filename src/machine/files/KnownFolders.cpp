#include "machine/files/KnownFolders.h"

#include <algorithm>

#include "machine/base/CaseFold.h"

namespace zelvreg::machine {

KnownFolders::Start KnownFolders::above(std::u16string_view upperNames) {
  const std::size_t end = upperNames.find_last_of(u'\\');
  const std::u16string_view names = upperNames.substr(0, std::min(end, upperNames.size()));
  const bool isLast =
      names.size() == lastNames.size() && commonLength(names, lastNames) == names.size();
  if (!isLast) {
    lastStart = deepest(names);
    lastNames = names;
  }
  return lastStart;
}

// Of these names themselves, or above them.
KnownFolders::Start KnownFolders::deepest(std::u16string_view names) const {
  while (!names.empty()) {
    const auto found = folders.find(names);
    if (found != folders.end()) return {names.size(), &found->second};
    names = names.substr(0, names.find_last_of(u'\\'));
  }
  return {};
}

void KnownFolders::keep(std::u16string_view upperNames, const std::string& folder) {
  folders.insert_or_assign(std::u16string(upperNames), folder);
  lastNames.clear();
  lastStart = {};
}

}  // namespace zelvreg::machine
