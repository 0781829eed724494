// The repair routines. Each walks the results from the last row to the first, takes the steps of
// the table for every ticked row of its kinds, and removes the row when what it names is gone. A
// row that was left alone, or that the repair does not reach, stays in the list without its tick.
// Without protection every row is removed, whether or not its repair worked.
#ifndef ZELVREG_REPAIR_REPAIR_ROUTINES_H
#define ZELVREG_REPAIR_REPAIR_ROUTINES_H

#include <span>

namespace zelvreg {

struct Form42;

// A routine and its kinds; those that it looks for in one walk over the list are together.
struct RepairRoutine {
  void (*run)(Form42& form);
  std::span<const std::span<const int>> walks;
};

// All of them in the order of a repair. The firewall's comes first and takes every row of the kind
// that it shares with deleteusers.
std::span<const RepairRoutine> repairCascade();

void deletefirewall(Form42& form);
void deletebitmap(Form42& form);
void deleteclisidref2(Form42& form);
void deleteclissidref(Form42& form);
void deleteclissidref71(Form42& form);
void deleteclissidref72(Form42& form);
void deletefileext(Form42& form);
void deleteprogref(Form42& form);
void deleteiconref(Form42& form);
void deletehelpchm(Form42& form);
void deletehelpfiles(Form42& form);
// Two loops, one for each kind. If the first has removed the last row, the second runs once and
// finds nothing.
void deletehelpfiles2(Form42& form);
// Counts rows in 16 bits: with more than 32767 rows it repairs nothing.
void deletebadapppath(Form42& form);
void deleteshareddll(Form42& form);
void deletefont(Form42& form);
// Has the same kind as deletefirewall, which comes first and leaves no ticked row.
void deleteusers(Form42& form);
void deleteusers2(Form42& form);
void deletemachine(Form42& form);
void deleteuninstall(Form42& form);
void deleteMRU(Form42& form);
void deleteMRUhist(Form42& form);
void deleteMuiCache(Form42& form);

}  // namespace zelvreg

#endif
