// The registry of the emulated computer: the tree of keys with its links, values and access lists,
// as the 64-bit view has it. RegistryWalk.h follows paths through it in either view.
#ifndef ZELVREG_MACHINE_REGISTRY_REGISTRY_H
#define ZELVREG_MACHINE_REGISTRY_REGISTRY_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "machine/base/Arena.h"
#include "machine/registry/HiveChanges.h"
#include "machine/registry/LastFound.h"
#include "machine/registry/NamePool.h"
#include "machine/registry/PathMemo.h"
#include "machine/registry/RegistryHandles.h"
#include "machine/registry/RegistryKey.h"
#include "machine/registry/WayMemo.h"
#include "machine/security/Security.h"
#include "machine/security/SecurityTable.h"

namespace zelvreg::machine {

struct HiveSubkey;
class HiveText;

class Registry {
 public:
  // `bits` is 64 or 32; `userSid` ("S-1-5-21-…") names the current user's key in HKEY_USERS.
  Registry(int bits, std::string_view userSid);
  ~Registry();
  Registry(const Registry&) = delete;
  Registry& operator=(const Registry&) = delete;

  [[nodiscard]] bool is64Bit() const { return has64BitView; }
  void setCurrentUser(std::string_view sid);

  // HKEY_LOCAL_MACHINE, HKEY_USERS and the current user's key; they are always there.
  [[nodiscard]] RegistryKey& machineRoot() { return *machine; }
  [[nodiscard]] RegistryKey& usersRoot() { return *users; }
  [[nodiscard]] RegistryKey& currentUser() { return *user; }

  // Subkeys and values as they lie in the tree: links are not followed. Keys that come from a
  // hive file are read from it when first asked for.
  [[nodiscard]] const KeyList& children(RegistryKey& key);
  [[nodiscard]] RegistryKey* child(RegistryKey& key, std::u16string_view name);
  [[nodiscard]] const ValueList& values(RegistryKey& key);

  // The subkey of this name, made if it is not there. Under a name that is a built-in link it is
  // the link's target. The name must have 1 to longestKeyName units and no backslash.
  RegistryKey& makeChild(RegistryKey& parent, std::u16string_view name);
  // The same if the name sorts after all subkeys that are there; else null, and nothing is done.
  RegistryKey* makeLastChild(RegistryKey& parent, std::u16string_view name);
  // A root and the current user's key cannot be erased.
  [[nodiscard]] bool isErasable(const RegistryKey& key) const;
  // The key and all below it. Links in it go, not what they point to. Open handles to them stay
  // valid and find isDeleted set. The key must be erasable.
  void erase(RegistryKey& key);

  void setValue(RegistryKey& key, std::u16string_view name, DWORD type,
                std::span<const std::byte> bytes);
  // Whether there was one.
  bool eraseValue(RegistryKey& key, std::u16string_view name);

  // Whether opening this key by name leads elsewhere; a built-in link's target, or null.
  [[nodiscard]] bool isLink(RegistryKey& key);
  [[nodiscard]] RegistryKey* aliasTarget(const RegistryKey& key) const;

  // Puts the content of a hive file at a new key. A key of the hive is read when first touched.
  void mount(RegistryKey& parent, std::u16string_view name, std::unique_ptr<HiveFile> hive);
  // Makes CurrentControlSet the link that Select\Current names, if it names one. Call once, when
  // everything is loaded; what was loaded counts as unchanged from then on.
  void finishLoading();

  // Access lists by the key's path in UTF-8 ("HKEY_LOCAL_MACHINE\\Software\\X", 64-bit view), for
  // loading: they count as unchanged. A path whose key does not exist throws MachineError.
  void setSecurity(std::string_view path, SecurityDescriptor descriptor);
  // Every key that has a list of its own, in the order of the tree.
  [[nodiscard]] std::vector<std::pair<std::string, SecurityDescriptor>> securities() const;

  [[nodiscard]] const SecurityDescriptor& security(const RegistryKey& key) const;
  void setSecurity(RegistryKey& key, SecurityDescriptor descriptor);
  // The rights that opening the key with `desired` gives, or 0 if it is denied.
  [[nodiscard]] ACCESS_MASK grantedAccess(const RegistryKey& key, const Token& token,
                                          ACCESS_MASK desired) {
    return securityTable.grantedTo(token, key.security, desired);
  }

  // The hive files that were mounted, and what must be written to them; nothing is noted while
  // there is none.
  [[nodiscard]] const std::vector<std::unique_ptr<HiveFile>>& hiveFiles() const { return hives; }
  [[nodiscard]] HiveChanges& hiveChanges() { return changes; }

  // Whether keys or values, or access lists, differ from what was loaded.
  [[nodiscard]] bool contentChanged() const { return hasNewContent; }
  [[nodiscard]] bool securityChanged() const { return hasNewSecurity; }
  // After saving: what is there now counts as loaded.
  void markSaved() {
    hasNewContent = hasNewSecurity = false;
    changes.clear();
  }
  // Another number after each key that was made or erased, and whenever a link may lead elsewhere.
  [[nodiscard]] std::uint64_t generation() const { return keyGeneration; }

  [[nodiscard]] RegistryHandles& handles() { return openKeys; }
  [[nodiscard]] PathMemo& pathMemo() { return lastPaths; }
  [[nodiscard]] WayMemo& wayMemo() { return lastWays; }
  [[nodiscard]] ClassesRootMemo& classesRootMemo() { return lastClassesRoot; }
  // How many handles the program has not closed.
  [[nodiscard]] std::size_t openHandles() const { return openKeys.size(); }

  // For inspection: the key at a UTF-8 path that begins with a root's long name, in the 64-bit
  // view; null if there is none. All keys below the roots and all values, reading every hive.
  [[nodiscard]] RegistryKey* find(std::string_view path);
  struct Counts {
    std::size_t keys = 0;
    std::size_t values = 0;
  };
  [[nodiscard]] Counts count();
  // "HKEY_LOCAL_MACHINE\\SOFTWARE\\X" in UTF-8, names as written.
  [[nodiscard]] static std::string pathOf(const RegistryKey& key);

 private:
  RegistryKey& newKey(RegistryKey* parent, Name name);
  Name makeName(const HiveText& text);
  RegistryKey& addChild(RegistryKey& parent, std::u16string_view name, KeyList::Position place);
  RegistryKey& makeMissingChild(RegistryKey& parent, std::u16string_view name,
                                KeyList::Position place);
  RegistryKey* makeAliasTarget(RegistryKey& parent, std::u16string_view name);
  [[nodiscard]] KeyRole roleOf(const RegistryKey& parent, std::u16string_view name) const;
  void tieAliases(RegistryKey& key);
  RegistryKey* usersChildOf(const RegistryKey& classes);
  void addAlias(RegistryKey& parent, std::u16string_view name, RegistryKey& target);
  std::u16string selectedControlSet(RegistryKey& system);
  void moveContent(RegistryKey& from, RegistryKey& to);
  [[nodiscard]] RegistryKey* loadedChild(RegistryKey& key, std::u16string_view name);
  RegistryKey& newHiveKey(RegistryKey& parent, const HiveSubkey& subkey);
  RegistryKey* loadChild(RegistryKey& key, std::u16string_view name);
  void loadChildren(RegistryKey& key);
  void loadValues(RegistryKey& key);
  void forget(RegistryKey& key);
  void noteValuesChanged(RegistryKey& key);

  bool has64BitView;
  Arena arena;  // of keys and their lists
  Arena
      texts;  // of names and data: apart, so that the list of a new key's values can grow in place
  NamePool names;
  DataPool data;
  std::vector<std::unique_ptr<HiveFile>> hives;
  HiveChanges changes;
  RegistryKey* machine;
  RegistryKey* users;
  RegistryKey* user = nullptr;
  std::unordered_map<const RegistryKey*, RegistryKey*> aliases;
  SecurityTable securityTable;
  RegistryHandles openKeys;
  PathMemo lastPaths;
  WayMemo lastWays;
  ClassesRootMemo lastClassesRoot;
  LastFound lastFound;
  std::vector<RegistryKey*> spareKeyList;  // memory for loading, kept from one key to the next
  std::vector<RegistryValue> spareValueList;
  std::uint64_t keyGeneration = 0;
  bool hasNewContent = false;
  bool hasNewSecurity = false;
};

}  // namespace zelvreg::machine

#endif
