// What Windows keeps of its users in the registry: names of keys, and which of them are people's.
#ifndef ZELVREG_ROOTS_USER_KEYS_H
#define ZELVREG_ROOTS_USER_KEYS_H

#include <cstdint>
#include <set>
#include <string>
#include <string_view>

namespace zelvreg {

// The key of a user's classes below HKEY_USERS has the name of the user's own key and this suffix.
inline constexpr std::u16string_view userClassesSuffix = u"_Classes";

// Below HKEY_LOCAL_MACHINE; it has a key for each user, by security identifier.
inline constexpr const char16_t* profileListKey =
    u"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\ProfileList";

// Below a user's key: where folders of the profile have been moved to.
inline constexpr const char16_t* userShellFoldersKey =
    u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders";

// Whether a text is a security identifier in full: "S-1-5-21-…".
bool isSidText(std::string_view text);

// Whether an identifier is that of somebody who signs in: an account of the computer, of a domain
// or of a directory, not one of the system's, of services and of their virtual accounts.
bool isPersonsSid(std::string_view sid);

// Why a profile is left out, as messages say it.
namespace profileFaults {
inline constexpr const char* isTemporary = "is a temporary one, which Windows deletes";
inline constexpr const char* isMandatory =
    "is a mandatory one, which does not keep what is changed in it";
inline constexpr const char* hasFolderOfAnother = "has the folder of another one";
inline constexpr const char* isOnNoDrive = "is on no drive of this computer";
inline constexpr const char* hasNoHive = "has no hive (NTUSER.DAT)";
}  // namespace profileFaults

// By its value State in the list of profiles; null if what is changed in it is kept.
const char* whyProfileIsLost(std::uint32_t state);

// An identifier for a profile that no list names: the same one each time, by the name of its folder
// in upper case, unless that one is taken.
std::string inventedSid(std::u16string_view upperCaseName, const std::set<std::string>& taken);

}  // namespace zelvreg

#endif
