// The access list of a key, kept so that a change of it can be undone.
#ifndef ZELVREG_KEYS_HELD_ACCESS_LIST_H
#define ZELVREG_KEYS_HELD_ACCESS_LIST_H

#include <string>
#include <vector>

#include "keys/WideKey.h"

namespace zelvreg {

class HeldAccessList {
 public:
  // Of a key of the 64-bit view. The key stays open, since the list that is set afterwards may
  // refuse to open it. `path` must not lead through the merged classes root: if one of its two keys
  // is deleted, the other would get the list. Holds nothing if the key does not let its list be
  // read and written.
  HeldAccessList(HiveHandle hive, const std::u16string& path);

  // Sets the list again if the key is still there. A failure is ignored.
  void restore() const;

 private:
  WideKey key;
  std::vector<BYTE> descriptor;
};

}  // namespace zelvreg

#endif
