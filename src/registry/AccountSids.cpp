#include "registry/AccountSids.h"

#include <array>

namespace zelvreg {

std::vector<BYTE> lookUpSid(const std::string& account) {
  std::array<char, 256> domain{};
  auto domainSize = static_cast<DWORD>(domain.size());
  DWORD size = 0;
  SID_NAME_USE use{};
  LookupAccountNameA(nullptr, account.c_str(), nullptr, &size, domain.data(), &domainSize, &use);
  std::vector<BYTE> sid(size);
  domainSize = static_cast<DWORD>(domain.size());
  if (size == 0 || LookupAccountNameA(nullptr, account.c_str(), sid.data(), &size, domain.data(),
                                      &domainSize, &use) == FALSE) {
    return {};
  }
  sid.resize(GetLengthSid(sid.data()));
  return sid;
}

std::vector<BYTE> everyoneSid() {
  SID_IDENTIFIER_AUTHORITY world{{0, 0, 0, 0, 0, 1}};
  PSID sid = nullptr;
  if (AllocateAndInitializeSid(&world, 1, 0, 0, 0, 0, 0, 0, 0, 0, &sid) == FALSE) {
    return {};
  }
  const auto* first = static_cast<const BYTE*>(sid);
  std::vector<BYTE> bytes(first, first + GetLengthSid(sid));
  FreeSid(sid);
  return bytes;
}

}  // namespace zelvreg
