// The access list of a key as it was before a change that is to be taken back.
#ifndef ZELVREG_KEYS_HELD_ACCESS_LIST_H
#define ZELVREG_KEYS_HELD_ACCESS_LIST_H

#include <string>
#include <vector>

#include "keys/WideKey.h"

namespace zelvreg {

class HeldAccessList {
 public:
  // Of a key of the 64-bit view, which stays open: what is set afterwards may refuse to open it.
  // Below the merged classes root a key that is deleted shows the other of the two, which would get
  // the list of the one that is gone: a true place is asked for. Holds nothing where the key does
  // not let its list be read and written.
  HeldAccessList(HiveHandle hive, const std::u16string& path);

  // Puts the list back where the key is still there. A failure is passed over.
  void restore() const;

 private:
  WideKey key;
  std::vector<BYTE> descriptor;
};

}  // namespace zelvreg

#endif
