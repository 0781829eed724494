// The enumerators of subkeys. Each fills a work list of the form, so that a caller can walk the
// names by index after the key is closed again, and looks at the stop flag between two keys.
//
// `names` receives each name followed by a NUL, and one more NUL at the end (an empty key gives
// two). `rc` becomes 0, 99 for a hive text that HiveFromShortName refuses, or the code of a failing
// open.
#ifndef ZELVREG_REGISTRY_SUBKEY_ENUMERATORS_H
#define ZELVREG_REGISTRY_SUBKEY_ENUMERATORS_H

#include <windows.h>

#include <string>

namespace zelvreg {

struct Form42;

// 64-bit view, into List1, which the caller clears. Serves the message queue at each key.
void fEnumKey(Form42& form, const std::string& hive, const std::string& key, std::string& names,
              LONG& rc);
// Its counterpart for the 32-bit view. Stopped, it leaves the key open and `rc` as it was.
void fEnumKeyno(Form42& form, const std::string& hive, const std::string& key, std::string& names,
                LONG& rc);

// 64-bit view, into a list that they clear first, without serving the message queue. fEnumKey1 is
// the inner level of a walk over two; the other two end after one name: is there any?
void fEnumKey1(Form42& form, const std::string& hive, const std::string& key, std::string& names,
               LONG& rc);
void fEnumKey5(Form42& form, const std::string& hive, const std::string& key, std::string& names,
               LONG& rc);
void fEnumKey6(Form42& form, const std::string& hive, const std::string& key, std::string& names,
               LONG& rc);

// Whether the user has asked to stop.
bool isStopAsked(const Form42& form);

// Closes a list of names: one NUL behind the entries, and a second one if there are none.
void closeNameList(std::string& names);

}  // namespace zelvreg

#endif
