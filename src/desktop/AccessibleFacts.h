// What a control is for somebody who does not see it.
#ifndef ZELVREG_DESKTOP_ACCESSIBLE_FACTS_H
#define ZELVREG_DESKTOP_ACCESSIBLE_FACTS_H

#include <string>

namespace zelvreg::desktop {

// Roles and states are the system's numbers (ROLE_SYSTEM_, STATE_SYSTEM_). An empty text leaves
// what the system finds out by itself; a role of 0 does the same.
struct AccessibleFacts {
  long role = 0;
  // Are added to what the system finds out: whether it has the focus, whether it can be used.
  long states = 0;
  std::string name;
  std::string value;
  std::string description;
};

}  // namespace zelvreg::desktop

#endif
