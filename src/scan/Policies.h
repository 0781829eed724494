// What an administrator has decided for everybody who uses a computer: values of a key below
// HKEY_LOCAL_MACHINE, in the 64-bit view. They win over the command line and the settings. A
// computer that is repaired from outside gives no orders: there nothing is a policy.
//
// A value that is there but makes no sense keeps the safe side: the safeguard, the undo
// information, the categories that nobody named. So does one that cannot be read, but for the
// categories: without them there would be no scan.
#ifndef ZELVREG_SCAN_POLICIES_H
#define ZELVREG_SCAN_POLICIES_H

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace zelvreg {

struct Form42;

inline constexpr const char* policyKey = "Software\\Policies\\zelvane\\zelvreg";

// Values beside those of the safeguards (scan/SafeguardSources.h).
inline constexpr const char* undoPolicy = "saveundo";  // the setting has the same name
inline constexpr const char* categoriesPolicy = "categories";
// A key below the others; each of its values holds an exclusion.
inline constexpr const char* exclusionsPolicy = "Exclusions";

// All values that are read, that key not among them.
std::vector<std::string> policyValueNames();

// A text or a number, as text; empty for any other type, and for one that cannot be read.
// std::nullopt without one.
std::optional<std::string> policyText(const Form42& form, const char* name);

// Whether a repair writes undo information; "0" alone switches it off.
std::optional<bool> undoByPolicy(const Form42& form);

// The rows that a scan takes, from names as the command line knows them with commas between. Names
// that are not known are passed over; where none is left, nothing may be scanned.
std::optional<std::set<std::size_t>> categoriesByPolicy(const Form42& form);

// What every scan leaves out, in the order of the values. Blank texts are passed over, because an
// empty exclusion would leave out everything. std::nullopt if there are some, or may be, that
// cannot be read.
std::optional<std::vector<std::string>> exclusionsByPolicy(const Form42& form);

// Where exclusions are that could not be read: the key of the policies if it still cannot be, else
// the file.
std::string unreadExclusions(const Form42& form);

// One line that says that something contradicts a policy.
std::string policyRefusal(const std::string& what, const std::string& advice);

}  // namespace zelvreg

#endif
