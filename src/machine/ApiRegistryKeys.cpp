// The calls that open, make, list and delete keys by narrow names.
#include <shlwapi.h>
#include <windows.h>

#include "machine/ApiRegistry.h"
#include "machine/Machine.h"

namespace zelvreg::machine {
namespace {

LONG openKey(HKEY key, LPCSTR subKey, DWORD options, REGSAM access, PHKEY result) {
  if ((options & REG_OPTION_BACKUP_RESTORE) != 0) {
    return ERROR_INVALID_PARAMETER;
  }
  const RegistryCall call(ApiCall::RegOpenKey);
  const LONG status = beginOpen(call, options, result);
  if (status != ERROR_SUCCESS) {
    return status;
  }
  const WideText path(call.codePage(), subKey);
  return openPath(call, {.key = key, .path = path.view(), .access = access}, options, result);
}

LONG createKey(HKEY key, LPCSTR subKey, REGSAM access, const SECURITY_ATTRIBUTES* security,
               PHKEY result, LPDWORD disposition) {
  const RegistryCall call(ApiCall::RegCreateKey);
  if (call.status() != ERROR_SUCCESS) {
    return call.status();
  }
  const WideText path(call.codePage(), subKey);
  return createPath(call, {.key = key, .path = path.view(), .access = access}, security, result,
                    disposition);
}

LONG closeKey(HKEY key) {
  const Machine* machine = Machine::current();
  if (machine == nullptr) {
    return ERROR_NOT_READY;
  }
  Registry& registry = machine->registry();
  const bool isRoot = rootPlace(registry, key, View::Bits64).has_value();
  return isRoot || registry.handles().close(key) ? ERROR_SUCCESS : ERROR_INVALID_HANDLE;
}

LONG subkeyName(HKEY key, DWORD index, LPSTR name, DWORD nameSize) {
  const RegistryCall call(ApiCall::RegEnumKey);
  const RegistryKey* subkey = nullptr;
  const LONG status = findSubkey(call, key, index, subkey);
  if (status != ERROR_SUCCESS) {
    return status;
  }
  if (name == nullptr) {
    return ERROR_INVALID_PARAMETER;
  }
  std::size_t length = 0;
  return putName(call.codePage(), subkey->name(), name, nameSize, length);
}

// In the classes root this is one key of the two: the user's if it is there.
LONG deleteAt(HKEY key, LPCSTR subKey, Below below) {
  const RegistryCall call(ApiCall::RegDeleteKey);
  if (call.status() != ERROR_SUCCESS) {
    return call.status();
  }
  const WideText path(call.codePage(), subKey);
  return deletePath(call, {.key = key, .path = path.view()}, below);
}

}  // namespace
}  // namespace zelvreg::machine

LSTATUS RegOpenKeyExA(HKEY key, LPCSTR subKey, DWORD options, REGSAM access, PHKEY result) {
  return zelvreg::machine::openKey(key, subKey, options, access, result);
}

LSTATUS RegOpenKeyA(HKEY key, LPCSTR subKey, PHKEY result) {
  return zelvreg::machine::openKey(key, subKey, 0, MAXIMUM_ALLOWED, result);
}

LSTATUS RegCreateKeyExA(HKEY key, LPCSTR subKey, DWORD reserved, LPSTR /*className*/, DWORD options,
                        REGSAM access, const SECURITY_ATTRIBUTES* security, PHKEY result,
                        LPDWORD disposition) {
  if (reserved != 0 || options != REG_OPTION_NON_VOLATILE) {
    return ERROR_INVALID_PARAMETER;
  }
  return zelvreg::machine::createKey(key, subKey, access, security, result, disposition);
}

LSTATUS RegCloseKey(HKEY key) { return zelvreg::machine::closeKey(key); }

LSTATUS RegEnumKeyA(HKEY key, DWORD index, LPSTR name, DWORD nameSize) {
  return zelvreg::machine::subkeyName(key, index, name, nameSize);
}

LSTATUS RegDeleteKeyA(HKEY key, LPCSTR subKey) {
  if (subKey == nullptr) {
    return ERROR_INVALID_PARAMETER;
  }
  return zelvreg::machine::deleteAt(key, subKey, zelvreg::machine::Below::Refuses);
}

LSTATUS SHDeleteKeyA(HKEY key, LPCSTR subKey) {
  return zelvreg::machine::deleteAt(key, subKey, zelvreg::machine::Below::GoesAlong);
}
