// Takes the steps of one row.
#ifndef ZELVREG_REPAIR_REPAIR_STEPS_H
#define ZELVREG_REPAIR_REPAIR_STEPS_H

#include <cstddef>
#include <string>

#include "repair/RepairTable.h"

namespace zelvreg {

struct Form42;

// Takes all steps of row `row` of View2. Their results are ignored, except where the table says
// otherwise. `root` is passed on from row to row of one routine. Each step is judged just before it
// is taken, by the plan of the repair and by the registry as it is then. With protection, a step
// that would take what the finding does not name, or a key with something in use, is refused as if
// access were denied, and is noted in the outcome. Rights that were given for a key that stays are
// taken back. Returns whether what the finding names is gone.
bool takeSteps(Form42& form, std::size_t row, const RepairKind& kind, HiveHandle& root);

}  // namespace zelvreg

#endif
