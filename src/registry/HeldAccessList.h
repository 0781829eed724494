// The access list of a key as it was before a change that is to be taken back.
#ifndef ZELVREG_REGISTRY_HELD_ACCESS_LIST_H
#define ZELVREG_REGISTRY_HELD_ACCESS_LIST_H

#include <windows.h>

#include <string>
#include <vector>

#include "registry/Hives.h"
#include "registry/RegistryKey.h"

namespace zelvreg {

class HeldAccessList {
 public:
  // Of a key of the 64-bit view, which stays open: what is set afterwards may refuse to open it.
  // Holds nothing where the key does not let its list be read and written.
  HeldAccessList(HiveHandle hive, const std::string& path);

  // Puts the list back where the key is still there. A failure is passed over.
  void restore() const;

 private:
  RegistryKey key;
  std::vector<BYTE> descriptor;
};

}  // namespace zelvreg

#endif
