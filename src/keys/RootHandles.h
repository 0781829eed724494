// Which root a text names, and the handle of a root for a call of the system.
#ifndef ZELVREG_KEYS_ROOT_HANDLES_H
#define ZELVREG_KEYS_ROOT_HANDLES_H

#include <windows.h>

#include <string>
#include <string_view>

#include "roots/Roots.h"
#include "runtime/Shares.h"

namespace zelvreg {

// The `rc` of a hive text that was refused.
inline constexpr LONG hiveRefused = 99;

// The handle of a root for a call of the system; null for Unknown and hINI. Where another user's
// keys stand in (keys/ActingUser.h), that of the classes is the user's own, so that no change
// reaches the computer's; null if there are none.
HKEY systemKey(HiveHandle hive);

// By the long name ("HKEY_LOCAL_MACHINE"), exactly; Unknown for anything else.
HiveHandle GetHiveHandle(std::string_view name);
// The same map, for the text of a chosen root.
HiveHandle HiveFromName(std::string_view name);

// By the short name ("HKLM") in any case. "HKDD" and "HKCC" are known and give Unknown, so that a
// request on them fails like one on an unknown hive. Any other text gives hINI if it names a file.
HiveHandle HiveFromShortName(const std::string& name, Shares shares = Shares::Refused);

}  // namespace zelvreg

#endif
