// One repair over the ticked rows of the results.
#ifndef ZELVREG_REPAIR_REPAIR_DRIVER_H
#define ZELVREG_REPAIR_REPAIR_DRIVER_H

namespace zelvreg {

struct Form42;

// Asks, unless the program runs by itself; writes the safety export and, if it is switched on, the
// undo journal; then hands the list to the routines, one kind after the other, and keeps the
// counters. A repair whose safety export cannot be written says so and changes nothing; run by
// itself it says nothing.
void runRepair(Form42& form);

// The user's Fix: a copy of the list for the backups, then the repair.
void chameleonButton15_Click(Form42& form);
void cmd_fix_Click(Form42& form);

}  // namespace zelvreg

#endif
