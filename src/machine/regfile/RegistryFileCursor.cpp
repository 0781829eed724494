#include "machine/regfile/RegistryFileCursor.h"

#include <algorithm>
#include <optional>

#include "machine/base/CaseFold.h"
#include "machine/base/MachineError.h"
#include "machine/registry/RegistryWalk.h"
#include "roots/NameLimits.h"
#include "roots/Roots.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {
namespace {

std::size_t nameEnd(std::u16string_view path, std::size_t begin) {
  return std::min(path.find(u'\\', begin), path.size());
}

[[noreturn]] void fail(const std::string& wrong, const std::string& expected) {
  throw MachineError(wrong + "; " + expected);
}

// For a key that cannot be made though its names are possible.
[[noreturn]] void failToMake() {
  fail("the key cannot be made: it is too deep or below a link that leads nowhere",
       "at most 512 levels are possible");
}

}  // namespace

RegistryKey& RegistryFileCursor::open(std::u16string_view path) {
  keepCommonSteps(path);
  if (steps.empty()) {
    openRoot(path);
    if (steps.empty()) {
      return openInClassesRoot(path, nameEnd(path, 0));
    }
  }
  while (steps.back().end < path.size()) {
    const std::size_t begin = steps.back().end + 1;
    const std::size_t end = nameEnd(path, begin);
    const std::u16string_view name = path.substr(begin, end - begin);
    checkName(name);
    steps.push_back(stepBelow(steps.back(), name, end));
    if (steps.size() == 2) {
      noteUser(path);
    }
  }
  lastPath = path;
  return *steps.back().key;
}

RegistryFileCursor::Step RegistryFileCursor::stepBelow(const Step& above, std::u16string_view name,
                                                       std::size_t end) {
  // Files list keys in order, so most new ones come after all that are there.
  RegistryKey* last = above.depth < deepestKey ? registry.makeLastChild(*above.key, name) : nullptr;
  if (last != nullptr && last->parent == above.key) {
    return {end, last, above.depth + 1};
  }
  RegistryKey* key = last != nullptr ? last : makeKey(registry, *above.key, name);
  if (key == nullptr) {
    failToMake();
  }
  return {end, key, depthOf(*key)};
}

// Of the steps to the key before, those that lead to this key too stay.
void RegistryFileCursor::keepCommonSteps(std::u16string_view path) {
  const std::size_t common = commonLength(path, lastPath);
  const auto isShared = [&](const Step& step) {
    return step.end <= common && (step.end == path.size() || path[step.end] == u'\\');
  };
  while (!steps.empty() && !isShared(steps.back())) {
    steps.pop_back();
  }
}

// Makes the first step, except in HKEY_CLASSES_ROOT, where each key is sought in two places.
void RegistryFileCursor::openRoot(std::u16string_view path) {
  const std::size_t end = nameEnd(path, 0);
  const std::u16string_view name = path.substr(0, end);
  const HiveHandle named = rootWithLongName(name);
  std::optional<KeyPlace> root = rootPlace(registry, name, View::Bits64);
  if (!root && named != HiveHandle::CurrentConfig) {
    fail("\"" + utf8(name) + "\" is no root key",
         "use a long name: HKEY_CLASSES_ROOT, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE, HKEY_USERS "
         "or HKEY_CURRENT_CONFIG");
  }
  if (named == HiveHandle::ClassesRoot) {
    return;
  }
  sawCurrentUser = sawCurrentUser || named == HiveHandle::CurrentUser;
  RegistryKey* key = root ? root->key
                          : makeKey(registry, registry.machineRoot(),
                                    u"SYSTEM\\CurrentControlSet\\Hardware Profiles\\Current");
  steps.push_back({end, key, depthOf(*key)});
}

RegistryKey& RegistryFileCursor::openInClassesRoot(std::u16string_view path, std::size_t rootEnd) {
  lastPath.clear();
  const std::u16string_view inRoot = path.substr(std::min(rootEnd + 1, path.size()));
  for (std::size_t begin = rootEnd; begin < path.size();) {
    const std::size_t end = nameEnd(path, begin + 1);
    checkName(path.substr(begin + 1, end - begin - 1));
    begin = end;
  }
  const std::optional<KeyPlace> root = rootPlace(registry, HKEY_CLASSES_ROOT, View::Bits64);
  const std::optional<KeyPlace> found = walk(registry, *root, inRoot, View::Bits64);
  if (found) {
    return *shownKey(registry, *found);
  }
  std::u16string ofMachine = u"Software\\Classes\\";
  ofMachine += inRoot;
  RegistryKey* key = makeKey(registry, registry.machineRoot(), ofMachine);
  if (key == nullptr) {
    failToMake();
  }
  return *key;
}

void RegistryFileCursor::checkName(std::u16string_view name) {
  if (name.empty()) {
    fail("the path holds an empty name", "single backslashes between names, none at the end");
  }
  if (name.size() > longestKeyName) {
    fail("a key's name is too long", "at most 255 characters are possible");
  }
}

void RegistryFileCursor::noteUser(std::u16string_view path) {
  const std::u16string_view root = path.substr(0, steps.front().end);
  const std::u16string_view sid = registry.currentUser().name();
  const std::u16string_view name =
      path.substr(steps.front().end + 1, steps.back().end - steps.front().end - 1);
  if (rootWithLongName(root) == HiveHandle::Users && isSameName(name.substr(0, sid.size()), sid)) {
    sawUserBySid = true;
  }
}

void RegistryFileCursor::erase(std::u16string_view path) {
  std::u16string_view rest = path;
  const std::u16string_view name = takeComponent(rest);
  steps.clear();
  lastPath.clear();
  openRoot(name);
  steps.clear();
  const std::optional<KeyPlace> root = rootPlace(registry, name, View::Bits64);
  const std::optional<KeyPlace> place =
      root ? walk(registry, *root, rest, View::Bits64) : std::nullopt;
  if (place) {
    RegistryKey& key = *shownKey(registry, *place);
    if (!registry.isErasable(key)) {
      fail("a root key cannot be deleted", "name a key below it");
    }
    registry.erase(key);
  }
}

}  // namespace zelvreg::machine
