// Profiles of a running Windows, and working as one of their users.
#ifndef ZELVREG_CONSOLE_ACTING_PROFILE_H
#define ZELVREG_CONSOLE_ACTING_PROFILE_H

#include <windows.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "console/Computer.h"

namespace zelvreg::console {

// The system's calls that load hive files, with their codes, so that a test can stand in for them.
struct ProfileCalls {
  // For this process alone, until the last handle is closed.
  std::function<LONG(const std::string& file, HKEY& root)> loadPrivately;
  // At a key below HKEY_USERS, for everybody.
  std::function<LONG(const std::string& key, const std::string& file)> load;
  std::function<LONG(const std::string& key)> unload;
};
ProfileCalls systemProfileCalls();

// A profile of the list of profiles whose hive is there, or who is signed in. The key of the first
// is that of a signed-in user, or the one that the hive is loaded at for a repair.
struct ListedProfile {
  ComputerUser user;
  std::string folder;
};
// Who runs the process comes first.
std::vector<ListedProfile> listedProfiles();

// Unloads what a process that was stopped has left loaded.
void unloadLeftovers(const ProfileCalls& calls);

// While it lives, HKEY_CURRENT_USER and the user's variables are those of this profile. Of somebody
// who is not signed in, a scan works on a copy of the hives that only this process sees, so that it
// changes nothing and keeps nobody from signing in; a repair loads the hives themselves. There must
// be one object at a time.
class ActingProfile {
 public:
  // Throws std::runtime_error with one line if the user's keys cannot be had.
  ActingProfile(const ListedProfile& profile, UserWork work, const ProfileCalls& callsInUse);
  ~ActingProfile();
  ActingProfile(const ActingProfile&) = delete;
  ActingProfile& operator=(const ActingProfile&) = delete;

 private:
  void open(const ListedProfile& profile, UserWork work);
  void openCopy(const ListedProfile& profile);
  void openHives(const ListedProfile& profile);
  void require(LONG code, const ListedProfile& profile);
  void setVariables(const ListedProfile& profile);
  void setVariable(const std::string& name, const std::string& value);
  void close();

  const ProfileCalls& calls;
  HKEY root = nullptr;
  std::vector<std::string> loaded;  // keys below HKEY_USERS
  std::string copies;               // the folder with the copies, or empty
  // The variables that were set, with what they were before.
  std::vector<std::pair<std::string, std::string>> variables;
};

}  // namespace zelvreg::console

#endif
