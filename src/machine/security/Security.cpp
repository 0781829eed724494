#include "machine/security/Security.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <span>

#include "machine/security/AccessList.h"
#include "machine/security/Accounts.h"

namespace zelvreg::machine {

const GenericMapping keyRights{KEY_READ, KEY_WRITE, KEY_READ, KEY_ALL_ACCESS};
const GenericMapping fileRights{0x120089, 0x120116, 0x1200A0, 0x1F01FF};

namespace {

constexpr ACCESS_MASK genericRights = GENERIC_ALL | GENERIC_EXECUTE | GENERIC_WRITE | GENERIC_READ;
constexpr ACCESS_MASK everyRight = 0xFFFFFFFF;
constexpr BYTE inheritanceFlags =
    OBJECT_INHERIT_ACE | CONTAINER_INHERIT_ACE | NO_PROPAGATE_INHERIT_ACE | INHERIT_ONLY_ACE;
constexpr SECURITY_DESCRIPTOR_CONTROL daclControl = SE_DACL_PRESENT | SE_DACL_DEFAULTED |
                                                    SE_DACL_AUTO_INHERIT_REQ |
                                                    SE_DACL_AUTO_INHERITED | SE_DACL_PROTECTED;

SECURITY_DESCRIPTOR_CONTROL bits(unsigned value) {
  return static_cast<SECURITY_DESCRIPTOR_CONTROL>(value);
}

Bytes aclBytes(const void* acl) {
  ACL header{};
  std::memcpy(&header, acl, sizeof header);
  const auto* start = static_cast<const BYTE*>(acl);
  return {start, start + header.AclSize};
}

// Puts the parts at these addresses (null: none) into a descriptor.
SecurityDescriptor fromParts(SECURITY_DESCRIPTOR_CONTROL control, const void* owner,
                             const void* group, const void* dacl) {
  SecurityDescriptor read;
  read.control = bits(control & ~unsigned{SE_SELF_RELATIVE});
  if (owner != nullptr) read.owner = sidBytes(owner);
  if (group != nullptr) read.group = sidBytes(group);
  read.hasDacl = (control & SE_DACL_PRESENT) != 0 && dacl != nullptr;
  if (read.hasDacl) read.dacl = aclBytes(dacl);
  return read;
}

// Rights that are in force on the object itself are written as the object's own.
Bytes withOwnRights(const Bytes& dacl, const GenericMapping& rights) {
  Bytes own = dacl;
  std::size_t used = sizeof(ACL);
  forEachEntry(dacl, [&](const EntryView& entry) {
    if ((entry.flags & INHERIT_ONLY_ACE) == 0 && !entry.sid.empty()) {
      const ACCESS_MASK mask = rights.map(entry.mask);
      std::memcpy(own.data() + entry.start + sizeof(ACE_HEADER), &mask, sizeof mask);
    }
    used = entry.start + entry.size;
  });
  // The list is kept just large enough.
  own.resize(used);
  const auto size = static_cast<WORD>(used);
  std::memcpy(own.data() + offsetof(ACL, AclSize), &size, sizeof size);
  return own;
}

// What one entry of a container's list becomes in the list of a new container or object.
class Inheritance {
 public:
  Inheritance(const GenericMapping& objectRights, const Bytes& creatorSid)
      : rights(objectRights), creator(creatorSid) {}

  void add(const AccessEntry& entry, bool newIsContainer) {
    const bool goesOn = newIsContainer && (entry.flags & NO_PROPAGATE_INHERIT_ACE) == 0;
    const BYTE reach = newIsContainer ? CONTAINER_INHERIT_ACE : OBJECT_INHERIT_ACE;
    const bool inForce = (entry.flags & reach) != 0;
    const AccessEntry effective = effectiveForm(entry);
    const auto passedOn =
        static_cast<BYTE>(entry.flags & (OBJECT_INHERIT_ACE | CONTAINER_INHERIT_ACE));
    if (inForce && goesOn && effective.mask == entry.mask && effective.sid == entry.sid) {
      append(entry, passedOn);
      return;
    }
    // An entry that reads differently here and further down becomes two.
    if (inForce) append(effective, 0);
    if (goesOn && passedOn != 0) append(entry, passedOn | INHERIT_ONLY_ACE);
  }

  std::vector<AccessEntry> entries;

 private:
  [[nodiscard]] AccessEntry effectiveForm(const AccessEntry& entry) const {
    AccessEntry effective = entry;
    effective.mask = rights.map(entry.mask);
    if (entry.sid == creatorOwnerSid()) effective.sid = creator;
    return effective;
  }

  void append(AccessEntry entry, unsigned flags) {
    const unsigned kept = entry.flags & ~unsigned{inheritanceFlags};
    entry.flags = static_cast<BYTE>(kept | flags | INHERITED_ACE);
    entries.push_back(std::move(entry));
  }

  const GenericMapping& rights;
  const Bytes& creator;
};

bool isMember(const Token& token, std::span<const BYTE> sid) {
  return std::ranges::any_of(token.sids,
                             [sid](const Bytes& known) { return std::ranges::equal(known, sid); });
}

ACCESS_MASK ownersRights(const SecurityDescriptor& descriptor, const Token& token) {
  const Bytes& owner = descriptor.owner.empty() ? administratorsSid() : descriptor.owner;
  return isMember(token, owner) ? READ_CONTROL | WRITE_DAC : 0;
}

}  // namespace

ACCESS_MASK GenericMapping::map(ACCESS_MASK mask) const {
  ACCESS_MASK mapped = mask & ~genericRights;
  if ((mask & GENERIC_READ) != 0) mapped |= read;
  if ((mask & GENERIC_WRITE) != 0) mapped |= write;
  if ((mask & GENERIC_EXECUTE) != 0) mapped |= execute;
  if ((mask & GENERIC_ALL) != 0) mapped |= all;
  return mapped;
}

const SecurityDescriptor& defaultKeySecurity() {
  static const SecurityDescriptor descriptor =
      parseSddl("D:(A;CI;KA;;;BA)(A;CI;KA;;;SY)(A;CI;KR;;;BU)");
  return descriptor;
}

const SecurityDescriptor& defaultFileSecurity() {
  static const SecurityDescriptor descriptor =
      parseSddl("D:(A;OICI;FA;;;BA)(A;OICI;FA;;;SY)(A;OICI;0x1200a9;;;BU)");
  return descriptor;
}

SecurityDescriptor readDescriptor(const void* descriptor) {
  RelativeDescriptor head{};
  std::memcpy(&head, descriptor, sizeof head.revision + sizeof head.reserved + sizeof head.control);
  if ((head.control & SE_SELF_RELATIVE) == 0) {
    SECURITY_DESCRIPTOR absolute{};
    std::memcpy(&absolute, descriptor, sizeof absolute);
    return fromParts(absolute.Control, absolute.Owner, absolute.Group, absolute.Dacl);
  }
  std::memcpy(&head, descriptor, sizeof head);
  const auto* start = static_cast<const BYTE*>(descriptor);
  const auto at = [start](DWORD offset) { return offset == 0 ? nullptr : start + offset; };
  return fromParts(head.control, at(head.owner), at(head.group), at(head.dacl));
}

Bytes selfRelative(const SecurityDescriptor& descriptor, SECURITY_INFORMATION what) {
  RelativeDescriptor head{};
  head.revision = SECURITY_DESCRIPTOR_REVISION;
  head.control = bits((descriptor.control & ~unsigned{daclControl}) | SE_SELF_RELATIVE);
  Bytes result(sizeof head);
  const auto append = [&result](const Bytes& part) {
    const auto offset = static_cast<DWORD>(result.size());
    result.insert(result.end(), part.begin(), part.end());
    return part.empty() ? 0 : offset;
  };
  if ((what & DACL_SECURITY_INFORMATION) != 0) {
    head.control = bits(head.control | (descriptor.control & daclControl));
    if (descriptor.hasDacl) head.dacl = append(descriptor.dacl);
    if (descriptor.hasDacl) head.control |= SE_DACL_PRESENT;
  }
  if ((what & OWNER_SECURITY_INFORMATION) != 0) {
    head.owner = append(descriptor.owner.empty() ? administratorsSid() : descriptor.owner);
  }
  if ((what & GROUP_SECURITY_INFORMATION) != 0) head.group = append(descriptor.group);
  std::memcpy(result.data(), &head, sizeof head);
  return result;
}

SecurityDescriptor replaceParts(const SecurityDescriptor& old, const SecurityDescriptor& given,
                                SECURITY_INFORMATION what, const GenericMapping& rights) {
  SecurityDescriptor result;
  result.control = old.control;
  result.owner = (what & OWNER_SECURITY_INFORMATION) != 0 ? given.owner : old.owner;
  result.group = (what & GROUP_SECURITY_INFORMATION) != 0 ? given.group : old.group;
  if ((what & DACL_SECURITY_INFORMATION) == 0) {
    result.hasDacl = old.hasDacl;
    result.dacl = old.dacl;
    return result;
  }
  // A list counts as inherited by rule only if the caller asked for it and said so.
  constexpr unsigned autoInherit = SE_DACL_AUTO_INHERIT_REQ | SE_DACL_AUTO_INHERITED;
  unsigned control = given.control & (SE_DACL_DEFAULTED | SE_DACL_PROTECTED);
  if ((given.control & autoInherit) == autoInherit) control |= SE_DACL_AUTO_INHERITED;
  result.control = bits((old.control & ~unsigned{daclControl}) | control | SE_DACL_PRESENT);
  result.hasDacl = given.hasDacl;
  result.dacl = given.hasDacl ? withOwnRights(given.dacl, rights) : Bytes{};
  return result;
}

SecurityDescriptor inheritFrom(const SecurityDescriptor& parent, bool newIsContainer,
                               const GenericMapping& rights, const Bytes& creator) {
  Inheritance inheritance(rights, creator);
  for (const AccessEntry& entry : entriesOf(parent.dacl)) inheritance.add(entry, newIsContainer);
  SecurityDescriptor made;
  made.control = SE_DACL_PRESENT;
  made.hasDacl = true;
  if (inheritance.entries.empty()) {
    made.dacl = aclOf({{ACCESS_ALLOWED_ACE_TYPE, 0, rights.all, administratorsSid(), {}},
                       {ACCESS_ALLOWED_ACE_TYPE, 0, rights.all, systemSid(), {}}});
  } else {
    made.control |= SE_DACL_AUTO_INHERITED;
    made.dacl = aclOf(inheritance.entries);
  }
  return made;
}

ACCESS_MASK rightsGiven(const SecurityDescriptor& descriptor, const Token& token,
                        const GenericMapping& rights) {
  if (!descriptor.hasDacl) {
    return everyRight;
  }
  ACCESS_MASK granted = ownersRights(descriptor, token);
  ACCESS_MASK denied = 0;
  // The first entry that speaks of a right decides it.
  forEachEntry(descriptor.dacl, [&](const EntryView& entry) {
    if ((entry.flags & INHERIT_ONLY_ACE) != 0 || !isMember(token, entry.sid)) {
      return;
    }
    const ACCESS_MASK mask = rights.map(entry.mask);
    if (entry.type == ACCESS_ALLOWED_ACE_TYPE) {
      granted |= mask & ~denied;
    } else {
      denied |= mask & ~granted;
    }
  });
  return granted;
}

ACCESS_MASK grantedOf(ACCESS_MASK given, ACCESS_MASK desired, const GenericMapping& rights) {
  const bool asMuchAsPossible = (desired & MAXIMUM_ALLOWED) != 0;
  const ACCESS_MASK wanted = rights.map(desired & ~MAXIMUM_ALLOWED);
  // Reading the audit list takes a privilege that the process does not hold.
  if ((wanted & ACCESS_SYSTEM_SECURITY) != 0 || (wanted & ~given) != 0) {
    return 0;
  }
  if (!asMuchAsPossible) {
    return wanted;
  }
  return given == everyRight ? wanted | rights.all : given;
}

ACCESS_MASK grantedAccess(const SecurityDescriptor& descriptor, const Token& token,
                          ACCESS_MASK desired, const GenericMapping& rights) {
  return grantedOf(rightsGiven(descriptor, token, rights), desired, rights);
}

}  // namespace zelvreg::machine
