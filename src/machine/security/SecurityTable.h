// The access lists of the registry's keys. Each is kept once, however many keys share it: a program
// that lets itself in gives tens of thousands of keys the same list.
#ifndef ZELVREG_MACHINE_SECURITY_SECURITY_TABLE_H
#define ZELVREG_MACHINE_SECURITY_SECURITY_TABLE_H

#include <windows.h>

#include <cstdint>
#include <deque>
#include <unordered_map>

#include "machine/security/Security.h"

namespace zelvreg::machine {

class SecurityTable {
 public:
  // A key that bears 0 has the default list because nothing is said of it.
  using Number = std::uint32_t;

  SecurityTable();

  // Stays where it is for as long as the table lives.
  [[nodiscard]] const SecurityDescriptor& at(Number number) const;
  // The number of a list that is said of a key; never 0.
  Number keep(SecurityDescriptor descriptor);

  // As grantedAccess tells, for keys. What a list gives to one token is worked out once.
  [[nodiscard]] ACCESS_MASK grantedTo(const Token& token, Number number, ACCESS_MASK desired);

 private:
  struct Entry {
    SecurityDescriptor descriptor;
    const Token* token = nullptr;  // for whom `given` was worked out
    ACCESS_MASK given = 0;
  };

  std::deque<Entry> entries;
  std::unordered_multimap<std::size_t, Number> numbers;  // by hash of the descriptor
};

}  // namespace zelvreg::machine

#endif
