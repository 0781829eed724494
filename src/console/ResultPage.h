// The page for a browser, of one result or of many.
#ifndef ZELVREG_CONSOLE_RESULT_PAGE_H
#define ZELVREG_CONSOLE_RESULT_PAGE_H

#include <string>

#include "fleet/Merged.h"

namespace zelvreg::console {

// Tells a merged result what the results do not: the program's version, when it was made, in UTC,
// and what the categories are called.
void complete(fleet::Merged& merged, const std::string& made);

// The page of one result of a scan or a repair, given as JSON.
std::string resultPage(const std::string& json, const std::string& made);

}  // namespace zelvreg::console

#endif
