// The filter of the results. It hides the rows of which no cell that the user sees contains the
// text of FilterBox, whatever its case, and those of other categories than the one chosen by its
// bar. Hidden rows are repaired and reported like all others.
#ifndef ZELVREG_SHELL_RESULTS_FILTER_H
#define ZELVREG_SHELL_RESULTS_FILTER_H

#include <array>
#include <cstddef>

namespace zelvreg {

struct Form42;

// How many rows each category has, by its row of View1 less 1. A row of a search may have none.
std::array<std::size_t, 16> countByCategory(const Form42& form);

// Shows only the rows of a category, by its row of View1, or all if it is only these already.
void filterByCategory(Form42& form, std::size_t category);

// Neither a text nor a category.
void clearFilter(Form42& form);

// Begins anew with the text as it stands. Some rows are looked at at once, the others part by part
// each time the message queue is served.
void filterResults(Form42& form);

// After rows have come or gone: looks at those that it has not looked at.
void followResults(Form42& form);

}  // namespace zelvreg

#endif
