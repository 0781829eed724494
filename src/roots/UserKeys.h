// What Windows keeps of its users in the registry: names of keys.
#ifndef ZELVREG_ROOTS_USER_KEYS_H
#define ZELVREG_ROOTS_USER_KEYS_H

#include <string_view>

namespace zelvreg {

// The key of a user's classes below HKEY_USERS has the name of the user's own key and this suffix.
inline constexpr std::u16string_view userClassesSuffix = u"_Classes";

// Below HKEY_LOCAL_MACHINE; it has a key for each user, by security identifier.
inline constexpr const char16_t* profileListKey =
    u"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\ProfileList";

}  // namespace zelvreg

#endif
