// Row 11: firewall rules for programs that are gone.
#ifndef ZELVREG_SCANNERS_FIREWALL_RULES_H
#define ZELVREG_SCANNERS_FIREWALL_RULES_H

namespace zelvreg {

struct Form42;

// Reports each rule whose program is missing. The row's count becomes bold and red in any case.
// Once started, it runs to its end.
void Command32(Form42& form);

}  // namespace zelvreg

#endif
