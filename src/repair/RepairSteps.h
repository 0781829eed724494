// Carrying out what the table tells for one row.
#ifndef ZELVREG_REPAIR_REPAIR_STEPS_H
#define ZELVREG_REPAIR_REPAIR_STEPS_H

#include <cstddef>
#include <string>

#include "repair/RepairTable.h"

namespace zelvreg {

struct Form42;

// Does all steps for row `row` of View2, none of whose results is looked at but where the table
// says so. `root` goes from row to row of one routine. Each is judged just before it is taken,
// by the plan of the repair and by what there is by then: one that would take what the finding does
// not name, or a key with something living in it, answers as a denied one does and is noted in the
// outcome, unless the form does not protect. Rights that were given for a key that stays are taken
// back. Whether what the finding names is gone.
bool takeSteps(Form42& form, std::size_t row, const RepairKind& kind, HiveHandle& root);

}  // namespace zelvreg

#endif
