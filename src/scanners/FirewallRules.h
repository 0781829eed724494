// Row 11: firewall rules for programs that are gone.
#ifndef ZELVREG_SCANNERS_FIREWALL_RULES_H
#define ZELVREG_SCANNERS_FIREWALL_RULES_H

namespace zelvreg {

struct Form42;

// Reports each rule whose application path leads nowhere, and marks the row's count bold and red
// in any case. Runs to its end once started.
void Command32(Form42& form);

}  // namespace zelvreg

#endif
