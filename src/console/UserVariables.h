// The variables of a user who is not the one who runs the process.
#ifndef ZELVREG_CONSOLE_USER_VARIABLES_H
#define ZELVREG_CONSOLE_USER_VARIABLES_H

#include <string>
#include <utility>
#include <vector>

#include "console/ProfileList.h"

namespace zelvreg::console {

// While it lives, the process has the computer's variables and those of this user, and none of who
// runs it. HKEY_CURRENT_USER must be the user's.
class UserVariables {
 public:
  explicit UserVariables(const ListedProfile& profile);
  ~UserVariables();
  UserVariables(const UserVariables&) = delete;
  UserVariables& operator=(const UserVariables&) = delete;

 private:
  std::vector<std::pair<std::string, std::string>> before;
};

}  // namespace zelvreg::console

#endif
