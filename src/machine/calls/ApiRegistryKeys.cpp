// The calls that open, make, list and delete keys.
#include <shlwapi.h>
#include <windows.h>

#include "machine/Machine.h"
#include "machine/calls/ApiRegistry.h"
#include "machine/calls/ApiSupport.h"
#include "machine/computer/Requests.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {
namespace {

// In the classes root this is one key of the two: the user's if it is there.
LONG deleteAt(HKEY key, LPCWSTR subKey, REGSAM view, Below below) {
  const RegistryCall call(ApiCall::RegDeleteKey);
  return call.status() != ERROR_SUCCESS
             ? call.status()
             : deletePath(call, {.key = key, .path = textOf(subKey), .access = view}, below);
}

void noteRequest(LPCWSTR path, LPCWSTR className, DWORD options,
                 const SECURITY_ATTRIBUTES* security) {
  if (const Machine* machine = Machine::current()) {
    machine->requests().newestKey = {
        .path = utf8(textOf(path)),
        .className = utf8(textOf(className)),
        .options = options,
        .hasAttributes = security != nullptr,
        .attributesLength = security == nullptr ? 0 : security->nLength,
        .hasDescriptor = security != nullptr && security->lpSecurityDescriptor != nullptr,
        .inheritsHandle = security != nullptr && security->bInheritHandle != FALSE};
  }
}

}  // namespace
}  // namespace zelvreg::machine

using namespace zelvreg::machine;

LSTATUS RegOpenKeyExW(HKEY key, LPCWSTR subKey, DWORD options, REGSAM access, PHKEY result) {
  const RegistryCall call(ApiCall::RegOpenKey);
  const LONG status = beginOpen(call, options, result);
  if (status != ERROR_SUCCESS) {
    return status;
  }
  const CallPath path{.key = key,
                      .path = textOf(subKey),
                      .access = access,
                      .usesPrivileges = (options & REG_OPTION_BACKUP_RESTORE) != 0};
  const PathQuestion question{
      .root = key, .viewFlags = access & viewFlags, .options = options, .path = path.path};
  Registry& registry = call.registry();
  if (const auto* known = registry.pathMemo().find(question, registry.generation())) {
    return openFoundKey(call, *known, path, result);
  }
  return openPath(call, path, options, result, &question);
}

LSTATUS RegOpenKeyW(HKEY key, LPCWSTR subKey, PHKEY result) {
  return RegOpenKeyExW(key, subKey, 0, MAXIMUM_ALLOWED, result);
}

LSTATUS RegCreateKeyExW(HKEY key, LPCWSTR subKey, DWORD reserved, LPWSTR className, DWORD options,
                        REGSAM access, const SECURITY_ATTRIBUTES* security, PHKEY result,
                        LPDWORD disposition) {
  if (reserved != 0 || (options & ~REG_OPTION_BACKUP_RESTORE) != REG_OPTION_NON_VOLATILE) {
    return ERROR_INVALID_PARAMETER;
  }
  noteRequest(subKey, className, options, security);
  const RegistryCall call(ApiCall::RegCreateKey);
  return call.status() != ERROR_SUCCESS
             ? call.status()
             : createPath(call,
                          {.key = key,
                           .path = textOf(subKey),
                           .access = access,
                           .usesPrivileges = (options & REG_OPTION_BACKUP_RESTORE) != 0},
                          security, result, disposition);
}

LSTATUS RegCloseKey(HKEY key) {
  const Machine* machine = Machine::current();
  if (machine == nullptr) {
    return ERROR_NOT_READY;
  }
  Registry& registry = machine->registry();
  const bool isRoot = rootPlace(registry, key, View::Bits64).has_value();
  return isRoot || registry.handles().close(key) ? ERROR_SUCCESS : ERROR_INVALID_HANDLE;
}

LSTATUS RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, LPDWORD nameSize, LPDWORD reserved,
                      LPWSTR /*className*/, LPDWORD /*classSize*/, FILETIME* /*lastWrite*/) {
  if (name == nullptr || nameSize == nullptr || reserved != nullptr) {
    return ERROR_INVALID_PARAMETER;
  }
  const RegistryCall call(ApiCall::RegEnumKey);
  const RegistryKey* subkey = nullptr;
  const LONG status = findSubkey(call, key, index, subkey);
  return status != ERROR_SUCCESS ? status : putName(subkey->name(), name, *nameSize);
}

LSTATUS RegEnumKeyW(HKEY key, DWORD index, LPWSTR name, DWORD nameSize) {
  return RegEnumKeyExW(key, index, name, &nameSize, nullptr, nullptr, nullptr, nullptr);
}

LSTATUS RegDeleteKeyExW(HKEY key, LPCWSTR subKey, REGSAM view, DWORD reserved) {
  if (subKey == nullptr || reserved != 0) {
    return ERROR_INVALID_PARAMETER;
  }
  return deleteAt(key, subKey, view, Below::Refuses);
}

LSTATUS RegDeleteKeyW(HKEY key, LPCWSTR subKey) { return RegDeleteKeyExW(key, subKey, 0, 0); }

LSTATUS SHDeleteKeyW(HKEY key, LPCWSTR subKey) {
  return deleteAt(key, subKey, 0, Below::GoesAlong);
}
