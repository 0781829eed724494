// The access lists of keys (setpermission.h).
#include <array>
#include <cstring>
#include <memory>

#include "form/Form42.h"
#include "keys/AccountSids.h"
#include "keys/OpenKey.h"
#include "registry/setpermission.h"

namespace zelvreg {
namespace {

// Read control, write access list, the six rights of a key, and the flag of the 64-bit view.
constexpr REGSAM changeAccessList = 393535;
constexpr DWORD emptyAclSize = 8;
// 8 bytes and 15 sub-authorities.
constexpr std::size_t largestSid = 68;
constexpr DWORD atEnd = 0xFFFFFFFF;

struct LocalMemory {
  void operator()(void* memory) const { LocalFree(memory); }
};
using LocalBlock = std::unique_ptr<void, LocalMemory>;

AccessTable tableFor(const std::string& user) {
  return {
      AccessEntry{"", 0x80000000, CONTAINER_INHERIT_ACE, ACCESS_ALLOWED_ACE_TYPE, {}},
      AccessEntry{user, 0xE0010000, 0, ACCESS_ALLOWED_ACE_TYPE, {}},
      // Inherited by subkeys only, so that the key itself gets full use by the entry before.
      AccessEntry{
          user, 0x10000000, CONTAINER_INHERIT_ACE | INHERIT_ONLY_ACE, ACCESS_DENIED_ACE_TYPE, {}}};
}

WORD aceSize(const SidBytes& sid) {
  return static_cast<WORD>(sid.size() + sizeof(ACE_HEADER) + sizeof(ACCESS_MASK));
}

LocalBlock readAccessList(HKEY key) {
  DWORD size = 0;
  RegGetKeySecurity(key, DACL_SECURITY_INFORMATION, nullptr, &size);
  if (size == 0) {
    return nullptr;
  }
  LocalBlock descriptor(LocalAlloc(LPTR, size));
  if (descriptor == nullptr ||
      RegGetKeySecurity(key, DACL_SECURITY_INFORMATION, descriptor.get(), &size) != ERROR_SUCCESS) {
    return nullptr;
  }
  return descriptor;
}

// The old list as it is walked from both sides of the first inherited entry.
struct OldList {
  PACL acl = nullptr;
  ACL_SIZE_INFORMATION sizes{0, emptyAclSize, 0};

  explicit OldList(PSECURITY_DESCRIPTOR descriptor) {
    BOOL isPresent = FALSE;
    BOOL isDefaulted = FALSE;
    if (GetSecurityDescriptorDacl(descriptor, &isPresent, &acl, &isDefaulted) == FALSE ||
        isPresent == FALSE || acl == nullptr ||
        GetAclInformation(acl, &sizes, sizeof(sizes), AclSizeInformation) == FALSE) {
      acl = nullptr;
      sizes = {0, emptyAclSize, 0};
    }
  }

  [[nodiscard]] ACCESS_ALLOWED_ACE* entry(DWORD index) const {
    void* ace = nullptr;
    return index < sizes.AceCount && GetAce(acl, index, &ace) != FALSE
               ? static_cast<ACCESS_ALLOWED_ACE*>(ace)
               : nullptr;
  }
};

bool appendTableEntries(PACL acl, const AccessTable& table, BYTE aceType) {
  for (const AccessEntry& entry : table) {
    if (entry.AceType == aceType &&
        AppendAce(acl, aceType, entry.AceFlags, entry.AccessMask, entry.sid) == FALSE) {
      return false;
    }
  }
  return true;
}

bool copyEntry(PACL acl, ACCESS_ALLOWED_ACE* ace) {
  return AddAce(acl, ACL_REVISION, atEnd, ace, ace->Header.AceSize) != FALSE;
}

bool fillList(PACL acl, const OldList& old, const AccessTable& table) {
  if (!appendTableEntries(acl, table, ACCESS_DENIED_ACE_TYPE)) {
    return false;
  }
  DWORD index = 0;
  for (auto* ace = old.entry(index); ace != nullptr; ace = old.entry(++index)) {
    if ((ace->Header.AceFlags & INHERITED_ACE) != 0) {
      break;
    }
    if (!SidInTable(table, &ace->SidStart) && !copyEntry(acl, ace)) {
      return false;
    }
  }
  if (!appendTableEntries(acl, table, ACCESS_ALLOWED_ACE_TYPE)) {
    return false;
  }
  for (auto* ace = old.entry(index); ace != nullptr; ace = old.entry(++index)) {
    if (!copyEntry(acl, ace)) {
      return false;
    }
  }
  return true;
}

void takeOverControl(PSECURITY_DESCRIPTOR oldDescriptor, PSECURITY_DESCRIPTOR newDescriptor) {
  SECURITY_DESCRIPTOR_CONTROL control = 0;
  DWORD revision = 0;
  GetSecurityDescriptorControl(oldDescriptor, &control, &revision);
  constexpr SECURITY_DESCRIPTOR_CONTROL inherits =
      SE_DACL_AUTO_INHERIT_REQ | SE_DACL_AUTO_INHERITED;
  if ((control & SE_DACL_AUTO_INHERITED) != 0) {
    SetSecurityDescriptorControl(newDescriptor, inherits, inherits);
  }
  if ((control & SE_DACL_PROTECTED) != 0) {
    SetSecurityDescriptorControl(newDescriptor, SE_DACL_PROTECTED, SE_DACL_PROTECTED);
  }
}

}  // namespace

void GrantKeyAccess(Form42& form, HiveHandle hive, const std::string& key,
                    const std::string& user) {
  form.GrantKeyStatus = 0;
  AccessTable table = tableFor(user);
  table.front().sid = everyoneSid();
  if (table.front().sid.empty()) {
    return;
  }
  const OpenKey open(hive, key, changeAccessList, ClassesOf::User);
  if (!open.isOpen()) {
    form.GrantKeyStatus = 1;
    return;
  }
  UpdateKeyDacl(form, open.handle(), table);
}

bool UpdateKeyDacl(Form42& form, HKEY key, AccessTable& table) {
  const LocalBlock oldDescriptor = readAccessList(key);
  NewDescriptor newDescriptor;
  const bool isDone =
      oldDescriptor != nullptr &&
      BuildSecurityDescriptor(oldDescriptor.get(), table, newDescriptor) &&
      RegSetKeySecurity(key, DACL_SECURITY_INFORMATION, &newDescriptor.descriptor) == ERROR_SUCCESS;
  if (!isDone) {
    form.GrantKeyStatus = 1;
  }
  return isDone;
}

bool BuildSecurityDescriptor(PSECURITY_DESCRIPTOR oldDescriptor, AccessTable& table,
                             NewDescriptor& newDescriptor) {
  if (InitializeSecurityDescriptor(&newDescriptor.descriptor, SECURITY_DESCRIPTOR_REVISION) ==
      FALSE) {
    return false;
  }
  const OldList old(oldDescriptor);
  DWORD total = old.sizes.AclBytesInUse;
  for (AccessEntry& entry : table) {
    if (entry.sid.empty()) {
      entry.sid = lookUpSid(entry.User);
    }
    if (entry.sid.empty()) {
      return false;
    }
    total += aceSize(entry.sid);
  }
  newDescriptor.acl.assign(total, 0);
  auto* acl = reinterpret_cast<PACL>(newDescriptor.acl.data());
  if (InitializeAcl(acl, total, ACL_REVISION) == FALSE || !fillList(acl, old, table)) {
    return false;
  }
  takeOverControl(oldDescriptor, &newDescriptor.descriptor);
  return SetSecurityDescriptorDacl(&newDescriptor.descriptor, TRUE, acl, FALSE) != FALSE;
}

BOOL AppendAce(PACL acl, BYTE aceType, BYTE aceFlags, DWORD mask, const SidBytes& sid) {
  const ACE_HEADER header{aceType, aceFlags, aceSize(sid)};
  std::array<BYTE, sizeof(header) + sizeof(mask) + largestSid> ace;
  if (header.AceSize > ace.size()) {
    return FALSE;
  }
  std::memcpy(ace.data(), &header, sizeof(header));
  std::memcpy(ace.data() + sizeof(header), &mask, sizeof(mask));
  std::memcpy(ace.data() + sizeof(header) + sizeof(mask), sid.data(), sid.size());
  return AddAce(acl, ACL_REVISION, atEnd, ace.data(), header.AceSize);
}

bool SidInTable(const AccessTable& table, PSID sid) {
  for (const AccessEntry& entry : table) {
    // The call only reads, though its type does not say so.
    if (!entry.sid.empty() && EqualSid(const_cast<BYTE*>(entry.sid.data()), sid) != FALSE) {
      return true;
    }
  }
  return false;
}

}  // namespace zelvreg
