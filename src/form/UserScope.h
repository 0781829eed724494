// Whose findings a scan lists.
#ifndef ZELVREG_FORM_USER_SCOPE_H
#define ZELVREG_FORM_USER_SCOPE_H

#include <string>
#include <vector>

namespace zelvreg {

// Of a computer whose users are scanned one after the other, each as the current one: what belongs
// to the current user, and in one of the scans also what is the computer's. Keys are those below
// HKEY_USERS.
struct UserScope {
  std::string currentUser;
  std::vector<std::string> otherUsers;  // who have scans of their own
  bool listsComputers = false;
};

}  // namespace zelvreg

#endif
