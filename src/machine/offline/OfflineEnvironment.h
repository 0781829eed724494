// The environment variables of a computer that is not running, as its hives tell of them.
#ifndef ZELVREG_MACHINE_OFFLINE_OFFLINE_ENVIRONMENT_H
#define ZELVREG_MACHINE_OFFLINE_OFFLINE_ENVIRONMENT_H

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "machine/computer/MachineUser.h"
#include "machine/registry/Registry.h"

namespace zelvreg::machine {

// The text of a REG_SZ or REG_EXPAND_SZ value in UTF-8, up to its first NUL, not expanded. `path`
// is that of Registry::find(). None for an absent value and for any other type.
std::optional<std::string> textValue(Registry& registry, std::string_view path,
                                     std::string_view name);

// What is known of the environment of a 32-bit process of this user, variables expanded, in UTF-8:
// only names of which something is known. `windows` is "C:\\Windows". CurrentControlSet must be the
// link that it is on the running system.
std::map<std::string, std::string> readOfflineEnvironment(Registry& registry,
                                                          const std::string& windows,
                                                          const MachineUser& user);

}  // namespace zelvreg::machine

#endif
