// A copy of what a repair is about to delete or change, in the registry editor's own format.
#ifndef ZELVREG_REPAIR_SAFETY_EXPORT_H
#define ZELVREG_REPAIR_SAFETY_EXPORT_H

#include "repair/RepairPlan.h"

namespace zelvreg {

struct Form42;

// Writes what the repair will take to backup\registry in the program's folder. True if that worked,
// or if nothing would change.
bool writeSafetyExport(Form42& form, const RepairPlan& repair);

// Deletes the export of a repair that does not begin.
void removeSafetyExport(Form42& form);

}  // namespace zelvreg

#endif
