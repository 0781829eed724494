// The profiles of a running Windows.
#ifndef ZELVREG_CONSOLE_PROFILE_LIST_H
#define ZELVREG_CONSOLE_PROFILE_LIST_H

#include <string>
#include <string_view>
#include <vector>

#include "console/ComputerUser.h"

namespace zelvreg::console {

// Nobody else loads hives at keys of such names, so what is there at a start was left behind.
inline constexpr std::string_view ownKeys = "zelvreg-";

inline constexpr const char* userHive = "\\NTUSER.DAT";

// Somebody who is signed in, or whose hive is there. The user's key is that of the first, or the
// one that the hive is loaded at.
struct ListedProfile {
  ComputerUser user;
  std::string folder;
};

struct ProfileList {
  std::vector<ListedProfile> profiles;  // who runs the process comes first
  std::vector<std::string> leftOut;     // one line for each other profile: why
};
// Those of the list of profiles, then folders beside them that it does not name, and the one that
// new users get. Nothing of them is opened.
ProfileList listProfiles();

// Whether a hive is loaded at this key below HKEY_USERS.
bool isLoaded(const std::string& key);

// Whether a file is there, whatever its attributes.
bool isFileThere(const std::string& path);

// As messages name it.
std::string nameInMessages(const ListedProfile& profile);

}  // namespace zelvreg::console

#endif
