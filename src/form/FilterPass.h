// How far the rows of the results have been looked at for their filter.
#ifndef ZELVREG_FORM_FILTER_PASS_H
#define ZELVREG_FORM_FILTER_PASS_H

#include <cstddef>
#include <string>

namespace zelvreg {

struct FilterPass {
  // What a row must hold, in lower case; empty if all rows are shown.
  std::string wanted;
  // Of which category a row must be, by its row of View1; 0 for all.
  std::size_t category = 0;
  // The next row to be looked at, and how many there were when that was decided.
  std::size_t nextRow = 1;
  std::size_t rowsThen = 0;
  // Whether the queue has the rest.
  bool isPosted = false;
};

}  // namespace zelvreg

#endif
