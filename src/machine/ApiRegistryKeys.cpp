// The calls that open, make, list and delete keys.
#include <shlwapi.h>
#include <windows.h>

#include <vector>

#include "machine/ApiRegistry.h"
#include "machine/Machine.h"

namespace zelvreg::machine {
namespace {

constexpr DWORD optionOpenLink = 8;  // REG_OPTION_OPEN_LINK

// The view that the flags of an open ask for; both flags at once are refused.
LONG chooseView(REGSAM access, View ofHandle, View& view) {
  const REGSAM flags = access & viewFlags;
  if (flags == viewFlags) {
    return ERROR_INVALID_PARAMETER;
  }
  view = flags == KEY_WOW64_64KEY   ? View::Bits64
         : flags == KEY_WOW64_32KEY ? View::Bits32
                                    : ofHandle;
  return ERROR_SUCCESS;
}

struct Target {
  LONG status = ERROR_SUCCESS;  // else what the call must answer; the rest has no meaning then
  KeyPlace from;
  View view = View::Bits64;
  bool isPredefined = false;
};

// What every call with a handle, a path and an access mask looks at first.
Target targetOf(const RegistryCall& call, HKEY handle, std::u16string_view path, REGSAM access) {
  const CallKey key = call.find(handle);
  Target target{.status = key.status, .from = key.place, .isPredefined = key.open == nullptr};
  if (target.status != ERROR_SUCCESS) {
    return target;
  }
  target.status = chooseView(access, key.place.view, target.view);
  if (target.status == ERROR_SUCCESS) {
    target.status = checkPath(path);
  }
  const bool isGone = key.open != nullptr && shownKey(call.registry(), key.place) == nullptr;
  if (target.status == ERROR_SUCCESS && isGone) {
    target.status = ERROR_KEY_DELETED;
  }
  return target;
}

LONG openHandle(const RegistryCall& call, const KeyPlace& place, REGSAM access, PHKEY result) {
  const ACCESS_MASK rights = call.granted(*shownKey(call.registry(), place), access);
  if (rights == 0) {
    return ERROR_ACCESS_DENIED;
  }
  *result = call.registry().handles().open({.place = place, .rights = rights, .cursor = {}});
  return ERROR_SUCCESS;
}

LONG openFoundKey(const RegistryCall& call, const std::optional<KeyPlace>& place, REGSAM access,
                  PHKEY result) {
  return place ? openHandle(call, *place, access, result) : ERROR_FILE_NOT_FOUND;
}

LONG openKey(HKEY key, LPCSTR subKey, DWORD options, REGSAM access, PHKEY result) {
  const RegistryCall call(ApiCall::RegOpenKey);
  if (call.status() != ERROR_SUCCESS) {
    return call.status();
  }
  if (result == nullptr || (options & ~optionOpenLink) != 0) {
    return ERROR_INVALID_PARAMETER;
  }
  *result = nullptr;
  Registry& registry = call.registry();
  const PathQuestion question{.root = key,
                              .viewFlags = access & viewFlags,
                              .options = options,
                              .path = subKey == nullptr ? "" : subKey};
  if (const auto* known = registry.pathMemo().find(question, registry.generation())) {
    return openFoundKey(call, *known, access, result);
  }
  const WideText path(call.codePage(), subKey);
  const Target target = targetOf(call, key, path.view(), access);
  if (target.status != ERROR_SUCCESS) {
    return target.status;
  }
  if (path.view().empty() && target.isPredefined) {
    *result = key;
    return ERROR_SUCCESS;
  }
  const std::optional<KeyPlace> place =
      walk(registry, target.from, path.view(), target.view,
           options == optionOpenLink ? LastLink::Open : LastLink::Follow);
  // Handles come and go; only what a root leads to can be asked for again.
  if (target.isPredefined) {
    registry.pathMemo().keep(question, registry.generation(), place);
  }
  return openFoundKey(call, place, access, result);
}

// Gives a key just made the list that its maker passed along.
void secureNewKey(Registry& registry, const KeyPlace& place, const SECURITY_ATTRIBUTES* given) {
  if (given != nullptr && given->lpSecurityDescriptor != nullptr) {
    RegistryKey& key = *shownKey(registry, place);
    constexpr SECURITY_INFORMATION what =
        OWNER_SECURITY_INFORMATION | GROUP_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;
    registry.setSecurity(
        key, replaceParts(registry.security(key), readDescriptor(given->lpSecurityDescriptor), what,
                          keyRights));
  }
}

// The maker of a key has the rights that it asks for, whatever the new list says.
ACCESS_MASK makersRights(REGSAM access) {
  const bool wantsAll = (access & MAXIMUM_ALLOWED) != 0;
  return keyRights.map(access & ~(viewFlags | MAXIMUM_ALLOWED)) | (wantsAll ? KEY_ALL_ACCESS : 0);
}

// A key with what is still in it.
LONG eraseIfGranted(const RegistryCall& call, RegistryKey& key) {
  if (!call.registry().isErasable(key) || call.granted(key, DELETE_ACCESS) == 0) {
    return ERROR_ACCESS_DENIED;
  }
  call.registry().erase(key);
  return ERROR_SUCCESS;
}

// One key without subkeys.
LONG deleteKey(const RegistryCall& call, RegistryKey& key) {
  return call.registry().children(key).empty() ? eraseIfGranted(call, key) : ERROR_ACCESS_DENIED;
}

// A key with all below it; stops at the first that is refused. Built-in links go with their key.
LONG deleteTree(const RegistryCall& call, RegistryKey& key) {
  Registry& registry = call.registry();
  if (call.granted(key, KEY_ENUMERATE_SUB_KEYS) == 0) {
    return ERROR_ACCESS_DENIED;
  }
  std::vector<RegistryKey*> below;
  registry.children(key).forEach([&](RegistryKey* child) { below.push_back(child); });
  for (RegistryKey* child : below) {
    if (!child->isAlias && !child->isDeleted) {
      const LONG status = deleteTree(call, *child);
      if (status != ERROR_SUCCESS) {
        return status;
      }
    }
  }
  return eraseIfGranted(call, key);
}

LONG createKey(HKEY key, LPCSTR subKey, REGSAM access, const SECURITY_ATTRIBUTES* security,
               PHKEY result, LPDWORD disposition) {
  const RegistryCall call(ApiCall::RegCreateKey);
  if (call.status() != ERROR_SUCCESS) {
    return call.status();
  }
  if (result == nullptr) {
    return ERROR_INVALID_PARAMETER;
  }
  *result = nullptr;
  const WideText path(call.codePage(), subKey);
  const Target target = targetOf(call, key, path.view(), access);
  if (target.status != ERROR_SUCCESS) {
    return target.status;
  }
  const CreatedKey created =
      create(call.registry(), target.from, path.view(), target.view, call.token());
  if (created.status != ERROR_SUCCESS) {
    return created.status;
  }
  if (disposition != nullptr) {
    *disposition = created.isNew ? REG_CREATED_NEW_KEY : REG_OPENED_EXISTING_KEY;
  }
  if (!created.isNew) {
    return openHandle(call, created.place, access, result);
  }
  secureNewKey(call.registry(), created.place, security);
  *result = call.registry().handles().open(
      {.place = created.place, .rights = makersRights(access), .cursor = {}});
  return ERROR_SUCCESS;
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
  const CallKey from = call.find(key, KEY_ENUMERATE_SUB_KEYS);
  if (from.status != ERROR_SUCCESS) {
    return from.status;
  }
  MergeCursor& cursor =
      from.open == nullptr ? call.registry().handles().rootCursor() : from.open->cursor;
  const RegistryKey* subkey = subkeyAt(call.registry(), from.place, index, cursor);
  if (subkey == nullptr) {
    return ERROR_NO_MORE_ITEMS;
  }
  if (name == nullptr) {
    return ERROR_INVALID_PARAMETER;
  }
  std::size_t length = 0;
  return putName(call.codePage(), subkey->name(), name, nameSize, length);
}

using Delete = LONG (*)(const RegistryCall& call, RegistryKey& key);

// In the classes root this is one key of the two: the user's if it is there.
LONG deleteAt(HKEY key, LPCSTR subKey, Delete deleteFound) {
  const RegistryCall call(ApiCall::RegDeleteKey);
  if (call.status() != ERROR_SUCCESS) {
    return call.status();
  }
  const WideText path(call.codePage(), subKey);
  const Target target = targetOf(call, key, path.view(), 0);
  if (target.status != ERROR_SUCCESS) {
    return target.status;
  }
  const std::optional<KeyPlace> place =
      walk(call.registry(), target.from, path.view(), target.view);
  return place ? deleteFound(call, *shownKey(call.registry(), *place)) : ERROR_FILE_NOT_FOUND;
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
  return zelvreg::machine::deleteAt(key, subKey, zelvreg::machine::deleteKey);
}

LSTATUS SHDeleteKeyA(HKEY key, LPCSTR subKey) {
  return zelvreg::machine::deleteAt(key, subKey, zelvreg::machine::deleteTree);
}
