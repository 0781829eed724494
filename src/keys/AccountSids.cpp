#include "keys/AccountSids.h"

#include <array>
#include <cstdint>
#include <cstring>

#include "keys/ActingUser.h"
#include "runtime/Environment.h"
#include "text/Wide.h"

namespace zelvreg {

std::vector<BYTE> lookUpSid(const std::string& account) {
  std::array<char16_t, 256> domain{};
  const Wide name(account);
  auto domainSize = static_cast<DWORD>(domain.size());
  DWORD size = 0;
  SID_NAME_USE use{};
  LookupAccountNameW(nullptr, name.get(), nullptr, &size, roomIn(domain), &domainSize, &use);
  std::vector<BYTE> sid(size);
  domainSize = static_cast<DWORD>(domain.size());
  if (size == 0 || LookupAccountNameW(nullptr, name.get(), sid.data(), &size, roomIn(domain),
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

// A revision, the number of sub-authorities, 6 bytes of the authority with the highest first, and
// 4 bytes for each sub-authority with the lowest first.
std::string sidText(const std::vector<BYTE>& sid) {
  constexpr std::size_t headSize = 8;
  constexpr std::size_t partSize = 4;
  if (sid.size() < headSize || sid.size() < headSize + sid[1] * partSize) {
    return {};
  }
  std::uint64_t authority = 0;
  for (std::size_t index = 2; index < headSize; ++index) {
    authority = authority << 8U | sid[index];
  }
  std::string text = "S-" + std::to_string(sid[0]) + "-" + std::to_string(authority);
  for (std::size_t part = 0; part < sid[1]; ++part) {
    std::uint32_t number = 0;
    std::memcpy(&number, sid.data() + headSize + part * partSize, sizeof number);
    text += "-" + std::to_string(number);
  }
  return text;
}

std::string currentUserSid() {
  return actingUser() == nullptr ? sidText(lookUpSid(environmentVariable("UserName")))
                                 : actingUser()->sid;
}

std::string currentUsersKey() {
  return actingUser() == nullptr ? currentUserSid() : actingUser()->key;
}

std::string processAccount() {
  return actingUser() == nullptr ? environmentVariable("UserName") : actingUser()->account;
}

}  // namespace zelvreg
