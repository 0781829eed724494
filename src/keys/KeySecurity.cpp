#include "keys/KeySecurity.h"

// This one needs windows.h.
#include <sddl.h>

#include <algorithm>
#include <cstring>
#include <span>

#include "keys/WideKey.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

// The start of a self-relative descriptor: offsets from there, 0 for a part that it does not have.
struct Head {
  BYTE revision;
  BYTE reserved;
  SECURITY_DESCRIPTOR_CONTROL control;
  DWORD owner;
  DWORD group;
  DWORD audit;
  DWORD list;
};

using ByteSpan = std::span<const BYTE>;

template <typename Record>
bool readRecord(ByteSpan bytes, Record& record) {
  if (bytes.size() < sizeof record) {
    return false;
  }
  std::memcpy(&record, bytes.data(), sizeof record);
  return true;
}

// What begins at an offset; nothing if that is after the end.
ByteSpan partAt(ByteSpan bytes, DWORD offset) {
  return bytes.subspan(std::min<std::size_t>(offset, bytes.size()));
}

bool isWholeSid(ByteSpan bytes) {
  constexpr std::size_t fixedSize = 8;
  constexpr BYTE mostParts = 15;
  return bytes.size() >= fixedSize && bytes[0] == 1 && bytes[1] <= mostParts &&
         bytes.size() >= fixedSize + bytes[1] * sizeof(DWORD);
}

bool isWholeList(ByteSpan bytes) {
  ACL head{};
  if (!readRecord(bytes, head) || head.AclSize < sizeof head || head.AclSize > bytes.size()) {
    return false;
  }
  ByteSpan rest = bytes.subspan(sizeof head, head.AclSize - sizeof head);
  for (WORD entry = 0; entry < head.AceCount; ++entry) {
    ACE_HEADER header{};
    if (!readRecord(rest, header) || header.AceSize < sizeof header ||
        header.AceSize > rest.size()) {
      return false;
    }
    const bool namesAccount =
        header.AceType == ACCESS_ALLOWED_ACE_TYPE || header.AceType == ACCESS_DENIED_ACE_TYPE;
    constexpr std::size_t beforeAccount = sizeof(ACE_HEADER) + sizeof(ACCESS_MASK);
    if (namesAccount &&
        (header.AceSize < beforeAccount ||
         !isWholeSid(rest.subspan(beforeAccount, header.AceSize - beforeAccount)))) {
      return false;
    }
    rest = rest.subspan(header.AceSize);
  }
  return true;
}

Head headOf(const std::vector<BYTE>& descriptor) {
  Head head{};
  std::memcpy(&head, descriptor.data(), sizeof head);
  return head;
}

// A list is marked as automatically inherited only if the caller asks for that.
void askForInheritance(std::vector<BYTE>& descriptor) {
  Head head = headOf(descriptor);
  if ((head.control & SE_DACL_AUTO_INHERITED) != 0) {
    head.control |= SE_DACL_AUTO_INHERIT_REQ;
  }
  std::memcpy(descriptor.data(), &head, sizeof head);
}

std::vector<BYTE> securityOf(HiveHandle hive, const std::u16string& path) {
  const WideKey key(hive, path, READ_CONTROL);
  return key.isOpen() ? key.security()
                      : WideKey(hive, path, READ_CONTROL, REG_OPTION_BACKUP_RESTORE).security();
}

// The owner of a key may always change its list.
void takeOwnership(HiveHandle hive, const std::u16string& path) {
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  ULONG size = 0;
  if (ConvertStringSecurityDescriptorToSecurityDescriptorW(Wide("O:BA").get(), SDDL_REVISION_1,
                                                           &descriptor, &size) == FALSE) {
    return;
  }
  const auto* bytes = static_cast<const BYTE*>(descriptor);
  static_cast<void>(WideKey(hive, path, WRITE_OWNER)
                        .setSecurity({bytes, bytes + size}, OWNER_SECURITY_INFORMATION));
  LocalFree(descriptor);
}

WideKey openForList(HiveHandle hive, const std::u16string& path) {
  WideKey key(hive, path, WRITE_DAC);
  if (key.isOpen() || !key.isDenied()) {
    return key;
  }
  takeOwnership(hive, path);
  return {hive, path, WRITE_DAC};
}

}  // namespace

bool isWholeDescriptor(const std::vector<BYTE>& bytes) {
  Head head{};
  if (!readRecord(bytes, head) || head.revision != SECURITY_DESCRIPTOR_REVISION ||
      (head.control & SE_SELF_RELATIVE) == 0 || head.audit != 0) {
    return false;
  }
  return (head.owner == 0 || isWholeSid(partAt(bytes, head.owner))) &&
         (head.group == 0 || isWholeSid(partAt(bytes, head.group))) &&
         (head.list == 0 || isWholeList(partAt(bytes, head.list)));
}

SecurityRestore restoreSecurity(HiveHandle hive, const std::u16string& path,
                                const std::vector<BYTE>& descriptor) {
  if (securityOf(hive, path) == descriptor) {
    return SecurityRestore::WasSo;
  }
  const Head head = headOf(descriptor);
  const SECURITY_INFORMATION owners = (head.owner != 0 ? OWNER_SECURITY_INFORMATION : 0) |
                                      (head.group != 0 ? GROUP_SECURITY_INFORMATION : 0);
  std::vector<BYTE> given = descriptor;
  askForInheritance(given);
  // The owner is set last: whoever has become the owner can still set the list.
  const bool isSet = openForList(hive, path).setSecurity(given, DACL_SECURITY_INFORMATION);
  if (!isSet) {
    return SecurityRestore::Refused;
  }
  if (owners == 0 || securityOf(hive, path) == descriptor) {
    return SecurityRestore::Done;
  }
  return WideKey(hive, path, WRITE_OWNER).setSecurity(given, owners) ? SecurityRestore::Done
                                                                     : SecurityRestore::Refused;
}

}  // namespace zelvreg
