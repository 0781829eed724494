// The enumerators of subkeys. Each fills a work list of the form, so that a caller can walk the
// names by index after the key is closed, and looks at the stop flag between two keys.
#ifndef ZELVREG_REGISTRY_SUBKEY_ENUMERATORS_H
#define ZELVREG_REGISTRY_SUBKEY_ENUMERATORS_H

#include <windows.h>

#include <cstdint>
#include <string>

#include "roots/Roots.h"

namespace zelvreg {

struct Form42;
class ListBox;

// What an enumerator gives besides its list.
struct Enumeration {
  // 0, 99 for a root that no short name gives, or the code of the open that failed.
  LONG rc = ERROR_SUCCESS;
  // Each name followed by a NUL, and one more NUL at the end. An empty key gives two.
  std::string names;
};

// 64-bit view, into List1, which the caller clears. Serves the message queue at each key. A stop
// leaves the names without the NUL at the end.
Enumeration fEnumKey(Form42& form, HiveHandle root, const std::string& key);

// 64-bit view, into List4, which it clears first, without serving the message queue: the inner
// level of a walk over two.
Enumeration fEnumKey1(Form42& form, HiveHandle root, const std::string& key);

// Whether the user has asked to stop.
bool isStopAsked(const Form42& form);

// Closes a list of names: one NUL after the entries, and a second one if there are none.
void closeNameList(std::string& names);

// What the enumerators differ in.
struct SubkeyEnumerator {
  enum class AtStop : std::uint8_t { LeavesNamesOpen, LeavesAllOpen, ClosesNames };

  REGSAM access;
  ListBox Form42::*list;
  bool clearsFirst;
  bool servesQueue;
  bool repaintsTitle;
  bool endsAfterFirst;
  AtStop atStop;
};

// What they share. Adds to `names`; `rc` stays as it was if a stop leaves the key open.
void enumerateSubkeys(Form42& form, const SubkeyEnumerator& kind, HiveHandle root,
                      const std::string& key, std::string& names, LONG& rc);

}  // namespace zelvreg

#endif
