#include "runtime/PrivateFiles.h"

// This one stands on windows.h.
#include <sddl.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <span>
#include <vector>

#include "runtime/FileSecurity.h"
#include "runtime/ProcessUser.h"
#include "runtime/SystemSids.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

// Administrators own them, so that what one of them made is the next one's, too.
constexpr const char* listOfFiles = "O:BAD:P(A;;FA;;;BA)(A;;FA;;;SY)";
constexpr const char* listOfFolders = "O:BAD:P(A;OICI;FA;;;BA)(A;OICI;FA;;;SY)";
constexpr SECURITY_INFORMATION ownerAndList =
    OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;

// Rights by which one can bring about what a file holds. Of a folder: to make and to delete files.
constexpr ACCESS_MASK writeData = 0x2;
constexpr ACCESS_MASK appendData = 0x4;
constexpr ACCESS_MASK deleteChild = 0x40;
constexpr ACCESS_MASK overAll = DELETE | WRITE_DAC | WRITE_OWNER | GENERIC_WRITE | GENERIC_ALL;
constexpr ACCESS_MASK writesFile = writeData | appendData | overAll;
constexpr ACCESS_MASK writesFolder = writeData | deleteChild | overAll;

constexpr std::array trustedSids{administratorsSid, systemSid, installerOfWindowsSid};

class Judge {
 public:
  Judge() : user(processUser()) {}

  [[nodiscard]] bool lets(const std::string& path, ACCESS_MASK rights) const {
    std::vector<BYTE> descriptor = fileSecurity(path, ownerAndList);
    if (descriptor.empty()) {
      return true;
    }
    PSID owner = nullptr;
    BOOL isDefaulted = FALSE;
    return GetSecurityDescriptorOwner(descriptor.data(), &owner, &isDefaulted) == FALSE ||
           owner == nullptr || !isTrusted(owner) || listLets(descriptor, rights);
  }

 private:
  [[nodiscard]] bool isTrusted(PSID sid) const {
    if (std::ranges::any_of(trustedSids, [&](const SystemSid& known) {
          return isSid(static_cast<const BYTE*>(sid), known);
        })) {
      return true;
    }
    const auto* bytes = static_cast<const BYTE*>(sid);
    return std::ranges::equal(user, std::span(bytes, GetLengthSid(sid)));
  }

  [[nodiscard]] bool listLets(std::vector<BYTE>& descriptor, ACCESS_MASK rights) const {
    PACL list = nullptr;
    BOOL isPresent = FALSE;
    BOOL isDefaulted = FALSE;
    ACL_SIZE_INFORMATION sizes{};
    // Without a list everybody may do everything.
    if (GetSecurityDescriptorDacl(descriptor.data(), &isPresent, &list, &isDefaulted) == FALSE ||
        isPresent == FALSE || list == nullptr ||
        GetAclInformation(list, &sizes, sizeof sizes, AclSizeInformation) == FALSE) {
      return true;
    }
    for (DWORD index = 0; index < sizes.AceCount; ++index) {
      void* entry = nullptr;
      if (GetAce(list, index, &entry) == FALSE || entryLets(entry, rights)) {
        return true;
      }
    }
    return false;
  }

  // What an entry denies is not looked at: without it there is more to refuse, never less.
  [[nodiscard]] bool entryLets(void* entry, ACCESS_MASK rights) const {
    auto* ace = static_cast<ACCESS_ALLOWED_ACE*>(entry);
    if ((ace->Header.AceFlags & INHERIT_ONLY_ACE) != 0 ||
        ace->Header.AceType == ACCESS_DENIED_ACE_TYPE) {
      return false;
    }
    return ace->Header.AceType != ACCESS_ALLOWED_ACE_TYPE ||
           ((ace->Mask & rights) != 0 && !isTrusted(&ace->SidStart));
  }

  std::vector<BYTE> user;
};

std::string folderOf(const std::string& path) {
  const auto slash = path.find_last_of("\\/");
  // The root of a drive keeps its backslash.
  return path.substr(0, slash == 2 ? 3 : slash);
}

}  // namespace

PrivateSecurity::PrivateSecurity(Of kind) {
  ConvertStringSecurityDescriptorToSecurityDescriptorW(
      Wide(kind == Of::File ? listOfFiles : listOfFolders).get(), SDDL_REVISION_1,
      &attributes.lpSecurityDescriptor, nullptr);
}

PrivateSecurity::~PrivateSecurity() { LocalFree(attributes.lpSecurityDescriptor); }

const SECURITY_ATTRIBUTES* PrivateSecurity::get() const {
  return attributes.lpSecurityDescriptor == nullptr ? nullptr : &attributes;
}

void makePrivateFolder(const std::string& path) {
  const PrivateSecurity security(PrivateSecurity::Of::Folder);
  const SECURITY_ATTRIBUTES* attributes = security.get();
  if (attributes == nullptr) {
    return;
  }
  // The call only reads, though its type does not say so.
  if (CreateDirectoryW(Wide(path).get(), const_cast<SECURITY_ATTRIBUTES*>(attributes)) == FALSE &&
      GetLastError() == ERROR_ALREADY_EXISTS && Judge().lets(path, writesFolder) &&
      !setFileSecurity(path, ownerAndList, attributes->lpSecurityDescriptor)) {
    // Who may not give a folder to another may often still close it.
    setFileSecurity(path, DACL_SECURITY_INFORMATION, attributes->lpSecurityDescriptor);
  }
}

bool couldOthersWrite(const std::string& path) {
  const Judge judge;
  return judge.lets(path, writesFile) || judge.lets(folderOf(path), writesFolder);
}

}  // namespace zelvreg
