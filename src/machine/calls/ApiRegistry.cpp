#include "machine/calls/ApiRegistry.h"

#include <algorithm>

#include "machine/Machine.h"
#include "roots/NameLimits.h"

namespace zelvreg::machine {
RegistryCall::RegistryCall(ApiCall kind) : startStatus(ERROR_NOT_READY) {
  Machine* machine = Machine::current();
  if (machine == nullptr) {
    return;
  }
  startStatus = machine->faults().next(kind).value_or(ERROR_SUCCESS);
  tree = &machine->registry();
  processToken = &machine->token();
  privileges = &machine->processes().privileges;
}

CallKey RegistryCall::find(HKEY handle) const {
  CallKey key;
  if (startStatus != ERROR_SUCCESS) {
    key.status = startStatus;
    return key;
  }
  key.open = tree->handles().find(handle);
  if (key.open != nullptr) {
    key.place = key.open->place;
    return key;
  }
  // The process is a 32-bit one: what says nothing else is in its view.
  const std::optional<KeyPlace> root = rootPlace(*tree, handle, View::Bits32);
  if (root) {
    key.place = *root;
  } else {
    key.status = handle == HKEY_CURRENT_CONFIG ? ERROR_FILE_NOT_FOUND : ERROR_INVALID_HANDLE;
  }
  return key;
}

CallKey RegistryCall::find(HKEY handle, ACCESS_MASK right) const {
  CallKey key = find(handle);
  if (key.status != ERROR_SUCCESS) {
    return key;
  }
  const RegistryKey* shown = shownKey(*tree, key.place);
  if (key.open != nullptr) {
    if ((key.open->rights & right) != right) {
      key.status = ERROR_ACCESS_DENIED;
    } else if (shown == nullptr) {
      key.status = ERROR_KEY_DELETED;
    }
  } else if (shown != nullptr && granted(*shown, right) == 0) {
    key.status = ERROR_ACCESS_DENIED;
  }
  return key;
}

ACCESS_MASK RegistryCall::granted(const RegistryKey& key, ACCESS_MASK desired) const {
  const ACCESS_MASK wanted = desired & ~viewFlags;
  if ((wanted & WRITE_OWNER) == 0 || !privileges->takeOwnership) {
    return tree->grantedAccess(key, *processToken, wanted);
  }
  const ACCESS_MASK others = wanted & ~WRITE_OWNER;
  const ACCESS_MASK given = others == 0 ? 0 : tree->grantedAccess(key, *processToken, others);
  return others == 0 || given != 0 ? given | WRITE_OWNER : 0;
}

ACCESS_MASK RegistryCall::grantedByPrivilege() const {
  return (privileges->backup ? KEY_READ : 0) |
         (privileges->restore ? KEY_WRITE | DELETE_ACCESS : 0);
}

LONG findNamedValue(const RegistryCall& call, HKEY key, std::u16string_view name,
                    const RegistryValue*& value) {
  const CallKey from = call.find(key, KEY_QUERY_VALUE);
  if (from.status != ERROR_SUCCESS) {
    return from.status;
  }
  value = findValue(call.registry(), from.place, name);
  return value == nullptr ? ERROR_FILE_NOT_FOUND : ERROR_SUCCESS;
}

LONG findValueAt(const RegistryCall& call, HKEY key, DWORD index, const RegistryValue*& value) {
  const CallKey from = call.find(key, KEY_QUERY_VALUE);
  if (from.status != ERROR_SUCCESS) {
    return from.status;
  }
  value = valueAt(call.registry(), from.place, index);
  return value == nullptr ? ERROR_NO_MORE_ITEMS : ERROR_SUCCESS;
}

LONG findValueTarget(const RegistryCall& call, HKEY key, std::u16string_view name, bool hasData,
                     RegistryKey*& target) {
  const CallKey from = call.find(key, KEY_SET_VALUE);
  if (from.status != ERROR_SUCCESS) {
    return from.status;
  }
  target = shownKey(call.registry(), from.place);
  if (target == nullptr) {
    return ERROR_FILE_NOT_FOUND;
  }
  return name.size() > longestValueName || !hasData ? ERROR_INVALID_PARAMETER : ERROR_SUCCESS;
}

LONG deleteNamedValue(const RegistryCall& call, HKEY key, std::u16string_view name) {
  const CallKey from = call.find(key, KEY_SET_VALUE);
  if (from.status != ERROR_SUCCESS) {
    return from.status;
  }
  RegistryKey* target = shownKey(call.registry(), from.place);
  const bool wasThere = target != nullptr && call.registry().eraseValue(*target, name);
  return wasThere ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND;
}

LONG putName(std::u16string_view name, LPWSTR buffer, DWORD& size) {
  if (name.size() >= size) {
    return ERROR_MORE_DATA;
  }
  std::ranges::copy(name, buffer);
  buffer[name.size()] = u'\0';
  size = static_cast<DWORD>(name.size());
  return ERROR_SUCCESS;
}

}  // namespace zelvreg::machine
