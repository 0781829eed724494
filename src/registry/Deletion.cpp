#include "registry/Deletion.h"

#include <array>
#include <vector>

#include "registry/RegistryKey.h"
#include "registry/SubkeyEnumerators.h"

namespace zelvreg {
namespace {

LONG ifNotAbsent(LONG code) { return code == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : code; }

// What both deletions share: `remove` works on the opened key, which is left open.
void deleteBelow(HiveHandle hive, const std::string& key, LONG& rc, auto remove) {
  RegistryKey open(hive, key, workOn64BitView);
  rc = ifNotAbsent(open.isOpen() ? remove(open.handle()) : open.openStatus());
  open.abandon();
}

}  // namespace

void fDeleteKey(const std::string& hive, const std::string& parentKey, const std::string& subKey,
                LONG& rc) {
  const HiveHandle handle = HiveFromShortName(hive);
  if (handle == HiveHandle::Unknown) {
    rc = hiveRefused;
    return;
  }
  deleteBelow(handle, parentKey, rc,
              [&](HKEY parent) { return RegDeleteKeyA(parent, subKey.c_str()); });
}

void fDeleteValue(const std::string& hive, const std::string& key, const std::string& valueName,
                  LONG& rc) {
  const HiveHandle handle = HiveFromShortName(hive);
  if (handle == HiveHandle::Unknown) {
    rc = hiveRefused;
    return;
  }
  if (handle == HiveHandle::hINI) {
    // The line stays, with an empty value.
    WritePrivateProfileStringA(key.c_str(), valueName.c_str(), "", hive.c_str());
    rc = ERROR_SUCCESS;
    return;
  }
  deleteBelow(handle, key, rc, [&](HKEY open) { return RegDeleteValueA(open, valueName.c_str()); });
}

bool DeleteKey3(HiveHandle hive, const std::string& key) {
  return RegDeleteKeyA(systemKey(hive), key.c_str()) == ERROR_SUCCESS;
}

void DeleteSubtree(HiveHandle hive, const std::string& key) {
  const RegistryKey open(hive, key, workOn64BitView);
  if (!open.isOpen()) {
    return;
  }
  // All names first: deleting while enumerating would move the index.
  std::vector<std::string> names;
  std::array<char, 256> name{};
  for (DWORD index = 0; RegEnumKeyA(open.handle(), index, name.data(),
                                    static_cast<DWORD>(name.size())) == ERROR_SUCCESS;
       ++index) {
    names.emplace_back(name.data());
  }
  for (const std::string& subKey : names) {
    DeleteSubtree(hive, key + "\\" + subKey);
    RegDeleteKeyA(open.handle(), subKey.c_str());
  }
}

void DeleteRegistryTree(HiveHandle hive, std::string key) {
  if (key.ends_with('\\')) {
    key.pop_back();
  }
  DeleteSubtree(hive, key);
  const auto backslash = key.rfind('\\');
  if (backslash == std::string::npos) {
    RegDeleteKeyA(systemKey(hive), key.c_str());
    return;
  }
  const RegistryKey parent(hive, key.substr(0, backslash), workOn64BitView);
  if (parent.isOpen()) {
    RegDeleteKeyA(parent.handle(), key.substr(backslash + 1).c_str());
  }
}

}  // namespace zelvreg
