// A merged result for other programs, in UTF-8.
#ifndef ZELVREG_FLEET_MERGED_TEXT_H
#define ZELVREG_FLEET_MERGED_TEXT_H

#include <string>

#include "fleet/Merged.h"

namespace zelvreg::fleet {

// One JSON object, as docs/schema/merged-1.json describes it, with a line for each element of its
// lists.
std::string jsonText(const Merged& merged);

// The references as CSV with a line of headings, with an apostrophe before texts that a spreadsheet
// would run.
std::string csvText(const Merged& merged);

}  // namespace zelvreg::fleet

#endif
