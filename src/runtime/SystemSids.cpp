#include "runtime/SystemSids.h"

#include <cstring>

namespace zelvreg {

bool isSid(const BYTE* sid, const SystemSid& known) {
  constexpr std::array<BYTE, 6> authority{0, 0, 0, 0, 0, 5};
  return sid[0] == 1 && sid[1] == known.count &&
         std::memcmp(sid + 2, authority.data(), authority.size()) == 0 &&
         std::memcmp(sid + 8, known.parts.data(), known.count * sizeof(DWORD)) == 0;
}

}  // namespace zelvreg
