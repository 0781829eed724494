// The privileges by which a program that restores the registry is let in everywhere.
#ifndef ZELVREG_KEYS_RESTORE_PRIVILEGES_H
#define ZELVREG_KEYS_RESTORE_PRIVILEGES_H

namespace zelvreg {

// Enables those to read, write and make keys for a backup and to become the owner of keys, for as
// long as it lives. A privilege that the user's token lacks stays off: access lists decide then.
// One at a time.
class RestorePrivileges {
 public:
  RestorePrivileges();
  ~RestorePrivileges();
  RestorePrivileges(const RestorePrivileges&) = delete;
  RestorePrivileges& operator=(const RestorePrivileges&) = delete;
};

}  // namespace zelvreg

#endif
