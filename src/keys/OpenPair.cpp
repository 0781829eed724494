#include "keys/OpenPair.h"

#include <map>
#include <string>

#include "keys/ActingUser.h"
#include "keys/NameOrder.h"
#include "keys/RefusedKeys.h"
#include "keys/RootHandles.h"
#include "keys/ValueData.h"
#include "roots/NameLimits.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

constexpr REGSAM views = KEY_WOW64_64KEY | KEY_WOW64_32KEY;

bool has(HKEY key, LPCWSTR valueName) {
  return RegQueryValueExW(key, valueName, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
}

bool& leavesThemOpen() {
  static bool leaves = false;
  return leaves;
}

}  // namespace

void leaveKeysOpen(bool leaves) { leavesThemOpen() = leaves; }

OpenPair::OpenPair(HiveHandle hive, LPCWSTR path, REGSAM access, DWORD options, ClassesOf classes) {
  const bool isMerged = hive == HiveHandle::ClassesRoot && actingUser() != nullptr;
  HKEY root = systemKey(hive);
  if (isMerged && root == nullptr) {
    // Somebody may have no classes at all.
    status = ERROR_FILE_NOT_FOUND;
  } else if (classes == ClassesOf::User) {
    status = RegOpenKeyExW(root, path, options, access, &key);
  } else {
    status = openNotingRefusal(hive, path, options, access, key);
  }
  if (status != ERROR_SUCCESS) {
    key = nullptr;
  }
  if (isMerged && classes == ClassesOf::Both) {
    const std::u16string below(untilNul(path));
    const std::u16string computers = u"Software\\Classes" + (below.empty() ? below : u"\\" + below);
    openCovered(HKEY_LOCAL_MACHINE, wideText(computers), access, options);
  }
}

OpenPair::OpenPair(const OpenPair& parent, LPCWSTR name, REGSAM access) : status(parent.status) {
  if (parent.key == nullptr) {
    return;
  }
  status = RegOpenKeyExW(parent.key, name, 0, access, &key);
  if (status != ERROR_SUCCESS) {
    key = nullptr;
  }
  if (parent.merged) {
    openCovered(parent.merged->computersKey(), name, access, 0);
  }
}

// A key that is refused hides what it covers, as it does for the system.
void OpenPair::openCovered(HKEY parent, LPCWSTR path, REGSAM access, DWORD options) {
  if (key == nullptr && !isAbsent(status)) {
    return;
  }
  HKEY computers = nullptr;
  const REGSAM rights = key == nullptr ? access : KEY_READ | (access & views);
  const LONG opened = RegOpenKeyExW(parent, path, options, rights, &computers);
  if (key == nullptr) {
    status = opened;
    key = opened == ERROR_SUCCESS ? computers : nullptr;
  } else if (opened == ERROR_SUCCESS) {
    merged = std::make_unique<Merged>(key, computers);
  }
}

void OpenPair::abandon() {
  // Another user's keys would stay loaded.
  if (leavesThemOpen() && actingUser() == nullptr) {
    key = nullptr;
  }
  close();
}

OpenPair::Place OpenPair::Merged::subkey(DWORD index) {
  if (!subkeys) {
    subkeys = listedSubkeys();
  }
  return placeIn(*subkeys, index);
}

OpenPair::Place OpenPair::Merged::value(DWORD index) {
  if (!values) {
    values = listedValues();
  }
  return placeIn(*values, index);
}

HKEY OpenPair::Merged::keyOf(LPCWSTR valueName) const {
  return !has(users, valueName) && has(computers, valueName) ? computers : users;
}

OpenPair::Place OpenPair::Merged::placeIn(const Places& places, DWORD index) const {
  // No call finds anything so far behind.
  constexpr DWORD behindAll = 0xFFFFFFFE;
  return index < places.size() ? places[index] : Place{users, behindAll};
}

// By name, as the system lists them.
OpenPair::Merged::Places OpenPair::Merged::listedSubkeys() const {
  std::map<std::u16string, Place, NameOrder> byName;
  std::u16string name(longestKeyName + 1, u'\0');
  for (HKEY key : {users, computers}) {
    auto size = static_cast<DWORD>(name.size());
    for (DWORD index = 0; RegEnumKeyExW(key, index, roomIn(name), &size, nullptr, nullptr, nullptr,
                                        nullptr) == ERROR_SUCCESS;
         ++index) {
      byName.try_emplace(name.substr(0, size), Place{key, index});
      size = static_cast<DWORD>(name.size());
    }
  }
  Places places;
  for (const auto& [named, place] : byName) {
    places.push_back(place);
  }
  return places;
}

// The user's first, each in their own order.
OpenPair::Merged::Places OpenPair::Merged::listedValues() const {
  Places places;
  std::vector<char16_t> name(longestValueName + 1);
  for (HKEY key : {users, computers}) {
    auto size = static_cast<DWORD>(name.size());
    for (DWORD index = 0; RegEnumValueW(key, index, roomIn(name), &size, nullptr, nullptr, nullptr,
                                        nullptr) == ERROR_SUCCESS;
         ++index) {
      if (key == users || !has(users, roomIn(name))) {
        places.push_back({key, index});
      }
      size = static_cast<DWORD>(name.size());
    }
  }
  return places;
}

}  // namespace zelvreg
