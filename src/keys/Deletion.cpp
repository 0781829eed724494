#include "keys/Deletion.h"

#include <array>
#include <vector>

#include "keys/OpenKey.h"
#include "keys/RootHandles.h"
#include "roots/NameLimits.h"

namespace zelvreg {
namespace {

LONG ifNotAbsent(LONG code) { return code == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : code; }

// What both deletions share: `remove` works on the opened key, which is abandoned.
LONG deleteBelow(HiveHandle hive, const std::string& key, auto remove) {
  OpenKey open(hive, key, workOn64BitView, ClassesOf::User);
  const LONG status = open.isOpen() ? remove(open.handle()) : open.openStatus();
  open.abandon();
  return ifNotAbsent(status);
}

}  // namespace

LONG fDeleteKey(const std::string& hive, const std::string& parentKey, const std::string& subKey) {
  const HiveHandle handle = HiveFromShortName(hive);
  if (handle == HiveHandle::Unknown) {
    return hiveRefused;
  }
  return deleteBelow(handle, parentKey,
                     [&](HKEY parent) { return RegDeleteKeyW(parent, Wide(subKey).get()); });
}

LONG fDeleteValue(const std::string& hive, const std::string& key, const std::string& valueName) {
  const HiveHandle handle = HiveFromShortName(hive);
  if (handle == HiveHandle::Unknown) {
    return hiveRefused;
  }
  if (handle == HiveHandle::hINI) {
    // The line stays, with an empty value.
    WritePrivateProfileStringW(Wide(key).get(), Wide(valueName).get(), Wide("").get(),
                               Wide(hive).get());
    return ERROR_SUCCESS;
  }
  return deleteBelow(handle, key,
                     [&](HKEY open) { return RegDeleteValueW(open, Wide(valueName).get()); });
}

void DeleteSubtree(HiveHandle hive, const std::string& key) {
  const OpenKey open(hive, key, workOn64BitView, ClassesOf::User);
  if (!open.isOpen()) {
    return;
  }
  // All names first: deleting while enumerating would move the index.
  std::vector<std::string> names;
  std::array<char16_t, longestKeyName + 1> name;
  for (DWORD index = 0; RegEnumKeyW(open.handle(), index, roomIn(name),
                                    static_cast<DWORD>(name.size())) == ERROR_SUCCESS;
       ++index) {
    names.push_back(utf8(name.data()));
  }
  for (const std::string& subKey : names) {
    DeleteSubtree(hive, key + "\\" + subKey);
    RegDeleteKeyW(open.handle(), Wide(subKey).get());
  }
}

void DeleteRegistryTree(HiveHandle hive, std::string key) {
  if (key.ends_with('\\')) {
    key.pop_back();
  }
  DeleteSubtree(hive, key);
  const auto backslash = key.rfind('\\');
  if (backslash == std::string::npos) {
    RegDeleteKeyW(systemKey(hive), Wide(key).get());
    return;
  }
  const OpenKey parent(hive, key.substr(0, backslash), workOn64BitView, ClassesOf::User);
  if (parent.isOpen()) {
    RegDeleteKeyW(parent.handle(), Wide(std::string_view(key).substr(backslash + 1)).get());
  }
}

}  // namespace zelvreg
