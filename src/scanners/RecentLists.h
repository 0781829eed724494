// Row 15: what the user has lately opened, typed and searched for.
#ifndef ZELVREG_SCANNERS_RECENT_LISTS_H
#define ZELVREG_SCANNERS_RECENT_LISTS_H

#include "form/Form42.h"

namespace zelvreg {

// Reports every named value of the shell's eight lists and of their subkeys, whatever it holds:
// traces are swept here, not tested. Without a finding the row keeps what it showed.
void MRUhist(Form42& form);

}  // namespace zelvreg

#endif
