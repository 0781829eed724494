// The environment variables of a computer that is not running, as its hives tell of them.
#ifndef ZELVREG_MACHINE_OFFLINE_OFFLINE_ENVIRONMENT_H
#define ZELVREG_MACHINE_OFFLINE_OFFLINE_ENVIRONMENT_H

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "machine/registry/Registry.h"

namespace zelvreg::machine {

// The text of a REG_SZ or REG_EXPAND_SZ value in UTF-8, up to its first NUL, not expanded. `path`
// is that of Registry::find(). None for an absent value and for any other type.
std::optional<std::string> textValue(Registry& registry, std::string_view path,
                                     std::string_view name);

struct OfflineFolders {
  std::string windows;        // "C:\\Windows"
  std::string profile;        // "C:\\Users\\name"; empty if there is no user
  bool isOldProfile = false;  // of the time before AppData
};

// What is known of the environment of a 32-bit process of the current user, variables expanded, in
// UTF-8. CurrentControlSet must be the link that it is on the running system.
std::map<std::string, std::string> readOfflineEnvironment(Registry& registry,
                                                          const OfflineFolders& folders,
                                                          const std::string& userName);

}  // namespace zelvreg::machine

#endif
