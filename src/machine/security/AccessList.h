// Reading and building the binary access lists (ACLs) that security descriptors hold.
#ifndef ZELVREG_MACHINE_SECURITY_ACCESS_LIST_H
#define ZELVREG_MACHINE_SECURITY_ACCESS_LIST_H

#include <windows.h>

#include <optional>
#include <span>
#include <vector>

#include "machine/security/Security.h"

namespace zelvreg::machine {

// One entry: whom it names, and which rights it allows or denies. An entry of another kind names
// nobody; the bytes after its header are kept in `unread`.
struct AccessEntry {
  BYTE type = ACCESS_ALLOWED_ACE_TYPE;
  BYTE flags = 0;
  ACCESS_MASK mask = 0;
  Bytes sid;
  Bytes unread;
};

// The same where it lies in an ACL, which must stay as it is. An entry that names nobody has an
// empty `sid`.
struct EntryView {
  std::size_t start = 0;  // offset in the ACL
  std::size_t size = 0;
  BYTE type = ACCESS_ALLOWED_ACE_TYPE;
  BYTE flags = 0;
  ACCESS_MASK mask = 0;
  std::span<const BYTE> sid;
};
// The entry that begins at `start`; nothing if no whole entry does.
std::optional<EntryView> entryAt(const Bytes& acl, std::size_t start);

// Calls `take` for each entry of a whole ACL in list order.
template <typename Take>
void forEachEntry(const Bytes& acl, Take&& take) {
  for (auto entry = entryAt(acl, sizeof(ACL)); entry;
       entry = entryAt(acl, entry->start + entry->size)) {
    take(*entry);
  }
}

// The entries of a whole ACL in list order.
std::vector<AccessEntry> entriesOf(const Bytes& acl);

// The ACL, revision 2, just large enough for its entries.
Bytes aclOf(const std::vector<AccessEntry>& entries);

// Whether the header is that of an ACL and its entries lie whole within its size.
bool isWholeAcl(const ACL* acl);

// The first byte after the entries of an ACL; null if an entry runs past its size. `acl` must
// have a good header.
BYTE* endOfEntries(ACL* acl);

}  // namespace zelvreg::machine

#endif
