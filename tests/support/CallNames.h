// The calls that can be made to fail, by name.
#ifndef ZELVREG_TESTS_SUPPORT_CALL_NAMES_H
#define ZELVREG_TESTS_SUPPORT_CALL_NAMES_H

#include <array>

#include "machine/base/FaultPlan.h"

namespace zelvreg::fixture {

// In the order of ApiCall.
inline constexpr std::array callNames{
    "RegOpenKey",        "RegCreateKey",      "RegEnumKey",        "RegEnumValue",
    "RegQueryValue",     "RegSetValue",       "RegDeleteKey",      "RegDeleteValue",
    "RegGetKeySecurity", "RegSetKeySecurity", "LookupAccountName", "GetFileSecurity",
    "SetFileSecurity",   "CreateFile",        "ReadFile",          "WriteFile",
    "DeleteFile",        "MoveFile",          "CreateDirectory",   "GetFileAttributes",
    "SetFileAttributes", "FindFirstFile",     "PrivateProfile",    "CreateFileMapping",
    "MapViewOfFile",
};
static_assert(callNames.size() == static_cast<std::size_t>(machine::ApiCall::Count));

// The name of one of them.
inline const char* nameOf(machine::ApiCall call) {
  return callNames.at(static_cast<std::size_t>(call));
}

}  // namespace zelvreg::fixture

#endif
