// Whom a finding belongs to, where several users of a computer are scanned.
#ifndef ZELVREG_EVIDENCE_FINDING_OWNER_H
#define ZELVREG_EVIDENCE_FINDING_OWNER_H

#include <string>
#include <vector>

namespace zelvreg {

struct Form42;

// A finding belongs to the current user if the entry that was judged stands below
// HKEY_CURRENT_USER or below the user's own key of HKEY_USERS, also if the classes root shows it;
// to another user if it stands below that user's key. All others are the computer's.

// For each row of View2 the key below HKEY_USERS of whose finding it is, one of those given; empty
// for the computer's.
std::vector<std::string> ownersOfRows(const Form42& form, const std::string& currentUser,
                                      const std::vector<std::string>& otherUsers);

// Removes the rows of View2 that `form.userScope`, which must be set, leaves to other scans, and
// counts anew in their categories. Gives for each row that stays whether it is the current user's.
std::vector<bool> keepRowsOfScope(Form42& form);

}  // namespace zelvreg

#endif
