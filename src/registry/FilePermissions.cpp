// The access lists of files (setpermission.h).
#include <cstring>

#include "keys/AccountSids.h"
#include "registry/setpermission.h"
#include "runtime/Environment.h"
#include "runtime/FileSecurity.h"
#include "runtime/FileSystemObject.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

constexpr DWORD atEnd = 0xFFFFFFFF;

// Every old entry but the user's own.
bool copyOthers(PACL from, DWORD count, PSID user, PACL to) {
  for (DWORD index = 0; index < count; ++index) {
    void* entry = nullptr;
    if (GetAce(from, index, &entry) == FALSE) {
      return false;
    }
    auto* ace = static_cast<ACCESS_ALLOWED_ACE*>(entry);
    if (EqualSid(&ace->SidStart, user) == FALSE &&
        AddAce(to, ACL_REVISION, atEnd, ace, ace->Header.AceSize) == FALSE) {
      return false;
    }
  }
  return true;
}

bool setFlagsOfLast(PACL acl, BYTE flags) {
  ACL_SIZE_INFORMATION sizes{};
  void* entry = nullptr;
  if (GetAclInformation(acl, &sizes, sizeof(sizes), AclSizeInformation) == FALSE ||
      GetAce(acl, sizes.AceCount - 1, &entry) == FALSE) {
    return false;
  }
  static_cast<ACE_HEADER*>(entry)->AceFlags = flags;
  return true;
}

bool addUser(PACL acl, PSID user, DWORD mask, bool isFolder) {
  if (AddAccessAllowedAce(acl, ACL_REVISION, mask, user) == FALSE) {
    return false;
  }
  return !isFolder || (setFlagsOfLast(acl, OBJECT_INHERIT_ACE | INHERIT_ONLY_ACE) &&
                       AddAccessAllowedAce(acl, ACL_REVISION, mask, user) != FALSE &&
                       setFlagsOfLast(acl, CONTAINER_INHERIT_ACE));
}

}  // namespace

void SetAccess(const std::string& user, const std::string& path, DWORD mask) {
  std::vector<BYTE> sid = lookUpSid(user);
  std::vector<BYTE> oldDescriptor =
      sid.empty() ? sid : fileSecurity(path, DACL_SECURITY_INFORMATION);
  SECURITY_DESCRIPTOR newDescriptor{};
  PACL oldAcl = nullptr;
  BOOL isPresent = FALSE;
  BOOL isDefaulted = FALSE;
  if (oldDescriptor.empty() ||
      InitializeSecurityDescriptor(&newDescriptor, SECURITY_DESCRIPTOR_REVISION) == FALSE ||
      GetSecurityDescriptorDacl(oldDescriptor.data(), &isPresent, &oldAcl, &isDefaulted) == FALSE ||
      isPresent == FALSE || oldAcl == nullptr) {
    return;
  }
  ACL_SIZE_INFORMATION sizes{};
  if (GetAclInformation(oldAcl, &sizes, sizeof(sizes), AclSizeInformation) == FALSE) {
    return;
  }
  // Room for two entries of the user, each a header, a mask and the identifier.
  const auto size =
      static_cast<DWORD>(sizes.AclBytesInUse + 2 * (sid.size() + sizeof(ACCESS_ALLOWED_ACE)) - 4);
  std::vector<BYTE> newList(size);
  auto* newAcl = reinterpret_cast<PACL>(newList.data());
  if (InitializeAcl(newAcl, size, ACL_REVISION) == FALSE || sizes.AceCount == 0 ||
      !copyOthers(oldAcl, sizes.AceCount, sid.data(), newAcl) ||
      !addUser(newAcl, sid.data(), mask, fileSystemObject::folderExists(path)) ||
      SetSecurityDescriptorDacl(&newDescriptor, TRUE, newAcl, FALSE) == FALSE) {
    return;
  }
  setFileSecurity(path, DACL_SECURITY_INFORMATION, &newDescriptor);
}

void changepermission(std::string& path, Rights rights) {
  if (!containsIgnoringCase(path, "$recycle.bin")) {
    return;
  }
  path = std::string(trim(path));
  if (rights == Rights::Given) {
    SetAccess(environmentVariable("username"), path, GENERIC_ALL);
  }
}

}  // namespace zelvreg
