// Row 11: firewall rules for programs that are gone.
#ifndef ZELVREG_SCANNERS_FIREWALL_RULES_H
#define ZELVREG_SCANNERS_FIREWALL_RULES_H

#include "form/Form42.h"

namespace zelvreg {

// Reports each rule whose application path leads nowhere, and marks the row's count bold and red
// in any case. Runs to its end once started.
void Command32(Form42& form);

}  // namespace zelvreg

#endif
