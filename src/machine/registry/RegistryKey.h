// One key of the emulated registry with its subkeys and values, as compact as two million of them
// ask for. Keys belong to the Registry that made them; only it changes them.
#ifndef ZELVREG_MACHINE_REGISTRY_REGISTRY_KEY_H
#define ZELVREG_MACHINE_REGISTRY_REGISTRY_KEY_H

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "machine/base/ChunkedList.h"

namespace zelvreg::machine {

class HiveFile;

// A value's name (empty for the default value), type and raw bytes. Name and bytes live as long as
// the registry, but a later write of the same value may reuse the bytes' place.
struct RegistryValue {
  const char16_t* nameText = nullptr;
  std::byte* data = nullptr;
  std::uint32_t dataSize = 0;
  DWORD type = REG_NONE;
  std::uint32_t sequence = 0;  // grows from value to value of one key
  std::uint16_t nameLength = 0;

  [[nodiscard]] std::u16string_view name() const { return {nameText, nameLength}; }
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
  void append(Arena& arena, RegistryValue value);
  // Fills an empty list. Of several with one name the first stays, also in `given`.
  void assign(Arena& arena, std::vector<RegistryValue>& given);
  // Whether it was there.
  bool erase(std::u16string_view name);

 private:
  using Values = ChunkedList<RegistryValue>;
  [[nodiscard]] Values::Position locate(std::u16string_view name) const;
  [[nodiscard]] Values::Position positionOf(std::uint32_t sequence) const;
  void buildIndex();

  Values values;
  // Sequence numbers by hash of the upper-case name; only for keys with many values.
  std::unique_ptr<std::unordered_multimap<std::size_t, std::uint32_t>> index;
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
  const char16_t* nameText = nullptr;
  KeyList children;
  ValueList values;
  HiveFile* hive = nullptr;    // the hive file that the key comes from, or none
  std::uint32_t hiveNode = 0;  // its node there
  std::uint32_t security = 0;  // number of its access list; 0 if it has none of its own
  std::uint8_t nameLength = 0;
  KeyRole role = KeyRole::Ordinary;
  bool childrenPending = false;  // the hive still holds them, `children` is empty
  bool valuesPending = false;
  bool isDeleted = false;
  bool isAlias = false;    // a built-in link; it has no content and is never written
  bool mayBeLink = false;  // it was given a value of type REG_LINK

  [[nodiscard]] std::u16string_view name() const { return {nameText, nameLength}; }
};

// How many keys lie above this one; 0 for a root.
std::size_t depthOf(const RegistryKey& key);

}  // namespace zelvreg::machine

#endif
