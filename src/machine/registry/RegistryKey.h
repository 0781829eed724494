// One key of the emulated registry with its subkeys and values, as compact as two million of them
// ask for. Keys belong to the Registry that made them; only it changes them.
#ifndef ZELVREG_MACHINE_REGISTRY_REGISTRY_KEY_H
#define ZELVREG_MACHINE_REGISTRY_REGISTRY_KEY_H

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "machine/base/ChunkedList.h"
#include "machine/registry/NamePool.h"

namespace zelvreg::machine {

class HiveFile;

// A value's name (empty for the default value), type and raw bytes. Name and bytes live, unchanged,
// as long as the registry; other values may share them.
struct RegistryValue {
  Name valueName;
  const std::byte* data = nullptr;
  std::uint32_t dataSize = 0;
  DWORD type = REG_NONE;

  [[nodiscard]] std::u16string_view name() const { return valueName.view(); }
  [[nodiscard]] std::span<const std::byte> bytes() const { return {data, dataSize}; }
};

// The values of one key, in the order in which they were made.
class ValueList {
 public:
  [[nodiscard]] bool empty() const { return values.empty(); }
  [[nodiscard]] std::size_t size() const { return values.size(); }
  // Null after the last one.
  [[nodiscard]] const RegistryValue* at(std::size_t position) const { return values.at(position); }

  // By name, without regard to case; null if there is none.
  [[nodiscard]] const RegistryValue* find(std::u16string_view name) const;
  [[nodiscard]] RegistryValue* find(std::u16string_view name);

  // Adds one at the end, whose name must not be there yet.
  void append(Arena& arena, const RegistryValue& value);
  // Fills an empty list. Of several with one name the first stays. What is in `given` afterwards
  // has no meaning.
  void assign(Arena& arena, std::vector<RegistryValue>& given);
  // Whether it was there.
  bool erase(Arena& arena, std::u16string_view name);

 private:
  // Finds the values of a long list. Each has a number, which grows from value to value.
  struct Numbered {
    Name name;
    std::uint32_t number;
  };
  struct Index {
    ChunkedList<Numbered> byName;
    ChunkedList<std::uint32_t> numbers;  // of each value, at the value's own position
  };
  // Up to here looking at each name is as quick as searching.
  static constexpr std::size_t mostWithoutIndex = 64;
  using Values = ChunkedList<RegistryValue, mostWithoutIndex, Index>;

  [[nodiscard]] Values::Position locate(std::u16string_view name) const;
  static void addToIndex(Arena& arena, Index& index, Name name);

  Values values;
};

struct RegistryKey;

// The subkeys of one key, sorted by upper-case name.
using KeyList = ChunkedList<RegistryKey*>;

// Why a key is special to views and links. Given when a key is made.
enum class KeyRole : std::uint8_t {
  Ordinary,
  MachineRoot,      // HKEY_LOCAL_MACHINE
  UsersRoot,        // HKEY_USERS
  User,             // HKEY_USERS\S-…
  MachineSoftware,  // HKEY_LOCAL_MACHINE\Software
  UserSoftware,     // HKEY_USERS\S-…\Software
  Classes,          // Software\Classes of the machine or of a user, HKEY_USERS\S-…_Classes
  SoftwareWow,      // Software\Wow6432Node
  ClassesWow,       // Software\Classes\Wow6432Node
};

struct RegistryKey {
  RegistryKey* parent = nullptr;  // null for a root
  Name keyName;
  KeyList children;
  ValueList values;
  HiveFile* hive = nullptr;    // the hive file that the key comes from, or none
  std::uint32_t hiveNode = 0;  // its node there
  std::uint32_t security = 0;  // number of its access list; 0 if it has none of its own
  KeyRole role = KeyRole::Ordinary;
  bool childrenPending : 1 = false;  // the hive holds more than the `children` that were asked for
  bool valuesPending : 1 = false;    // the hive still holds them, `values` is empty
  bool isDeleted : 1 = false;
  bool isAlias : 1 = false;    // a built-in link; it has no content and is never written
  bool mayBeLink : 1 = false;  // it was given a value of type REG_LINK, or none has been looked at

  [[nodiscard]] std::u16string_view name() const { return keyName.view(); }
};

// Where a subkey of this name is, or else belongs.
KeyList::Position placeIn(const KeyList& list, std::u16string_view name);

// How many keys lie above this one; 0 for a root.
std::size_t depthOf(const RegistryKey& key);

}  // namespace zelvreg::machine

#endif
