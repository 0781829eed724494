// The calls that read and set a key's access list.
#include <windows.h>

#include <algorithm>

#include "machine/calls/ApiRegistry.h"

namespace zelvreg::machine {
namespace {

ACCESS_MASK rightToRead(SECURITY_INFORMATION what) {
  const bool wantsSacl = (what & SACL_SECURITY_INFORMATION) != 0;
  return READ_CONTROL | (wantsSacl ? ACCESS_SYSTEM_SECURITY : 0);
}

ACCESS_MASK rightToSet(SECURITY_INFORMATION what) {
  constexpr SECURITY_INFORMATION owners = OWNER_SECURITY_INFORMATION | GROUP_SECURITY_INFORMATION;
  ACCESS_MASK rights = 0;
  if ((what & owners) != 0) {
    rights |= WRITE_OWNER;
  }
  if ((what & DACL_SECURITY_INFORMATION) != 0) {
    rights |= WRITE_DAC;
  }
  if ((what & SACL_SECURITY_INFORMATION) != 0) {
    rights |= ACCESS_SYSTEM_SECURITY;
  }
  return rights;
}

LONG getSecurity(HKEY key, SECURITY_INFORMATION what, PSECURITY_DESCRIPTOR descriptor,
                 LPDWORD size) {
  const RegistryCall call(ApiCall::RegGetKeySecurity);
  if (call.status() != ERROR_SUCCESS) {
    return call.status();
  }
  if (size == nullptr) {
    return ERROR_INVALID_PARAMETER;
  }
  const CallKey from = call.find(key, rightToRead(what));
  if (from.status != ERROR_SUCCESS) {
    return from.status;
  }
  const RegistryKey* target = shownKey(call.registry(), from.place);
  if (target == nullptr) {
    return ERROR_FILE_NOT_FOUND;
  }
  const Bytes bytes = selfRelative(call.registry().security(*target), what);
  const std::size_t room = descriptor == nullptr ? 0 : *size;
  *size = static_cast<DWORD>(bytes.size());
  if (room < bytes.size()) {
    return ERROR_INSUFFICIENT_BUFFER;
  }
  std::ranges::copy(bytes, static_cast<BYTE*>(descriptor));
  return ERROR_SUCCESS;
}

LONG setSecurity(HKEY key, SECURITY_INFORMATION what, PSECURITY_DESCRIPTOR descriptor) {
  const RegistryCall call(ApiCall::RegSetKeySecurity);
  if (call.status() != ERROR_SUCCESS) {
    return call.status();
  }
  if (descriptor == nullptr) {
    return ERROR_INVALID_PARAMETER;
  }
  const CallKey from = call.find(key, rightToSet(what));
  if (from.status != ERROR_SUCCESS) {
    return from.status;
  }
  RegistryKey* target = shownKey(call.registry(), from.place);
  if (target == nullptr) {
    return ERROR_FILE_NOT_FOUND;
  }
  Registry& registry = call.registry();
  registry.setSecurity(*target, replaceParts(registry.security(*target), readDescriptor(descriptor),
                                             what, keyRights));
  return ERROR_SUCCESS;
}

}  // namespace
}  // namespace zelvreg::machine

LSTATUS RegGetKeySecurity(HKEY key, SECURITY_INFORMATION what, PSECURITY_DESCRIPTOR descriptor,
                          LPDWORD size) {
  return zelvreg::machine::getSecurity(key, what, descriptor, size);
}

LSTATUS RegSetKeySecurity(HKEY key, SECURITY_INFORMATION what, PSECURITY_DESCRIPTOR descriptor) {
  return zelvreg::machine::setSecurity(key, what, descriptor);
}
