// The sentences about a result, and opening its key in an editor.
#ifndef ZELVREG_REPORTS_ENTRY_DETAILS_H
#define ZELVREG_REPORTS_ENTRY_DETAILS_H

#include <cstddef>
#include <string>

namespace zelvreg {

struct Form42;

// How sure it is that what a row of the results names is gone, and why, in the language in use.
// Empty before the second look, and for a row that does not exist.
std::string evidenceText(const Form42& form, std::size_t row);

// Describes the row in the panel below the results. The sentence of what is wrong is the same for
// every kind; a second one tells the evidence.
void View2_ItemClick(Form42& form, std::size_t row);

// Opens the registry editor at the key of the row last clicked: ends a running one, stores the key
// as its last key, and starts it. Without a row it starts at a key without a name.
void View2_DblClick(Form42& form);

// Opens the row last clicked in the suite's own key editor. Nothing on the form leads to it.
void Command28_Click(Form42& form);

}  // namespace zelvreg

#endif
