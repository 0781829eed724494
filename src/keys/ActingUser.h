// The user whose keys stand in for those of HKEY_CURRENT_USER.
#ifndef ZELVREG_KEYS_ACTING_USER_H
#define ZELVREG_KEYS_ACTING_USER_H

#include <windows.h>

#include <optional>
#include <string>

namespace zelvreg {

// Another user than the one who runs the process.
struct ActingUser {
  std::string sid;         // "S-1-5-21-…"
  std::string key;         // below HKEY_USERS
  std::string account;     // of the one who runs the process, which rights are granted to
  HKEY classes = nullptr;  // the user's own classes, open as long as this holds; null without any
};

// Null if there is none.
const ActingUser* actingUser();

// Says whose keys HKEY_CURRENT_USER leads to from now on. Handles in them are not left open then,
// so that they can be unloaded. The system merges only the classes of who runs the process, so that
// OpenKey and WideKey merge this user's.
void setActingUser(std::optional<ActingUser> user);

}  // namespace zelvreg

#endif
