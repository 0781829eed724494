// Security identifiers (SIDs): their text form, and the accounts that the emulated computer knows
// by name.
#ifndef ZELVREG_MACHINE_SECURITY_ACCOUNTS_H
#define ZELVREG_MACHINE_SECURITY_ACCOUNTS_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "machine/security/Security.h"

namespace zelvreg::machine {

// The bytes of "S-1-5-32-544" or of a two-letter name ("BA"). None if the text is neither.
std::optional<Bytes> sidFromText(std::string_view text);
// The two-letter name if there is one, else "S-1-…". `sid` must be whole.
std::string sidText(const BYTE* sid);
// 8 bytes and 4 for each sub-authority.
std::size_t sidLength(const BYTE* sid);
Bytes sidBytes(const void* sid);

// Well-known identifiers; each is made once.
const Bytes& everyoneSid();
const Bytes& administratorsSid();
const Bytes& usersSid();
const Bytes& systemSid();
const Bytes& creatorOwnerSid();

struct Account {
  std::u16string name;
  std::u16string domain;
  Bytes sid;
  SID_NAME_USE use;
};

class Accounts {
 public:
  // Knows the user, Everyone, Administrators, Users and SYSTEM.
  Accounts(std::u16string user, Bytes userSid);

  // By name, with or without "domain\" in front and without regard to case; null if unknown.
  [[nodiscard]] const Account* find(std::u16string_view name) const;

  // The user, a member of Everyone, Administrators and Users.
  [[nodiscard]] const Token& token() const { return user; }

 private:
  std::vector<Account> known;
  Token user;
};

}  // namespace zelvreg::machine

#endif
