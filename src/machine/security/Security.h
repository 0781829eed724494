// Access lists as the emulated computer keeps them: the self-relative bytes of a Windows security
// descriptor, their text form (SDDL), and the check that decides what may be opened.
#ifndef ZELVREG_MACHINE_SECURITY_SECURITY_H
#define ZELVREG_MACHINE_SECURITY_SECURITY_H

#include <windows.h>

#include <string>
#include <string_view>
#include <vector>

namespace zelvreg::machine {

using Bytes = std::vector<BYTE>;

// The head of the descriptor form without pointers: offsets from its own start, 0 for what is not
// there.
struct RelativeDescriptor {
  BYTE revision;
  BYTE reserved;
  SECURITY_DESCRIPTOR_CONTROL control;
  DWORD owner;
  DWORD group;
  DWORD sacl;
  DWORD dacl;
};

// The rights that the four generic ones stand for on one sort of object.
struct GenericMapping {
  ACCESS_MASK read;
  ACCESS_MASK write;
  ACCESS_MASK execute;
  ACCESS_MASK all;

  [[nodiscard]] ACCESS_MASK map(ACCESS_MASK mask) const;
};

extern const GenericMapping keyRights;
extern const GenericMapping fileRights;

// Who runs the program: the identifiers (binary SIDs) of the user and of its groups.
struct Token {
  std::vector<Bytes> sids;
};

// An owner, a group and an access list. An empty `owner` or `group` means none. Without
// `hasDacl` everybody may do everything. `dacl` is a whole binary ACL.
struct SecurityDescriptor {
  SECURITY_DESCRIPTOR_CONTROL control = 0;
  Bytes owner;
  Bytes group;
  bool hasDacl = false;
  Bytes dacl;

  bool operator==(const SecurityDescriptor&) const = default;
};

// The list that a key or a file has of which nothing is said.
const SecurityDescriptor& defaultKeySecurity();
const SecurityDescriptor& defaultFileSecurity();

// Text form. Throws MachineError with the offending part of the text.
SecurityDescriptor parseSddl(std::string_view text);
std::string formatSddl(const SecurityDescriptor& descriptor);

// Reads a descriptor in either memory form (absolute or self-relative). `descriptor` must be whole.
SecurityDescriptor readDescriptor(const void* descriptor);
// The self-relative form, holding only the parts that `what` names. Where the owner is asked for
// and none is said, it is Administrators.
Bytes selfRelative(const SecurityDescriptor& descriptor, SECURITY_INFORMATION what);

// What setting `given` over `old` leaves: only the parts that `what` names change, generic rights
// are mapped to the object's own.
SecurityDescriptor replaceParts(const SecurityDescriptor& old, const SecurityDescriptor& given,
                                SECURITY_INFORMATION what, const GenericMapping& rights);

// The SID of the user of a machine folder, S-1-5-21-1-1-1-1001.
const Bytes& folderUserSid();

// The descriptor of a new object in a container that has `parent`: its inheritable entries, those
// of CREATOR OWNER for `creator`. Where there are none, full control for Administrators and SYSTEM.
SecurityDescriptor inheritFrom(const SecurityDescriptor& parent, bool newIsContainer,
                               const GenericMapping& rights,
                               const Bytes& creator = folderUserSid());

// All rights that the list gives these accounts, without those over the audit list; every bit
// where there is no list. The owner may always read and change the list.
ACCESS_MASK rightsGiven(const SecurityDescriptor& descriptor, const Token& token,
                        const GenericMapping& rights);
// What opening with `desired` gives who has these rights, or 0 if it is denied. MAXIMUM_ALLOWED and
// generic rights are understood.
ACCESS_MASK grantedOf(ACCESS_MASK given, ACCESS_MASK desired, const GenericMapping& rights);

// The rights that opening with `desired` gives, or 0 if it is denied. Both of the above in
// one.
ACCESS_MASK grantedAccess(const SecurityDescriptor& descriptor, const Token& token,
                          ACCESS_MASK desired, const GenericMapping& rights);

}  // namespace zelvreg::machine

#endif
