// A user of the computer that the console program works on.
#ifndef ZELVREG_CONSOLE_COMPUTER_USER_H
#define ZELVREG_CONSOLE_COMPUTER_USER_H

#include <string>

namespace zelvreg::console {

// In UTF-8.
struct ComputerUser {
  std::string name;  // of the profile's folder
  std::string sid;   // "S-1-5-21-…"
  std::string key;   // below HKEY_USERS
};

}  // namespace zelvreg::console

#endif
