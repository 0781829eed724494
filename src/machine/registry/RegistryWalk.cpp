#include "machine/registry/RegistryWalk.h"

#include <utility>

#include "machine/base/CaseFold.h"
#include "roots/NameLimits.h"
#include "roots/Roots.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {
namespace {

constexpr std::u16string_view classesPath = u"Software\\Classes";
constexpr std::u16string_view currentConfigPath =
    u"SYSTEM\\CurrentControlSet\\Hardware Profiles\\Current";
constexpr std::u16string_view wowName = u"Wow6432Node";

// As many links as one path may lead through; it ends a chain that leads back to itself.
constexpr int maximumHops = 32;

// Whether the 32-bit view of this key shows another subkey of that name than the 64-bit view.
bool isRedirected(const RegistryKey& key, std::u16string_view name) {
  switch (key.role) {
    case KeyRole::MachineSoftware:
      return !isSameName(name, u"Classes") && !isSameName(name, wowName);
    case KeyRole::Classes:
      return isSameName(name, u"CLSID") || isSameName(name, u"Interface");
    default:
      return false;
  }
}

RegistryKey* alive(RegistryKey* key) { return key == nullptr || key->isDeleted ? nullptr : key; }

// Follows one path; counts the links on its way.
class Walker {
 public:
  Walker(Registry& tree, View seenAs) : registry(tree), view(seenAs) {}

  RegistryKey* walk(RegistryKey* from, std::u16string_view path, LastLink lastLink) {
    RegistryKey* key = alive(from);
    if (key == nullptr) return nullptr;
    Way& way = registry.wayMemo().from(*key, view, registry.generation());
    const Way::Step known = way.goBackTo(path);
    std::u16string_view rest = path.substr(known.end);
    if (known.key != nullptr) {
      key = known.key;
      hops = known.hops;
    }
    while (key != nullptr) {
      const std::u16string_view name = takeComponent(rest);
      if (name.empty() || rest.empty()) return goTo(*key, name, lastLink);
      key = goTo(*key, name, LastLink::Follow);
      if (key != nullptr) {
        const auto end = static_cast<std::size_t>(name.data() - path.data()) + name.size();
        way.add(path, {end, key, hops});
      }
    }
    return nullptr;
  }

  // What a link leads to in the end, or the key itself if it is no link.
  RegistryKey* follow(RegistryKey& key) {
    RegistryKey* target = &key;
    while (target != nullptr && registry.isLink(*target)) {
      if (++hops > maximumHops) {
        return nullptr;
      }
      RegistryKey* alias = registry.aliasTarget(*target);
      target = alias != nullptr ? alias : textTarget(*target);
    }
    return target;
  }

  // The real key in which a name is looked for.
  RegistryKey* containerOf(RegistryKey& key, std::u16string_view name) {
    if (view == View::Bits32 && isRedirected(key, name)) {
      return registry.child(key, wowName);
    }
    return &key;
  }

 private:
  // The key of this name below; the key itself for no name.
  RegistryKey* goTo(RegistryKey& from, std::u16string_view name, LastLink link) {
    if (name.empty()) return &from;
    RegistryKey* key = containerOf(from, name);
    key = key == nullptr ? nullptr : registry.child(*key, name);
    return key == nullptr || link == LastLink::Open ? key : follow(*key);
  }

  // "\Registry\Machine\…" or "\Registry\User\…", which ignores views.
  RegistryKey* textTarget(RegistryKey& link) {
    const RegistryValue& value = *registry.values(link).at(0);
    std::u16string text(value.dataSize / sizeof(char16_t), u'\0');
    std::copy_n(value.data, text.size() * sizeof(char16_t),
                reinterpret_cast<std::byte*>(text.data()));
    std::u16string_view path = untilNul(text);
    if (!isSameName(takeComponent(path), u"Registry")) {
      return nullptr;
    }
    const std::u16string_view root = takeComponent(path);
    RegistryKey* from = isSameName(root, u"Machine") ? &registry.machineRoot()
                        : isSameName(root, u"User")  ? &registry.usersRoot()
                                                     : nullptr;
    const View before = std::exchange(view, View::Bits64);
    RegistryKey* target = alive(from);
    while (target != nullptr && !path.empty()) {
      target = goTo(*target, takeComponent(path), LastLink::Follow);
    }
    view = before;
    return target;
  }

  Registry& registry;
  View view;
  int hops = 0;
};

RegistryKey* shown(Registry& registry, RegistryKey* key, View view) {
  if (key != nullptr && view == View::Bits32 && key->role == KeyRole::MachineSoftware) {
    return registry.child(*key, wowName);
  }
  return key;
}

// Makes the missing keys of one path, where the token may.
class Maker {
 public:
  Maker(Registry& tree, View seenAs, const KeyMaker* maker)
      : registry(tree), view(seenAs), by(maker) {}

  RegistryKey* make(RegistryKey& from, std::u16string_view path) {
    RegistryKey* key = &from;
    for (std::u16string_view name = takeComponent(path); key != nullptr && !name.empty();
         name = takeComponent(path)) {
      key = step(*key, name);
    }
    const bool isUnseen = key != nullptr && shown(registry, key, view) == nullptr;
    return isUnseen && newChild(*key, wowName) == nullptr ? nullptr : key;
  }

  LONG status = ERROR_SUCCESS;

 private:
  RegistryKey* step(RegistryKey& from, std::u16string_view name) {
    Walker walker(registry, view);
    RegistryKey* container = walker.containerOf(from, name);
    if (container == nullptr) {
      container = newChild(from, wowName);
      if (container == nullptr) {
        return nullptr;
      }
    }
    RegistryKey* key = registry.child(*container, name);
    if (key == nullptr) {
      return newChild(*container, name);
    }
    key = walker.follow(*key);
    if (key == nullptr) {
      status = ERROR_FILE_NOT_FOUND;
    }
    return key;
  }

  RegistryKey* newChild(RegistryKey& parent, std::u16string_view name) {
    if (depthOf(parent) >= deepestKey) {
      status = ERROR_INVALID_PARAMETER;
      return nullptr;
    }
    const bool mayCreate = by == nullptr || by->makesAnywhere ||
                           registry.grantedAccess(parent, by->token, KEY_CREATE_SUB_KEY) != 0;
    if (!mayCreate) {
      status = ERROR_ACCESS_DENIED;
      return nullptr;
    }
    RegistryKey& key = registry.makeChild(parent, name);
    // Below a key of which nothing is said nothing need be said either.
    if (by != nullptr && key.parent->security != 0) {
      registry.setSecurity(key, inheritFrom(registry.security(*key.parent), true, keyRights,
                                            by->token.sids.front()));
    }
    return &key;
  }

  Registry& registry;
  View view;
  const KeyMaker* by;
};

// The names from the classes key above down to `key`.
std::u16string pathInClasses(const RegistryKey& key) {
  std::u16string path;
  for (const RegistryKey* next = &key; next->parent != nullptr && next->role != KeyRole::Classes;
       next = next->parent) {
    path.insert(0, u"\\");
    path.insert(1, next->name());
  }
  return path;
}

}  // namespace

std::u16string_view takeComponent(std::u16string_view& path) {
  const auto dropSeparators = [&path] {
    while (path.starts_with(u'\\')) {
      path.remove_prefix(1);
    }
  };
  dropSeparators();
  const std::u16string_view name = path.substr(0, findUnit(path, u'\\'));
  path.remove_prefix(name.size());
  dropSeparators();
  return name;
}

LONG checkPath(std::u16string_view path) {
  if (path.starts_with(u'\\')) {
    return ERROR_BAD_PATHNAME;
  }
  // As short as almost all are, it holds no name that is too long.
  if (path.size() <= longestKeyName) {
    return ERROR_SUCCESS;
  }
  for (std::u16string_view name = takeComponent(path); !name.empty(); name = takeComponent(path)) {
    if (name.size() > longestKeyName) {
      return ERROR_INVALID_PARAMETER;
    }
  }
  return ERROR_SUCCESS;
}

std::optional<KeyPlace> rootPlace(Registry& registry, HKEY root, View view) {
  KeyPlace place;
  place.view = registry.is64Bit() ? view : View::Bits64;
  Walker walker(registry, View::Bits64);
  if (root == HKEY_LOCAL_MACHINE) {
    place.key = &registry.machineRoot();
  } else if (root == HKEY_USERS) {
    place.key = &registry.usersRoot();
  } else if (root == HKEY_CURRENT_USER) {
    place.key = &registry.currentUser();
  } else if (root == HKEY_CLASSES_ROOT) {
    // Each call with this root asks.
    ClassesRootMemo& memo = registry.classesRootMemo();
    if (memo.generation != registry.generation()) {
      memo.machines = walker.walk(&registry.machineRoot(), classesPath, LastLink::Follow);
      memo.users = walker.walk(&registry.currentUser(), classesPath, LastLink::Follow);
      memo.generation = registry.generation();
    }
    place.isMerged = true;
    place.key = memo.machines;
    place.userKey = memo.users;
  } else if (root == HKEY_CURRENT_CONFIG) {
    place.key = walker.walk(&registry.machineRoot(), currentConfigPath, LastLink::Follow);
    if (place.key == nullptr) {
      return std::nullopt;
    }
  } else {
    return std::nullopt;
  }
  return place;
}

std::optional<KeyPlace> rootPlace(Registry& registry, std::u16string_view name, View view) {
  const HiveHandle root = rootWithLongName(name);
  return rootPlace(registry, reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(root)), view);
}

std::optional<KeyPlace> walk(Registry& registry, const KeyPlace& from, std::u16string_view path,
                             View view, LastLink lastLink) {
  KeyPlace place = from;
  place.view = registry.is64Bit() ? view : View::Bits64;
  place.key = Walker(registry, place.view).walk(from.key, path, lastLink);
  place.userKey = Walker(registry, place.view).walk(from.userKey, path, lastLink);
  if (shownKey(registry, place) == nullptr) {
    return std::nullopt;
  }
  return place;
}

RegistryKey* shownKey(Registry& registry, const KeyPlace& place) {
  if (RegistryKey* userKey = alive(place.userKey)) {
    return userKey;
  }
  return alive(shown(registry, alive(place.key), place.view));
}

CreatedKey create(Registry& registry, const KeyPlace& from, std::u16string_view path, View view,
                  const KeyMaker& by) {
  CreatedKey created;
  if (const std::optional<KeyPlace> found = walk(registry, from, path, view)) {
    created.place = *found;
    return created;
  }
  created.isNew = true;
  created.place = {.view = registry.is64Bit() ? view : View::Bits64, .isMerged = from.isMerged};
  Maker maker(registry, created.place.view, &by);
  RegistryKey* base = alive(from.key);
  if (base == nullptr && from.isMerged) {
    std::u16string counterpart(classesPath);
    if (from.userKey != nullptr) {
      counterpart += pathInClasses(*from.userKey);
    }
    Maker realMaker(registry, View::Bits64, &by);
    base = realMaker.make(registry.machineRoot(), counterpart);
    maker.status = realMaker.status;
  }
  if (base != nullptr) {
    created.place.key = maker.make(*base, path);
  }
  created.status = maker.status;
  return created;
}

RegistryKey* makeKey(Registry& registry, RegistryKey& from, std::u16string_view path) {
  return Maker(registry, View::Bits64, nullptr).make(from, path);
}

}  // namespace zelvreg::machine
