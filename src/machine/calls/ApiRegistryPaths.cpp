// What the calls that open, make and delete keys do.
#include <vector>

#include "machine/calls/ApiRegistry.h"

namespace zelvreg::machine {
namespace {

// The view that the flags of an open name; both flags at once are refused.
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
Target targetOf(const RegistryCall& call, const CallPath& path) {
  const CallKey key = call.find(path.key);
  Target target{.status = key.status, .from = key.place, .isPredefined = key.open == nullptr};
  if (target.status != ERROR_SUCCESS) {
    return target;
  }
  target.status = chooseView(path.access, key.place.view, target.view);
  if (target.status == ERROR_SUCCESS) {
    target.status = checkPath(path.path);
  }
  const bool isGone = key.open != nullptr && shownKey(call.registry(), key.place) == nullptr;
  if (target.status == ERROR_SUCCESS && isGone) {
    target.status = ERROR_KEY_DELETED;
  }
  return target;
}

LONG openHandle(const RegistryCall& call, const KeyPlace& place, const CallPath& path,
                PHKEY result) {
  const ACCESS_MASK rights = path.usesPrivileges
                                 ? call.grantedByPrivilege()
                                 : call.granted(*shownKey(call.registry(), place), path.access);
  if (rights == 0) {
    return ERROR_ACCESS_DENIED;
  }
  *result = call.registry().handles().open({.place = place, .rights = rights, .cursor = {}});
  return ERROR_SUCCESS;
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
ACCESS_MASK makersRights(const RegistryCall& call, const CallPath& path) {
  if (path.usesPrivileges) {
    return call.grantedByPrivilege();
  }
  const bool wantsAll = (path.access & MAXIMUM_ALLOWED) != 0;
  const ACCESS_MASK asked = path.access & ~(viewFlags | MAXIMUM_ALLOWED);
  return keyRights.map(asked) | (wantsAll ? KEY_ALL_ACCESS : 0);
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

}  // namespace

LONG beginOpen(const RegistryCall& call, DWORD options, PHKEY result) {
  if (call.status() != ERROR_SUCCESS) {
    return call.status();
  }
  constexpr DWORD known = REG_OPTION_OPEN_LINK | REG_OPTION_BACKUP_RESTORE;
  if (result == nullptr || (options & ~known) != 0) {
    return ERROR_INVALID_PARAMETER;
  }
  *result = nullptr;
  return ERROR_SUCCESS;
}

LONG openFoundKey(const RegistryCall& call, const std::optional<KeyPlace>& place,
                  const CallPath& path, PHKEY result) {
  return place ? openHandle(call, *place, path, result) : ERROR_FILE_NOT_FOUND;
}

LONG openPath(const RegistryCall& call, const CallPath& path, DWORD options, PHKEY result,
              const PathQuestion* question) {
  const Target target = targetOf(call, path);
  if (target.status != ERROR_SUCCESS) {
    return target.status;
  }
  if (path.path.empty() && target.isPredefined) {
    *result = path.key;
    return ERROR_SUCCESS;
  }
  Registry& registry = call.registry();
  const std::optional<KeyPlace> place =
      walk(registry, target.from, path.path, target.view,
           (options & REG_OPTION_OPEN_LINK) != 0 ? LastLink::Open : LastLink::Follow);
  // Handles come and go; only what a root leads to can be asked for again.
  if (target.isPredefined && question != nullptr) {
    registry.pathMemo().keep(*question, registry.generation(), place);
  }
  return openFoundKey(call, place, path, result);
}

LONG createPath(const RegistryCall& call, const CallPath& path, const SECURITY_ATTRIBUTES* security,
                PHKEY result, LPDWORD disposition) {
  if (result == nullptr) {
    return ERROR_INVALID_PARAMETER;
  }
  *result = nullptr;
  const Target target = targetOf(call, path);
  if (target.status != ERROR_SUCCESS) {
    return target.status;
  }
  if (path.usesPrivileges && call.grantedByPrivilege() == 0) {
    return ERROR_ACCESS_DENIED;
  }
  const bool makesAnywhere =
      path.usesPrivileges && (call.grantedByPrivilege() & KEY_CREATE_SUB_KEY) != 0;
  const CreatedKey created = create(call.registry(), target.from, path.path, target.view,
                                    {.token = call.token(), .makesAnywhere = makesAnywhere});
  if (created.status != ERROR_SUCCESS) {
    return created.status;
  }
  if (disposition != nullptr) {
    *disposition = created.isNew ? REG_CREATED_NEW_KEY : REG_OPENED_EXISTING_KEY;
  }
  if (!created.isNew) {
    return openHandle(call, created.place, path, result);
  }
  secureNewKey(call.registry(), created.place, security);
  *result = call.registry().handles().open(
      {.place = created.place, .rights = makersRights(call, path), .cursor = {}});
  return ERROR_SUCCESS;
}

LONG findSubkey(const RegistryCall& call, HKEY key, DWORD index, const RegistryKey*& subkey) {
  const CallKey from = call.find(key, KEY_ENUMERATE_SUB_KEYS);
  if (from.status != ERROR_SUCCESS) {
    return from.status;
  }
  MergeCursor& cursor =
      from.open == nullptr ? call.registry().handles().rootCursor() : from.open->cursor;
  subkey = subkeyAt(call.registry(), from.place, index, cursor);
  return subkey == nullptr ? ERROR_NO_MORE_ITEMS : ERROR_SUCCESS;
}

LONG deletePath(const RegistryCall& call, const CallPath& path, Below below) {
  const Target target = targetOf(call, path);
  if (target.status != ERROR_SUCCESS) {
    return target.status;
  }
  const std::optional<KeyPlace> place = walk(call.registry(), target.from, path.path, target.view);
  if (!place) {
    return ERROR_FILE_NOT_FOUND;
  }
  RegistryKey& found = *shownKey(call.registry(), *place);
  return below == Below::GoesAlong ? deleteTree(call, found) : deleteKey(call, found);
}

}  // namespace zelvreg::machine
