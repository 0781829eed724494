// One scan over the sixteen categories, and the controls that start and stop it.
#ifndef ZELVREG_SCAN_SCAN_DRIVER_H
#define ZELVREG_SCAN_SCAN_DRIVER_H

namespace zelvreg {

struct Form42;

// Runs the routines of every ticked row in order and shows the results page. Without a ticked row
// it says so and leaves the progress panel open, with its buttons disabled, until the user clicks
// Cancel.
void runScan(Form42& form);

// Stores the ticks of the rows for the next start, but for those that a policy has decided.
void saveSelection(const Form42& form);

// Restores the ticks. A row without a stored tick is not ticked; but when none was ever stored, a
// user who starts the program finds all of them ticked. To the letter none is. A policy wins.
void restoreSelection(Form42& form);

// If a policy names the categories, ticks these and no others, and locks all rows.
void applyCategoryPolicy(Form42& form);

void cmd_start_Click(Form42& form);
void cmd_cancel_Click(Form42& form);
// Cancel on the progress panel: shows the results at once. The running scanner ends soon after.
void chameleonButton12_Click(Form42& form);

}  // namespace zelvreg

#endif
