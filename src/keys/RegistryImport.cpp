#include "keys/RegistryImport.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "keys/AccountSids.h"
#include "keys/KeySecurity.h"
#include "keys/RegistryTextReader.h"
#include "keys/RestorePrivileges.h"
#include "keys/RootHandles.h"
#include "keys/ValueOrder.h"
#include "runtime/FileText.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

// Of a link only the link is deleted, not its target.
bool deleteTree(HiveHandle hive, const std::u16string& path) {
  const WideKey key(hive, path, KEY_ENUMERATE_SUB_KEYS, REG_OPTION_OPEN_LINK);
  if (key.presence() == Presence::Absent) {
    return true;
  }
  if (const auto names = key.isOpen() ? key.subkeys() : std::nullopt) {
    for (const std::u16string& name : *names) {
      deleteTree(hive, path + u"\\" + name);
    }
  }
  return RegDeleteKeyExW(systemKey(hive), wideText(path), KEY_WOW64_64KEY, 0) == ERROR_SUCCESS;
}

// In the classes root one deletion would take the user's key and leave the machine's.
bool deleteKey(HiveHandle hive, const std::u16string& path) {
  if (hive != HiveHandle::ClassesRoot) {
    return deleteTree(hive, path);
  }
  const std::u16string below = u"Software\\Classes\\" + path;
  const bool isUsersGone = deleteTree(HiveHandle::CurrentUser, below);
  return deleteTree(HiveHandle::LocalMachine, below) && isUsersGone;
}

// Opens keys to write to them, and makes those that are missing: each through the handle of the one
// above, so that an entry which a new key inherits cannot prevent the keys below it.
class KeyMaker {
 public:
  // `hasPrivileges` says that RestorePrivileges are in force. They are used where lists refuse.
  explicit KeyMaker(bool hasPrivileges) : usesPrivileges(hasPrivileges) {}

  [[nodiscard]] WideKey open(HiveHandle hive, const std::u16string& path) const {
    if (path.empty()) {
      return {hive, path, MAXIMUM_ALLOWED};
    }
    // Only the classes root knows which of its two keys a new one belongs to.
    if (hive == HiveHandle::ClassesRoot) {
      return WideKey::make(hive, path, MAXIMUM_ALLOWED);
    }
    WideKey key = openThere(hive, path, KEY_QUERY_VALUE | KEY_SET_VALUE);
    return key.presence() == Presence::Absent ? make(hive, path) : std::move(key);
  }

 private:
  [[nodiscard]] WideKey openThere(HiveHandle hive, const std::u16string& path,
                                  REGSAM access) const {
    WideKey key(hive, path, access);
    if (key.isDenied() && usesPrivileges) {
      WideKey privileged(hive, path, access, REG_OPTION_BACKUP_RESTORE);
      if (privileged.isOpen()) {
        return privileged;
      }
    }
    // The rights that it does give may be enough.
    return key.isDenied() ? WideKey(hive, path, MAXIMUM_ALLOWED) : std::move(key);
  }

  [[nodiscard]] WideKey make(HiveHandle hive, const std::u16string& path) const {
    const std::size_t backslash = path.rfind(u'\\');
    if (backslash == std::u16string::npos) {
      return makeIn(WideKey(hive, u"", MAXIMUM_ALLOWED), path);
    }
    const std::u16string above = path.substr(0, backslash);
    WideKey parent = openThere(hive, above, KEY_CREATE_SUB_KEY);
    return makeIn(parent.presence() == Presence::Absent ? make(hive, above) : std::move(parent),
                  path.substr(backslash + 1));
  }

  [[nodiscard]] WideKey makeIn(const WideKey& parent, const std::u16string& name) const {
    WideKey key = WideKey::makeBelow(parent, name, MAXIMUM_ALLOWED, REG_OPTION_NON_VOLATILE);
    return key.isDenied() && usesPrivileges
               ? WideKey::makeBelow(parent, name, MAXIMUM_ALLOWED, REG_OPTION_BACKUP_RESTORE)
               : std::move(key);
  }

  bool usesPrivileges;
};

class Import {
 public:
  explicit Import(const RegistryChanges& asked) : changes(asked), keys(asked.isSafetyExport) {
    if (asked.isSafetyExport) {
      privileges.emplace();
    }
  }

  RegistryImport run() {
    for (const RegistryChange& change : changes.list) {
      note(apply(change), change);
    }
    endBlock();
    // Only now, since a list may refuse keys that are made below it.
    for (const RegistryChange& change : changes.list) {
      if (!change.security.empty()) {
        note(secure(change), change);
      }
    }
    result.isDone = refused == 0;
    result.message = message();
    return result;
  }

 private:
  bool apply(const RegistryChange& change) {
    switch (change.kind) {
      case RegistryChange::Kind::MakeKey:
        endBlock();
        block = &change;
        key.emplace(keys.open(change.hive, change.path));
        return counted(key->isOpen(), result.keys);
      case RegistryChange::Kind::DeleteKey:
        return counted(deleteKey(change.hive, change.path), result.keysDeleted);
      case RegistryChange::Kind::SetValue:
        names.push_back(change.value.name);
        return counted(key->setValue(change.value), result.valuesSet);
      default:
        return counted(key->deleteValue(change.value.name), result.valuesDeleted);
    }
  }

  void endBlock() {
    if (block != nullptr && key->isOpen() && !block->positions.empty()) {
      note(orderValues(*key, names, block->positions), *block);
    }
    block = nullptr;
    names.clear();
  }

  bool secure(const RegistryChange& change) {
    const SecurityRestore restored = restoreSecurity(change.hive, change.path, change.security);
    result.listsSet += restored == SecurityRestore::Done ? 1 : 0;
    return restored != SecurityRestore::Refused;
  }

  void note(bool isDone, const RegistryChange& change) {
    if (!isDone && ++refused == 1) {
      firstRefused = change.line;
    }
  }

  static bool counted(bool isDone, std::size_t& count) {
    count += isDone ? 1 : 0;
    return isDone;
  }

  [[nodiscard]] std::string message() const {
    if (refused > 0) {
      return std::to_string(refused) + " of " + std::to_string(changes.list.size()) +
             " changes were refused by the registry, the first in line " +
             std::to_string(firstRefused) + ".";
    }
    return "Imported: " + std::to_string(result.keys) + " keys and " +
           std::to_string(result.valuesSet) +
           " values; deleted: " + std::to_string(result.keysDeleted) + " keys and " +
           std::to_string(result.valuesDeleted) + " values." +
           (result.listsSet == 0
                ? ""
                : " Access lists restored: " + std::to_string(result.listsSet) + ".");
  }

  const RegistryChanges& changes;
  std::optional<RestorePrivileges> privileges;
  KeyMaker keys;
  RegistryImport result;
  const RegistryChange* block = nullptr;  // the key that values belong to, with its names so far
  std::optional<WideKey> key;
  std::vector<std::u16string> names;
  std::size_t refused = 0;
  std::size_t firstRefused = 0;
};

RegistryImport nothingDone(std::string message) {
  RegistryImport result;
  result.message = std::move(message);
  return result;
}

bool isCurrentUsers(const RegistryChange& change) { return change.hive == HiveHandle::CurrentUser; }

// Leads what was the current user's to where that user has it now. False if that is not there.
bool leadToUser(RegistryChanges& changes) {
  const bool isOthers = !changes.user.empty() && changes.user != currentUserSid() &&
                        std::ranges::any_of(changes.list, isCurrentUsers);
  if (!isOthers) {
    return true;
  }
  const std::u16string user = utf16(changes.user);
  for (RegistryChange& change : changes.list) {
    if (isCurrentUsers(change)) {
      change.hive = HiveHandle::Users;
      change.path = change.path.empty() ? user : user + u"\\" + change.path;
    }
  }
  return WideKey(HiveHandle::Users, user, KEY_QUERY_VALUE).presence() != Presence::Absent;
}

}  // namespace

std::string userOfRegistryText(std::string_view bytes) { return readRegistryText(bytes).user; }

RegistryImport importRegistryText(std::string_view bytes) {
  RegistryChanges changes = readRegistryText(bytes);
  if (changes.fault) {
    return nothingDone("Line " + std::to_string(changes.fault->line) + ": " + changes.fault->what +
                       ". Nothing was changed.");
  }
  if (!leadToUser(changes)) {
    return nothingDone("The keys of the user " + changes.user +
                       ", whose they were, are not loaded on this computer. Nothing was changed.");
  }
  return Import(changes).run();
}

RegistryImport importRegistryFile(const std::string& path) {
  const auto bytes = readFileText(path);
  return bytes ? importRegistryText(*bytes) : nothingDone(unreadFileMessage);
}

}  // namespace zelvreg
