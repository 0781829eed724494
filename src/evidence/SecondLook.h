// The second look: after a scan each finding is looked at again, as Windows itself would resolve
// what it names, and gets a confidence with reasons. It changes no row, grants nothing and writes
// nothing, and it opens no network path unless that may be asked.
#ifndef ZELVREG_EVIDENCE_SECOND_LOOK_H
#define ZELVREG_EVIDENCE_SECOND_LOOK_H

#include <cstddef>

#include "form/Evidence.h"

namespace zelvreg {

struct Form42;

// Drops the rows that `form.userScope` leaves to other scans. Looks at every row of View2, and then
// at all of them together: what is implausible is noted in `form.implausible` and told in one
// message. Serves the message queue between two rows; a click on Cancel ends the look, and the rows
// that are left count as not examined.
void lookAgain(Form42& form);

// The look at one row as it is now, by itself.
Evidence lookAtRow(const Form42& form, std::size_t row);

// What was found for a row; null before the look, and for a row that does not exist.
const Evidence* evidenceOf(const Form42& form, std::size_t row);

// Ticks the rows that are at least `form.leastTicked`, and unticks all others; all rows without the
// safeguard.
void tickByConfidence(Form42& form);

}  // namespace zelvreg

#endif
