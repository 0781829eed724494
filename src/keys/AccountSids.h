// Security identifiers of accounts.
#ifndef ZELVREG_KEYS_ACCOUNT_SIDS_H
#define ZELVREG_KEYS_ACCOUNT_SIDS_H

#include <windows.h>

#include <string>
#include <vector>

namespace zelvreg {

// The account's identifier; empty if this computer does not know the name.
std::vector<BYTE> lookUpSid(const std::string& account);

// The well-known identifier that stands for everyone; empty if it cannot be allocated.
std::vector<BYTE> everyoneSid();

// "S-1-5-21-…", as keys of HKEY_USERS are named; empty for what is no identifier.
std::string sidText(const std::vector<BYTE>& sid);

// The identifier of the user whose keys HKEY_CURRENT_USER shows; empty if it cannot be found out.
std::string currentUserSid();

// The name of that user's key below HKEY_USERS; empty if it cannot be found out.
std::string currentUsersKey();

// The account that this process runs as, whoever the current user is.
std::string processAccount();

}  // namespace zelvreg

#endif
