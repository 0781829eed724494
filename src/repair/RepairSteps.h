// Carrying out what the table tells for one row.
#ifndef ZELVREG_REPAIR_REPAIR_STEPS_H
#define ZELVREG_REPAIR_REPAIR_STEPS_H

#include <cstddef>
#include <string>

#include "form/Form42.h"
#include "repair/RepairTable.h"

namespace zelvreg {

// Does all steps for row `row` of View2, none of whose results is looked at but where the table
// says so. `shortRoot` goes from row to row of one routine. A delete that would take a protected
// key answers as a denied one does, before anything is deleted, and the key is noted in sparedKeys,
// unless the form repairs protected keys.
void takeSteps(Form42& form, std::size_t row, const RepairKind& kind, std::string& shortRoot);

}  // namespace zelvreg

#endif
