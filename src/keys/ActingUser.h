// The user whose keys stand in for those of HKEY_CURRENT_USER.
#ifndef ZELVREG_KEYS_ACTING_USER_H
#define ZELVREG_KEYS_ACTING_USER_H

#include <string>

namespace zelvreg {

// The identifier of another user than the one who runs the process; empty if there is none.
const std::string& actingUser();

// Says whose keys HKEY_CURRENT_USER leads to from now on. Handles in them are not left open then,
// so that they can be unloaded.
void setActingUser(const std::string& sid);

}  // namespace zelvreg

#endif
