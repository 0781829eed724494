// Gives the user the rights to read and remove a key or a file. What is changed stays changed.
#ifndef ZELVREG_REGISTRY_SETPERMISSION_H
#define ZELVREG_REGISTRY_SETPERMISSION_H

#include <windows.h>

#include <array>
#include <string>
#include <vector>

#include "roots/Roots.h"

namespace zelvreg {

struct Form42;

using SidBytes = std::vector<BYTE>;

// One entry that an access list is to hold.
struct AccessEntry {
  std::string User;  // account name; empty when the SID is given
  DWORD AccessMask = 0;
  BYTE AceFlags = 0;
  BYTE AceType = ACCESS_ALLOWED_ACE_TYPE;
  SidBytes sid;  // empty until looked up
};
using AccessTable = std::array<AccessEntry, 3>;

// A descriptor in absolute form and the list that it points to. It must not be moved once built.
struct NewDescriptor {
  SECURITY_DESCRIPTOR descriptor{};
  std::vector<BYTE> acl;
};

// Rewrites the access list of one key of the 64-bit view: everyone may read its subkeys, the user
// may work on it, and its future subkeys inherit a denied entry for the user. Sets GrantKeyStatus
// to 0 if it worked and to 1 if not; the key is as it was then.
void GrantKeyAccess(Form42& form, HiveHandle hive, const std::string& key, const std::string& user);

// The list of an open key, rewritten; false, and GrantKeyStatus 1, if any step failed.
bool UpdateKeyDacl(Form42& form, HKEY key, AccessTable& table);

// A new list in canonical order: denied entries of the table, the old explicit entries of accounts
// that the table does not name, allowed entries of the table, then the old inherited entries, all
// of them. Looks up the accounts of the table. False if an account is unknown or a step fails.
bool BuildSecurityDescriptor(PSECURITY_DESCRIPTOR oldDescriptor, AccessTable& table,
                             NewDescriptor& newDescriptor);

// Adds an entry at the end of a list; returns what AddAce does.
BOOL AppendAce(PACL acl, BYTE aceType, BYTE aceFlags, DWORD mask, const SidBytes& sid);

bool SidInTable(const AccessTable& table, PSID sid);

// Adds the user with the rights of `mask` to the list of a file (one entry) or folder (two, so that
// what lies below inherits), in place of the user's old entries. A failing step leaves all as it
// was.
void SetAccess(const std::string& user, const std::string& path, DWORD mask);

// Whether rights are given, or only the other steps of giving them are done.
enum class Rights { Left, Given };

// Gives the user all rights to a path in a recycle bin, trimming `path`; any other path is left as
// it is.
void changepermission(std::string& path, Rights rights = Rights::Given);

}  // namespace zelvreg

#endif
