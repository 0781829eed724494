#include "machine/files/KnownFolders.h"

namespace zelvreg::machine {

KnownFolders::Start KnownFolders::above(std::u16string_view upperNames) const {
  std::u16string_view names = upperNames;
  while (true) {
    const std::size_t end = names.find_last_of(u'\\');
    if (end == std::u16string_view::npos || end == 0) return {};
    names = names.substr(0, end);
    const auto found = folders.find(names);
    if (found != folders.end()) return {names.size(), &found->second};
  }
}

void KnownFolders::keep(std::u16string_view upperNames, const std::string& folder) {
  folders.insert_or_assign(std::u16string(upperNames), folder);
}

}  // namespace zelvreg::machine
