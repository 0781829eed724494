// One repair over the ticked rows of the results.
#ifndef ZELVREG_REPAIR_REPAIR_DRIVER_H
#define ZELVREG_REPAIR_REPAIR_DRIVER_H

namespace zelvreg {

struct Form42;

// Asks, except in an automatic mode; writes the safety export and, if it is switched on, the undo
// journal; then runs the routines in their order and saves the counters. If the safety export
// cannot be written, it says so, except in an automatic mode, and changes nothing.
void runRepair(Form42& form);

// The Fix button: writes a copy of the fix list, then repairs.
void chameleonButton15_Click(Form42& form);
void cmd_fix_Click(Form42& form);

}  // namespace zelvreg

#endif
