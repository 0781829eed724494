// How a scan ends in the automatic modes.
#ifndef ZELVREG_SCAN_AUTOMATIC_END_H
#define ZELVREG_SCAN_AUTOMATIC_END_H

namespace zelvreg {

struct Form42;

// Whether there is an automatic mode.
bool endsItself(const Form42& form);

// In an automatic mode, repairs if that was asked for, writes the result files or the answer to the
// suite, and ends the process. Returns only if there is no automatic mode.
void endAutomaticScan(Form42& form);

}  // namespace zelvreg

#endif
