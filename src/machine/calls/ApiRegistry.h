// What the registry calls of the Windows API share: the machine in force, planned faults, handles
// and rights. Private to the ApiRegistry… files.
#ifndef ZELVREG_MACHINE_CALLS_API_REGISTRY_H
#define ZELVREG_MACHINE_CALLS_API_REGISTRY_H

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "machine/base/FaultPlan.h"
#include "machine/computer/Processes.h"
#include "machine/registry/RegistryWalk.h"

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
  [[nodiscard]] const Token& token() const { return *processToken; }

  // What status() says is found to be the key's status too, so a caller asks for one of them.
  [[nodiscard]] CallKey find(HKEY handle) const;
  // The same for a call on the key itself: ERROR_ACCESS_DENIED without `right`,
  // ERROR_KEY_DELETED if the key is gone.
  [[nodiscard]] CallKey find(HKEY handle, ACCESS_MASK right) const;

  // The rights that opening this key with `desired` gives; 0 if it is denied.
  [[nodiscard]] ACCESS_MASK granted(const RegistryKey& key, ACCESS_MASK desired) const;
  // Those that opening any key for backup and restoring gives; 0 without such a privilege.
  [[nodiscard]] ACCESS_MASK grantedByPrivilege() const;

 private:
  LONG startStatus;
  Registry* tree = nullptr;
  const Token* processToken = nullptr;
  const Privileges* privileges = nullptr;
};

// A path as a call is given it. `access` carries the flags of the view. With `usesPrivileges` the
// process's privileges decide in place of access lists and of the rights in `access`.
struct CallPath {
  HKEY key = nullptr;
  std::u16string_view path;
  REGSAM access = 0;
  bool usesPrivileges = false;
};

// The bodies of the calls. An open begins with beginOpen() and goes on if that
// gives ERROR_SUCCESS. Those for paths must not be called if the call's status is another.

// Looks at what every open must have, and makes `*result` null.
LONG beginOpen(const RegistryCall& call, DWORD options, PHKEY result);
// `question` is what the answer is remembered under, or null.
LONG openPath(const RegistryCall& call, const CallPath& path, DWORD options, PHKEY result,
              const PathQuestion* question = nullptr);
// Opens what a path is known to lead to, if to anything.
LONG openFoundKey(const RegistryCall& call, const std::optional<KeyPlace>& place,
                  const CallPath& path, PHKEY result);
LONG createPath(const RegistryCall& call, const CallPath& path, const SECURITY_ATTRIBUTES* security,
                PHKEY result, LPDWORD disposition);
LONG findSubkey(const RegistryCall& call, HKEY key, DWORD index, const RegistryKey*& subkey);
// What becomes of the subkeys of a key that is to be deleted.
enum class Below : std::uint8_t { Refuses, GoesAlong };
LONG deletePath(const RegistryCall& call, const CallPath& path, Below below);

LONG findNamedValue(const RegistryCall& call, HKEY key, std::u16string_view name,
                    const RegistryValue*& value);
LONG findValueAt(const RegistryCall& call, HKEY key, DWORD index, const RegistryValue*& value);
// The key that a value of this name can be set in. `hasData` tells whether the data are really
// there.
LONG findValueTarget(const RegistryCall& call, HKEY key, std::u16string_view name, bool hasData,
                     RegistryKey*& target);
LONG deleteNamedValue(const RegistryCall& call, HKEY key, std::u16string_view name);

// A name closed by a NUL: ERROR_MORE_DATA, with the buffer as it was, if it does not fit into
// `size` units. The size is that without the NUL on success.
LONG putName(std::u16string_view name, LPWSTR buffer, DWORD& size);

}  // namespace zelvreg::machine

#endif
