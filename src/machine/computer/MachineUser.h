// A user of the emulated computer.
#ifndef ZELVREG_MACHINE_COMPUTER_MACHINE_USER_H
#define ZELVREG_MACHINE_COMPUTER_MACHINE_USER_H

#include <filesystem>
#include <string>
#include <vector>

namespace zelvreg::machine {

// All texts are UTF-8.
struct MachineUser {
  std::string name;     // of the profile's folder
  std::string sid;      // "S-1-5-21-…"
  std::string key;      // below HKEY_USERS: the SID, or ".DEFAULT" for the system's own account
  std::string profile;  // "C:\\Users\\name"; empty if it is not known
  bool hasOldProfile = false;                // of the time before AppData
  std::vector<std::filesystem::path> hives;  // of an offline disk
  std::vector<std::string> damage;           // one line for each of its hives that was left out
};

}  // namespace zelvreg::machine

#endif
