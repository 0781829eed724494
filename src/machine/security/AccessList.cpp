#include "machine/security/AccessList.h"

#include <cstring>
#include <utility>

#include "machine/security/Accounts.h"

namespace zelvreg::machine {

namespace {

constexpr std::size_t entryHead = sizeof(ACE_HEADER) + sizeof(ACCESS_MASK);
constexpr BYTE highestRevision = 4;

template <typename Part>
void append(Bytes& bytes, const Part& part) {
  const auto* start = reinterpret_cast<const BYTE*>(&part);
  bytes.insert(bytes.end(), start, start + sizeof part);
}

// Whether an entry's bytes hold a mask and a whole identifier.
bool holdsSid(const BYTE* entry, std::size_t size) {
  return size >= entryHead + 8 && size >= entryHead + sidLength(entry + entryHead);
}

}  // namespace

std::optional<EntryView> entryAt(const Bytes& acl, std::size_t start) {
  ACE_HEADER header{};
  if (start + sizeof header > acl.size()) return std::nullopt;
  const BYTE* bytes = acl.data() + start;
  std::memcpy(&header, bytes, sizeof header);
  if (header.AceSize < sizeof header || start + header.AceSize > acl.size()) return std::nullopt;
  EntryView entry{start, header.AceSize, header.AceType, header.AceFlags, 0, {}};
  if (header.AceType <= ACCESS_DENIED_ACE_TYPE && holdsSid(bytes, header.AceSize)) {
    std::memcpy(&entry.mask, bytes + sizeof header, sizeof entry.mask);
    entry.sid = {bytes + entryHead, sidLength(bytes + entryHead)};
  }
  return entry;
}

std::vector<AccessEntry> entriesOf(const Bytes& acl) {
  std::vector<AccessEntry> entries;
  forEachEntry(acl, [&](const EntryView& view) {
    AccessEntry entry{view.type, view.flags, view.mask, {view.sid.begin(), view.sid.end()}, {}};
    if (view.sid.empty()) {
      const BYTE* start = acl.data() + view.start;
      entry.unread.assign(start + sizeof(ACE_HEADER), start + view.size);
    }
    entries.push_back(std::move(entry));
  });
  return entries;
}

Bytes aclOf(const std::vector<AccessEntry>& entries) {
  Bytes acl;
  append(acl, ACL{ACL_REVISION, 0, 0, static_cast<WORD>(entries.size()), 0});
  for (const AccessEntry& entry : entries) {
    const std::size_t start = acl.size();
    append(acl, ACE_HEADER{entry.type, entry.flags, 0});
    if (entry.unread.empty()) append(acl, entry.mask);
    acl.insert(acl.end(), entry.sid.begin(), entry.sid.end());
    acl.insert(acl.end(), entry.unread.begin(), entry.unread.end());
    const auto entrySize = static_cast<WORD>(acl.size() - start);
    std::memcpy(acl.data() + start + offsetof(ACE_HEADER, AceSize), &entrySize, sizeof entrySize);
  }
  const auto size = static_cast<WORD>(acl.size());
  std::memcpy(acl.data() + offsetof(ACL, AclSize), &size, sizeof size);
  return acl;
}

BYTE* endOfEntries(ACL* acl) {
  BYTE* start = reinterpret_cast<BYTE*>(acl);
  std::size_t at = sizeof(ACL);
  for (WORD index = 0; index < acl->AceCount; ++index) {
    ACE_HEADER header{};
    if (at + sizeof header > acl->AclSize) return nullptr;
    std::memcpy(&header, start + at, sizeof header);
    if (header.AceSize < sizeof header || at + header.AceSize > acl->AclSize) return nullptr;
    at += header.AceSize;
  }
  return start + at;
}

bool isWholeAcl(const ACL* acl) {
  if (acl == nullptr || acl->AclRevision < ACL_REVISION || acl->AclRevision > highestRevision) {
    return false;
  }
  return acl->AclSize >= sizeof(ACL) && endOfEntries(const_cast<ACL*>(acl)) != nullptr;
}

}  // namespace zelvreg::machine
