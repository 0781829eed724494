// What the second look says of a row, for whoever shows it.
#ifndef ZELVREG_EVIDENCE_ROW_EVIDENCE_H
#define ZELVREG_EVIDENCE_ROW_EVIDENCE_H

#include <cstddef>

#include "form/Evidence.h"

namespace zelvreg {

struct Form42;

// Valid until the next look. A row that was not looked at is unsure, with the reason that says so.
const Evidence& evidenceAt(const Form42& form, std::size_t row);

}  // namespace zelvreg

#endif
