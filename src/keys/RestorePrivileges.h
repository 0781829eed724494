// The privileges that open every key to a program that restores the registry.
#ifndef ZELVREG_KEYS_RESTORE_PRIVILEGES_H
#define ZELVREG_KEYS_RESTORE_PRIVILEGES_H

namespace zelvreg {

// Enables the privileges to back up, to restore and to take ownership, for as long as it lives. One
// that the user's token lacks stays off, and access lists decide. There must be one object at a
// time.
class RestorePrivileges {
 public:
  RestorePrivileges();
  ~RestorePrivileges();
  RestorePrivileges(const RestorePrivileges&) = delete;
  RestorePrivileges& operator=(const RestorePrivileges&) = delete;
};

}  // namespace zelvreg

#endif
