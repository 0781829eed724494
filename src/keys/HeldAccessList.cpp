#include "keys/HeldAccessList.h"

namespace zelvreg {

HeldAccessList::HeldAccessList(HiveHandle hive, const std::u16string& path)
    : key(hive, path, READ_CONTROL | WRITE_DAC), descriptor(key.security()) {}

void HeldAccessList::restore() const {
  if (!descriptor.empty()) {
    static_cast<void>(key.setSecurity(descriptor, DACL_SECURITY_INFORMATION));
  }
}

}  // namespace zelvreg
