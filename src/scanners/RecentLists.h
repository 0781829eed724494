// Row 15: what the user has recently opened, typed and searched for.
#ifndef ZELVREG_SCANNERS_RECENT_LISTS_H
#define ZELVREG_SCANNERS_RECENT_LISTS_H

namespace zelvreg {

struct Form42;

// Reports every named value of the shell's eight lists and of their subkeys, whatever its data:
// these are traces to remove, not references to test. Without a finding the row's count stays as it
// was.
void MRUhist(Form42& form);

}  // namespace zelvreg

#endif
