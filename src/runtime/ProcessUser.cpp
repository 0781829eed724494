#include "runtime/ProcessUser.h"

#include <cstring>

namespace zelvreg {

std::vector<BYTE> processUser() {
  HANDLE token = nullptr;
  if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token) == FALSE) {
    return {};
  }
  DWORD size = 0;
  GetTokenInformation(token, TokenUser, nullptr, 0, &size);
  std::vector<BYTE> record(size);
  const bool isRead = size >= sizeof(TOKEN_USER) &&
                      GetTokenInformation(token, TokenUser, record.data(), size, &size) != FALSE;
  CloseHandle(token);
  if (!isRead) {
    return {};
  }
  // The record points to the identifier, which lies after it: it is no good as a copy.
  TOKEN_USER user{};
  std::memcpy(&user, record.data(), sizeof user);
  const auto* sid = static_cast<const BYTE*>(user.User.Sid);
  return {sid, sid + GetLengthSid(user.User.Sid)};
}

}  // namespace zelvreg
