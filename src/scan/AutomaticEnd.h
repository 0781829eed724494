// How a scan ends in the automatic modes.
#ifndef ZELVREG_SCAN_AUTOMATIC_END_H
#define ZELVREG_SCAN_AUTOMATIC_END_H

namespace zelvreg {

struct Form42;

// Ends the process in the automatic modes, after writing the result files or the answer to the
// suite, and after the repair where one was asked for. Returns only when none is in force.
void endAutomaticScan(Form42& form);

}  // namespace zelvreg

#endif
