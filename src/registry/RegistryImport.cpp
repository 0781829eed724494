#include "registry/RegistryImport.h"

#include <optional>

#include "registry/RegistryTextReader.h"
#include "runtime/FileText.h"

namespace zelvreg {
namespace {

// A link is deleted itself; what it leads to stays.
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

WideKey openForWriting(const RegistryChange& change) {
  return change.path.empty() ? WideKey(change.hive, change.path, MAXIMUM_ALLOWED)
                             : WideKey::make(change.hive, change.path, MAXIMUM_ALLOWED);
}

class Import {
 public:
  RegistryImport run(const RegistryChanges& changes) {
    for (const RegistryChange& change : changes.list) {
      if (!apply(change) && ++refused == 1) {
        firstRefused = change.line;
      }
    }
    result.isDone = refused == 0;
    result.message = message(changes.list.size());
    return result;
  }

 private:
  bool apply(const RegistryChange& change) {
    switch (change.kind) {
      case RegistryChange::Kind::MakeKey:
        key.emplace(openForWriting(change));
        return counted(key->isOpen(), result.keys);
      case RegistryChange::Kind::DeleteKey:
        return counted(deleteKey(change.hive, change.path), result.keysDeleted);
      case RegistryChange::Kind::SetValue:
        return counted(key->setValue(change.value), result.valuesSet);
      default:
        return counted(key->deleteValue(change.value.name), result.valuesDeleted);
    }
  }

  static bool counted(bool isDone, std::size_t& count) {
    count += isDone ? 1 : 0;
    return isDone;
  }

  [[nodiscard]] std::string message(std::size_t all) const {
    if (refused > 0) {
      return std::to_string(refused) + " of " + std::to_string(all) +
             " changes were refused by the registry, the first in line " +
             std::to_string(firstRefused) + ".";
    }
    return "Imported: " + std::to_string(result.keys) + " keys and " +
           std::to_string(result.valuesSet) +
           " values; deleted: " + std::to_string(result.keysDeleted) + " keys and " +
           std::to_string(result.valuesDeleted) + " values.";
  }

  RegistryImport result;
  std::optional<WideKey> key;  // of the last block
  std::size_t refused = 0;
  std::size_t firstRefused = 0;
};

RegistryImport nothingDone(std::string message) {
  RegistryImport result;
  result.message = std::move(message);
  return result;
}

}  // namespace

RegistryImport importRegistryText(std::string_view bytes) {
  const RegistryChanges changes = readRegistryText(bytes);
  if (changes.fault) {
    return nothingDone("Line " + std::to_string(changes.fault->line) + ": " + changes.fault->what +
                       ". Nothing was changed.");
  }
  return Import().run(changes);
}

RegistryImport importRegistryFile(const std::string& path) {
  const auto bytes = readFileText(path);
  return bytes ? importRegistryText(*bytes)
               : nothingDone("The file cannot be read. Nothing was changed.");
}

}  // namespace zelvreg
