// A merged result as one HTML page.
#ifndef ZELVREG_FLEET_PAGE_H
#define ZELVREG_FLEET_PAGE_H

#include <cstddef>
#include <string>

#include "fleet/Merged.h"

namespace zelvreg::fleet {

// Rows of all tables of a page together, so that a browser shows it at once. The computers with
// most findings and the references on most computers are among them.
inline constexpr std::size_t mostRows = 10'000;

// A page in a single file that asks no network for anything, and allows its browser nothing but its
// own style and script. The texts of results are data in it, never markup. `csvFile` is the name of
// the file in which all references are, if one is written.
std::string pageText(const Merged& merged, const std::string& csvFile = {});

}  // namespace zelvreg::fleet

#endif
