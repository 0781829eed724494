// The Windows calls on identifiers, access lists and security descriptors in memory.
#include <windows.h>

#include <cstdlib>
#include <cstring>

#include "machine/calls/ApiSupport.h"
#include "machine/security/AccessList.h"
#include "machine/security/Accounts.h"

namespace {

using namespace zelvreg::machine;

constexpr LONG unknownRevision = 1305;
constexpr LONG revisionMismatch = 1306;
constexpr BYTE highestAclRevision = 4;
constexpr DWORD largestAcl = 0xFFFF;

bool isSid(PSID sid) {
  const auto* bytes = static_cast<const BYTE*>(sid);
  return bytes != nullptr && bytes[0] == 1 && bytes[1] <= 15;
}

// Both forms of a descriptor begin with the same four bytes.
RelativeDescriptor* headOf(PSECURITY_DESCRIPTOR descriptor) {
  return static_cast<RelativeDescriptor*>(descriptor);
}

bool hasGoodRevision(PSECURITY_DESCRIPTOR descriptor) {
  if (descriptor == nullptr) return failed(ERROR_INVALID_SECURITY_DESCR);
  return headOf(descriptor)->revision == SECURITY_DESCRIPTOR_REVISION || failed(unknownRevision);
}

PSID ownerOf(PSECURITY_DESCRIPTOR descriptor) {
  const RelativeDescriptor* head = headOf(descriptor);
  if ((head->control & SE_SELF_RELATIVE) == 0) {
    return static_cast<const SECURITY_DESCRIPTOR*>(descriptor)->Owner;
  }
  return head->owner == 0 ? nullptr : static_cast<BYTE*>(descriptor) + head->owner;
}

PACL daclOf(PSECURITY_DESCRIPTOR descriptor) {
  const RelativeDescriptor* head = headOf(descriptor);
  if ((head->control & SE_SELF_RELATIVE) == 0) {
    return static_cast<const SECURITY_DESCRIPTOR*>(descriptor)->Dacl;
  }
  if (head->dacl == 0) return nullptr;
  return reinterpret_cast<PACL>(static_cast<BYTE*>(descriptor) + head->dacl);
}

// Where entry number `index` begins. `acl` must be whole and hold it.
BYTE* entryAt(PACL acl, DWORD index) {
  BYTE* entry = reinterpret_cast<BYTE*>(acl) + sizeof(ACL);
  for (; index > 0; --index) entry += reinterpret_cast<const ACE_HEADER*>(entry)->AceSize;
  return entry;
}

// How many entries lie in `size` bytes; none if they do not fill them exactly.
WORD countEntries(const BYTE* aces, DWORD size) {
  WORD count = 0;
  for (DWORD at = 0; at < size; ++count) {
    ACE_HEADER header{};
    if (size - at < sizeof header) return 0;
    std::memcpy(&header, aces + at, sizeof header);
    if (header.AceSize < sizeof header || header.AceSize > size - at) return 0;
    at += header.AceSize;
  }
  return count;
}

// Puts whole entries in front of entry number `index`, or at the end if there are fewer.
void insertEntries(PACL acl, DWORD index, const BYTE* aces, DWORD size, WORD count) {
  BYTE* end = endOfEntries(acl);
  BYTE* place = index < acl->AceCount ? entryAt(acl, index) : end;
  std::memmove(place + size, place, static_cast<std::size_t>(end - place));
  std::memcpy(place, aces, size);
  acl->AceCount = static_cast<WORD>(acl->AceCount + count);
}

bool hasRoom(PACL acl, DWORD size) {
  const auto used = endOfEntries(acl) - reinterpret_cast<BYTE*>(acl);
  return static_cast<std::size_t>(used) + size <= acl->AclSize;
}

}  // namespace

extern "C" {

BOOL AllocateAndInitializeSid(PSID_IDENTIFIER_AUTHORITY authority, BYTE count, DWORD sub0,
                              DWORD sub1, DWORD sub2, DWORD sub3, DWORD sub4, DWORD sub5,
                              DWORD sub6, DWORD sub7, PSID* sid) {
  const DWORD parts[8] = {sub0, sub1, sub2, sub3, sub4, sub5, sub6, sub7};
  if (authority == nullptr || sid == nullptr) return failed(ERROR_INVALID_PARAMETER);
  if (count > 8) return failed(ERROR_INVALID_SID);
  auto* bytes = static_cast<BYTE*>(std::malloc(8 + std::size_t{4} * count));
  if (bytes == nullptr) return failed(ERROR_NOT_ENOUGH_MEMORY);
  bytes[0] = 1;
  bytes[1] = count;
  std::memcpy(bytes + 2, authority->Value, sizeof authority->Value);
  std::memcpy(bytes + 8, parts, std::size_t{4} * count);
  *sid = bytes;
  return TRUE;
}

PVOID FreeSid(PSID sid) {
  std::free(sid);
  return nullptr;
}

DWORD GetLengthSid(PSID sid) {
  return static_cast<DWORD>(sidLength(static_cast<const BYTE*>(sid)));
}

BOOL EqualSid(PSID first, PSID second) {
  if (!isSid(first) || !isSid(second)) return FALSE;
  const auto* one = static_cast<const BYTE*>(first);
  const auto* other = static_cast<const BYTE*>(second);
  const bool isSameSize = sidLength(one) == sidLength(other);
  return isSameSize && std::memcmp(one, other, sidLength(one)) == 0 ? TRUE : FALSE;
}

BOOL InitializeSecurityDescriptor(PSECURITY_DESCRIPTOR descriptor, DWORD revision) {
  if (revision != SECURITY_DESCRIPTOR_REVISION) return failed(unknownRevision);
  if (descriptor == nullptr) return failed(ERROR_INVALID_PARAMETER);
  SECURITY_DESCRIPTOR empty{};
  empty.Revision = SECURITY_DESCRIPTOR_REVISION;
  std::memcpy(descriptor, &empty, sizeof empty);
  return TRUE;
}

BOOL GetSecurityDescriptorOwner(PSECURITY_DESCRIPTOR descriptor, PSID* owner, LPBOOL defaulted) {
  if (!hasGoodRevision(descriptor)) return FALSE;
  *owner = ownerOf(descriptor);
  *defaulted = (headOf(descriptor)->control & SE_OWNER_DEFAULTED) != 0 ? TRUE : FALSE;
  return TRUE;
}

BOOL GetSecurityDescriptorDacl(PSECURITY_DESCRIPTOR descriptor, LPBOOL present, PACL* acl,
                               LPBOOL defaulted) {
  if (!hasGoodRevision(descriptor)) return FALSE;
  const SECURITY_DESCRIPTOR_CONTROL control = headOf(descriptor)->control;
  *present = (control & SE_DACL_PRESENT) != 0 ? TRUE : FALSE;
  if (*present == FALSE) return TRUE;
  *acl = daclOf(descriptor);
  *defaulted = (control & SE_DACL_DEFAULTED) != 0 ? TRUE : FALSE;
  return TRUE;
}

BOOL SetSecurityDescriptorDacl(PSECURITY_DESCRIPTOR descriptor, BOOL present, PACL acl,
                               BOOL defaulted) {
  if (!hasGoodRevision(descriptor)) return FALSE;
  auto* absolute = static_cast<SECURITY_DESCRIPTOR*>(descriptor);
  if ((absolute->Control & SE_SELF_RELATIVE) != 0) return failed(ERROR_INVALID_SECURITY_DESCR);
  unsigned control = absolute->Control & ~unsigned{SE_DACL_PRESENT | SE_DACL_DEFAULTED};
  if (present != FALSE) control |= SE_DACL_PRESENT;
  if (present != FALSE && defaulted != FALSE) control |= SE_DACL_DEFAULTED;
  absolute->Control = static_cast<SECURITY_DESCRIPTOR_CONTROL>(control);
  absolute->Dacl = present != FALSE ? acl : nullptr;
  return TRUE;
}

BOOL GetSecurityDescriptorControl(PSECURITY_DESCRIPTOR descriptor,
                                  PSECURITY_DESCRIPTOR_CONTROL control, LPDWORD revision) {
  if (descriptor == nullptr) return failed(ERROR_INVALID_SECURITY_DESCR);
  *revision = headOf(descriptor)->revision;
  if (!hasGoodRevision(descriptor)) return FALSE;
  *control = headOf(descriptor)->control;
  return TRUE;
}

BOOL SetSecurityDescriptorControl(PSECURITY_DESCRIPTOR descriptor, SECURITY_DESCRIPTOR_CONTROL mask,
                                  SECURITY_DESCRIPTOR_CONTROL values) {
  constexpr unsigned changeable = SE_DACL_AUTO_INHERIT_REQ | SE_SACL_AUTO_INHERIT_REQ |
                                  SE_DACL_AUTO_INHERITED | SE_SACL_AUTO_INHERITED |
                                  SE_DACL_PROTECTED | SE_SACL_PROTECTED;
  if (descriptor == nullptr) return failed(ERROR_INVALID_SECURITY_DESCR);
  if ((mask & ~changeable) != 0 || (values & ~unsigned{mask}) != 0) {
    return failed(ERROR_INVALID_PARAMETER);
  }
  RelativeDescriptor* head = headOf(descriptor);
  head->control =
      static_cast<SECURITY_DESCRIPTOR_CONTROL>((head->control & ~unsigned{mask}) | values);
  return TRUE;
}

BOOL GetAclInformation(PACL acl, LPVOID information, DWORD size, ACL_INFORMATION_CLASS what) {
  if (!isWholeAcl(acl)) return failed(ERROR_INVALID_PARAMETER);
  if (what == AclRevisionInformation) {
    if (size < sizeof(DWORD)) return failed(ERROR_INSUFFICIENT_BUFFER);
    const DWORD revision = acl->AclRevision;
    std::memcpy(information, &revision, sizeof revision);
    return TRUE;
  }
  if (what != AclSizeInformation) return failed(ERROR_INVALID_PARAMETER);
  if (size < sizeof(ACL_SIZE_INFORMATION)) return failed(ERROR_INSUFFICIENT_BUFFER);
  const auto used = static_cast<DWORD>(endOfEntries(acl) - reinterpret_cast<BYTE*>(acl));
  const ACL_SIZE_INFORMATION sizes{acl->AceCount, used, acl->AclSize - used};
  std::memcpy(information, &sizes, sizeof sizes);
  return TRUE;
}

BOOL InitializeAcl(PACL acl, DWORD size, DWORD revision) {
  if (size < sizeof(ACL)) return failed(ERROR_INSUFFICIENT_BUFFER);
  const bool goodRevision = revision >= ACL_REVISION && revision <= highestAclRevision;
  if (acl == nullptr || size > largestAcl || !goodRevision) return failed(ERROR_INVALID_PARAMETER);
  // The size of a list is a multiple of four; what is over is not used.
  *acl = {static_cast<BYTE>(revision), 0, static_cast<WORD>(size & ~3U), 0, 0};
  return TRUE;
}

BOOL GetAce(PACL acl, DWORD index, LPVOID* ace) {
  if (!isWholeAcl(acl) || index >= acl->AceCount) return failed(ERROR_INVALID_PARAMETER);
  *ace = entryAt(acl, index);
  return TRUE;
}

BOOL AddAce(PACL acl, DWORD revision, DWORD startIndex, LPVOID aces, DWORD size) {
  if (!isWholeAcl(acl) || aces == nullptr) return failed(ERROR_INVALID_PARAMETER);
  const WORD count = countEntries(static_cast<const BYTE*>(aces), size);
  const bool goodRevision = revision >= ACL_REVISION && revision <= highestAclRevision;
  if (!goodRevision || (count == 0 && size != 0)) return failed(ERROR_INVALID_PARAMETER);
  if (!hasRoom(acl, size)) return failed(ERROR_INSUFFICIENT_BUFFER);
  insertEntries(acl, startIndex, static_cast<const BYTE*>(aces), size, count);
  if (revision > acl->AclRevision) acl->AclRevision = static_cast<BYTE>(revision);
  return TRUE;
}

BOOL AddAccessAllowedAce(PACL acl, DWORD revision, DWORD mask, PSID sid) {
  if (!isSid(sid)) return failed(ERROR_INVALID_SID);
  if (revision < ACL_REVISION || revision > highestAclRevision) return failed(revisionMismatch);
  if (!isWholeAcl(acl)) return failed(ERROR_INVALID_ACL);
  const Bytes list = aclOf({{ACCESS_ALLOWED_ACE_TYPE, 0, mask, sidBytes(sid), {}}});
  const auto size = static_cast<DWORD>(list.size() - sizeof(ACL));
  if (!hasRoom(acl, size)) return failed(ERROR_ALLOTTED_SPACE_EXCEEDED);
  insertEntries(acl, acl->AceCount, list.data() + sizeof(ACL), size, 1);
  return TRUE;
}
}
