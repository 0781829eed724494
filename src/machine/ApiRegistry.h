// What the registry calls of the Windows API share: the machine in force, planned faults, handles,
// rights and narrow text. Private to the ApiRegistry… files.
#ifndef ZELVREG_MACHINE_API_REGISTRY_H
#define ZELVREG_MACHINE_API_REGISTRY_H

#include <windows.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "machine/CodePage.h"
#include "machine/FaultPlan.h"
#include "machine/RegistryWalk.h"
#include "machine/WideText.h"

namespace zelvreg::machine {

// The view flags of an access mask, which are no rights.
inline constexpr REGSAM viewFlags = KEY_WOW64_64KEY | KEY_WOW64_32KEY;

// A handle as a call finds it: one of the table's, or a predefined key.
struct CallKey {
  LONG status = ERROR_SUCCESS;  // else what the call must answer; the rest has no meaning then
  KeyPlace place;
  OpenKey* open = nullptr;  // null for a predefined key
};

// One call in progress.
class RegistryCall {
 public:
  // Counts the call. Afterwards status() is ERROR_SUCCESS, or what the call must answer at once:
  // no machine is in force, or this call was planned to fail.
  explicit RegistryCall(ApiCall kind);

  [[nodiscard]] LONG status() const { return startStatus; }
  [[nodiscard]] Registry& registry() const { return *tree; }
  [[nodiscard]] const CodePage& codePage() const { return *page; }
  [[nodiscard]] const Token& token() const { return *processToken; }

  // What status() says is found to be the key's status too, so a caller asks for one of them.
  [[nodiscard]] CallKey find(HKEY handle) const;
  // The same for a call on the key itself: ERROR_ACCESS_DENIED without `right`,
  // ERROR_KEY_DELETED if the key is gone.
  [[nodiscard]] CallKey find(HKEY handle, ACCESS_MASK right) const;

  // The rights that opening this key with `desired` gives; 0 if it is denied.
  [[nodiscard]] ACCESS_MASK granted(const RegistryKey& key, ACCESS_MASK desired) const;

 private:
  LONG startStatus;
  Registry* tree = nullptr;
  const CodePage* page = nullptr;
  const Token* processToken = nullptr;
};

// The narrow form of a name, closed by a NUL: ERROR_MORE_DATA, with the buffer as it was, if it
// does not fit. `length`, without the NUL, is set on success.
LONG putName(const CodePage& page, std::u16string_view name, LPSTR buffer, std::size_t size,
             std::size_t& length);

}  // namespace zelvreg::machine

#endif
