// Routines that the system has and that nothing calls. They are kept because the system has them.
//
// `hive` is a text that HiveFromShortName takes. `rc` becomes 0, 99 for a text that it refuses, or
// the code of the call that failed.
#ifndef ZELVREG_REGISTRY_KEPT_ROUTINES_H
#define ZELVREG_REGISTRY_KEPT_ROUTINES_H

#include <windows.h>

#include <string>

#include "roots/Roots.h"
#include "runtime/Shares.h"

namespace zelvreg {

struct Form42;

// Three more enumerators of subkeys (SubkeyEnumerators.h), which add to `names`.
// The counterpart of fEnumKey for the 32-bit view. A stop leaves the key open and `rc` as it was.
void fEnumKeyno(Form42& form, const std::string& hive, const std::string& key, std::string& names,
                LONG& rc);
// Whether there is any: they end after one name, in List5 and List6, which they clear first.
void fEnumKey5(Form42& form, const std::string& hive, const std::string& key, std::string& names,
               LONG& rc);
void fEnumKey6(Form42& form, const std::string& hive, const std::string& key, std::string& names,
               LONG& rc);

// Lists the values of a key with their data in the 64-bit view: names into List1, and "name=data"
// followed by a NUL into `pairs`, for texts, numbers, and binary data below 3 bytes. A failed
// second reading of a value ends it with that code and leaves the key open. On an INI file `pairs`
// is the section of that name and `rc` the number of characters read.
void fEnumValue_old(Form42& form, const std::string& hive, const std::string& key,
                    std::string& pairs, LONG& rc);

// Looks in an INI file for the first section whose header contains `section` followed by a blank or
// "]", and in it for the first line that begins with `key` and holds "=". All is compared in upper
// case. Found: `result` is what follows the "=", in upper case like the line, `section` the whole
// name from the header, `rc` 0. Else `result` is `fallback` and `rc` is 2, also for a file that may
// not be followed.
void fReadIniFuzzy(const std::string& file, std::string& section, const std::string& key,
                   const std::string& fallback, std::string& result, LONG& rc,
                   Shares shares = Shares::Refused);

// Deletes a key without subkeys under the predefined handle itself. Whether it worked.
bool DeleteKey3(HiveHandle hive, const std::string& key);

// Walks all keys below one, through the provider, and does nothing with them.
void EnumerateKeys(Form42& form, HiveHandle hive, const std::string& key);

// Reads the names of a key's values in the 64-bit view and drops them; `rc` stays.
void test(Form42& form, const std::string& hive, const std::string& key, LONG& rc);

}  // namespace zelvreg

#endif
