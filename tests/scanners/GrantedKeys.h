// Whether a scanner has given the current user access to a key.
#ifndef ZELVREG_TESTS_SCANNERS_GRANTED_KEYS_H
#define ZELVREG_TESTS_SCANNERS_GRANTED_KEYS_H

#include <algorithm>
#include <vector>

#include "keys/AccountSids.h"
#include "support/ComputerFixture.h"

namespace zelvreg::fixture {

// A grant leaves an entry for the user alone, which no list starts with.
inline bool namesUser(const std::vector<AccessRecord>& list, const std::string& user) {
  const std::vector<BYTE> sid = lookUpSid(user);
  return std::any_of(list.begin(), list.end(),
                     [&](const AccessRecord& record) { return record.sid == sid; });
}

}  // namespace zelvreg::fixture

#endif
