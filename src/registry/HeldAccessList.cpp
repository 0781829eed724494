#include "registry/HeldAccessList.h"

namespace zelvreg {
namespace {

constexpr REGSAM listAccess = READ_CONTROL | WRITE_DAC | KEY_WOW64_64KEY;

}  // namespace

HeldAccessList::HeldAccessList(HiveHandle hive, const std::string& path)
    : key(hive, path, listAccess) {
  DWORD size = 0;
  if (key.isOpen()) {
    RegGetKeySecurity(key.handle(), DACL_SECURITY_INFORMATION, nullptr, &size);
  }
  descriptor.resize(size);
  if (size == 0 || RegGetKeySecurity(key.handle(), DACL_SECURITY_INFORMATION, descriptor.data(),
                                     &size) != ERROR_SUCCESS) {
    descriptor.clear();
  }
}

void HeldAccessList::restore() const {
  if (!descriptor.empty()) {
    // The call only reads, though its type does not say so.
    RegSetKeySecurity(key.handle(), DACL_SECURITY_INFORMATION,
                      const_cast<BYTE*>(descriptor.data()));
  }
}

}  // namespace zelvreg
