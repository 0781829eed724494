// What the last repair has done, in one sentence in place of the number of the results, with a
// button that undoes it.
#ifndef ZELVREG_SCAN_OUTCOME_LINE_H
#define ZELVREG_SCAN_OUTCOME_LINE_H

namespace zelvreg {

struct Form42;

// Shows `form.repairOutcome`. The undo is offered if it would restore the safety export of that
// repair. With all safeguards lifted the number of the results stays.
void showOutcome(Form42& form);

// Says it again in the language in use, where it stands.
void retellOutcome(Form42& form);

// Shows the number of the results again.
void dropOutcome(Form42& form);

// The same, if rows have come or gone since the repair.
void dropOldOutcome(Form42& form);

}  // namespace zelvreg

#endif
