// Text values read directly in a chosen view, as the provider's methods give them.
#ifndef ZELVREG_KEYS_DIRECT_TEXT_H
#define ZELVREG_KEYS_DIRECT_TEXT_H

#include <windows.h>

#include <string>

#include "roots/Roots.h"

namespace zelvreg {

// The text of a REG_SZ or REG_EXPAND_SZ up to its first NUL; the empty text for any other type.
// `view` is the flag of the view, or 0. `type` becomes that of the value. The result is 0 or the
// code of the call that failed.
LONG readText(HiveHandle hive, const std::string& key, const std::string& valueName, REGSAM view,
              std::string& value, DWORD& type);

// A text with its variables expanded, as the system does it: with the NUL that it adds.
std::string expandedText(const std::string& text);

// The same as readText with variables expanded.
LONG readExpandedText(HiveHandle hive, const std::string& key, const std::string& valueName,
                      REGSAM view, std::string& value);

}  // namespace zelvreg

#endif
