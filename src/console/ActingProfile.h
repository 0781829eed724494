// Working as one of the users of a running Windows.
#ifndef ZELVREG_CONSOLE_ACTING_PROFILE_H
#define ZELVREG_CONSOLE_ACTING_PROFILE_H

#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "console/Computer.h"
#include "console/ProfileList.h"
#include "console/UserVariables.h"

namespace zelvreg::console {

// The system's calls that load hive files at a key below HKEY_USERS, with their codes, so that a
// test can stand in for them.
struct ProfileCalls {
  std::function<LONG(const std::string& key, const std::string& file)> load;
  std::function<LONG(const std::string& key)> unload;
};
ProfileCalls systemProfileCalls();

// The folder of the copies that scans work on. It is there only during a scan, and nobody but
// Administrators and SYSTEM may look into it.
std::string copiesFolder();

// Hives that this process has loaded.
class LoadedHives {
 public:
  explicit LoadedHives(ProfileCalls callsInUse) : calls(std::move(callsInUse)) {}

  // What a process that was stopped has left: loaded hives, and copies.
  void removeLeftovers();

  // Gives the system's code.
  LONG load(const std::string& key, const std::string& file, const ListedProfile& profile);
  // What cannot be unloaded, since another program holds one of its keys, is tried again with the
  // next call.
  void unloadAll();
  // One line for each profile that is still loaded.
  [[nodiscard]] std::vector<std::string> stillLoaded() const;

 private:
  ProfileCalls calls;
  std::vector<std::pair<std::string, ListedProfile>> loaded;  // by key
};

// While it lives, HKEY_CURRENT_USER, the user's classes and the user's variables are those of this
// profile. Of somebody who is not signed in, a scan works on a copy of the hives, so that it
// changes nothing and keeps nobody from signing in; a repair loads the hives themselves. There must
// be one object at a time.
class ActingProfile {
 public:
  // Throws std::runtime_error with one line if the user's keys cannot be had.
  ActingProfile(const ListedProfile& profileInUse, UserWork work, LoadedHives& hivesInUse);
  ~ActingProfile();
  ActingProfile(const ActingProfile&) = delete;
  ActingProfile& operator=(const ActingProfile&) = delete;

 private:
  void open(UserWork work);
  void load(const std::string& userFile, const std::string& classesFile);
  void makeCopies();
  void require(LONG code);
  [[noreturn]] void leaveOut(const std::string& why) const;
  void close();

  const ListedProfile profile;
  LoadedHives& hives;
  HKEY root = nullptr;
  HKEY classes = nullptr;
  bool hasCopies = false;
  std::optional<UserVariables> variables;
};

}  // namespace zelvreg::console

#endif
