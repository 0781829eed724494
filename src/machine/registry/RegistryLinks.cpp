// The built-in links of the registry and the keys that views treat in their own way.
#include <cstring>
#include <string>

#include "machine/base/CaseFold.h"
#include "machine/hive/HiveFile.h"
#include "machine/registry/Registry.h"
#include "roots/UserKeys.h"

namespace zelvreg::machine {
namespace {

constexpr std::u16string_view classesName = u"Classes";
constexpr std::u16string_view softwareName = u"Software";
constexpr std::u16string_view wowName = u"Wow6432Node";
constexpr std::u16string_view currentControlSetName = u"CurrentControlSet";

// "S-1-5-21-…_Classes", but not ".DEFAULT_Classes": the default user has an ordinary key.
bool isUserClassesName(std::u16string_view name) {
  return name.size() > userClassesSuffix.size() && name.starts_with(u'S') &&
         isSameName(name.substr(name.size() - userClassesSuffix.size()), userClassesSuffix);
}

}  // namespace

KeyRole Registry::roleOf(const RegistryKey& parent, std::u16string_view name) const {
  switch (parent.role) {
    case KeyRole::MachineRoot:
      return isSameName(name, softwareName) ? KeyRole::MachineSoftware : KeyRole::Ordinary;
    case KeyRole::UsersRoot:
      return isUserClassesName(name) ? KeyRole::Classes : KeyRole::User;
    case KeyRole::User:
      return isSameName(name, softwareName) ? KeyRole::UserSoftware : KeyRole::Ordinary;
    case KeyRole::MachineSoftware:
    case KeyRole::UserSoftware:
      if (isSameName(name, classesName)) {
        return KeyRole::Classes;
      }
      return has64BitView && isSameName(name, wowName) ? KeyRole::SoftwareWow : KeyRole::Ordinary;
    case KeyRole::Classes:
      return has64BitView && isSameName(name, wowName) ? KeyRole::ClassesWow : KeyRole::Ordinary;
    default:
      return KeyRole::Ordinary;
  }
}

// HKEY_USERS\<sid> of HKEY_USERS\<sid>_Classes.
RegistryKey* Registry::usersChildOf(const RegistryKey& classes) {
  const std::u16string_view name = classes.name();
  return &makeChild(*users, name.substr(0, name.size() - userClassesSuffix.size()));
}

// The key behind a built-in link of this name that is not there yet, made now; null if the name is
// an ordinary one.
RegistryKey* Registry::makeAliasTarget(RegistryKey& parent, std::u16string_view name) {
  if (!isSameName(name, classesName)) {
    return nullptr;
  }
  if (parent.role == KeyRole::UserSoftware && parent.parent->name().starts_with(u'S')) {
    std::u16string target(parent.parent->name());
    target += userClassesSuffix;
    return &makeChild(*users, target);
  }
  if (parent.role == KeyRole::SoftwareWow) {
    return &makeChild(makeChild(*parent.parent, classesName), wowName);
  }
  return nullptr;
}

// A built-in link exists from when the second of its two ends is created.
void Registry::tieAliases(RegistryKey& key) {
  const bool hadNewContent = hasNewContent;
  const std::size_t earlierChanges = changes.size();
  if (key.role == KeyRole::Classes && key.parent == users) {
    addAlias(makeChild(*usersChildOf(key), softwareName), classesName, key);
  } else if (key.role == KeyRole::UserSoftware) {
    std::u16string classes(key.parent->name());
    classes += userClassesSuffix;
    RegistryKey* target = child(*users, classes);
    if (target != nullptr && target->role == KeyRole::Classes) {
      addAlias(key, classesName, *target);
    }
  } else if (key.role == KeyRole::ClassesWow) {
    const RegistryKey& classes = *key.parent;
    RegistryKey& software =
        classes.parent == users ? makeChild(*usersChildOf(classes), softwareName) : *classes.parent;
    addAlias(makeChild(software, wowName), classesName, key);
  } else if (key.role == KeyRole::SoftwareWow) {
    RegistryKey* classes = child(*key.parent, classesName);
    if (classes != nullptr && classes->isAlias) {
      classes = aliasTarget(*classes);
    }
    RegistryKey* target = classes == nullptr ? nullptr : child(*classes, wowName);
    if (target != nullptr) {
      addAlias(key, classesName, *target);
    }
  }
  hasNewContent = hadNewContent;
  changes.shrinkTo(earlierChanges);
}

void Registry::addAlias(RegistryKey& parent, std::u16string_view name, RegistryKey& target) {
  if (RegistryKey* old = child(parent, name)) {
    if (old == &target || isLink(*old)) {
      return;
    }
    // A hive may hold content that the running system hides behind its link.
    erase(*old);
  }
  RegistryKey& alias = addChild(parent, name, placeIn(children(parent), name));
  alias.isAlias = true;
  aliases[&alias] = &target;
}

RegistryKey* Registry::aliasTarget(const RegistryKey& key) const {
  const auto found = aliases.find(&key);
  return found == aliases.end() ? nullptr : found->second;
}

// Merges one subtree into another; what is moved wins.
void Registry::moveContent(RegistryKey& from, RegistryKey& to) {
  for (std::size_t index = 0; index < values(from).size(); ++index) {
    const RegistryValue& value = *values(from).at(index);
    setValue(to, value.name(), value.type, value.bytes());
  }
  children(from).forEach([&](RegistryKey* key) { moveContent(*key, makeChild(to, key->name())); });
}

// "ControlSet00n" as Select\\Current says, or the empty text if it says nothing.
std::u16string Registry::selectedControlSet(RegistryKey& system) {
  RegistryKey* select = child(system, u"Select");
  const RegistryValue* current = select == nullptr ? nullptr : values(*select).find(u"Current");
  if (current == nullptr || current->type != REG_DWORD || current->dataSize != sizeof(DWORD)) {
    return {};
  }
  DWORD number = 0;
  std::memcpy(&number, current->data, sizeof number);
  if (number == 0 || number > 999) {
    return {};
  }
  std::u16string name = u"ControlSet000";
  for (std::size_t digit = name.size(); number != 0; number /= 10) {
    name[--digit] = static_cast<char16_t>(u'0' + number % 10);
  }
  return name;
}

void Registry::finishLoading() {
  RegistryKey* system = child(*machine, u"SYSTEM");
  const std::u16string name = system == nullptr ? u"" : selectedControlSet(*system);
  if (!name.empty()) {
    RegistryKey* target = child(*system, name);
    RegistryKey* ordinary = child(*system, currentControlSetName);
    if (ordinary != nullptr && ordinary->hive == nullptr && !isLink(*ordinary)) {
      // An export lists the link's keys as if they were its own.
      target = &makeChild(*system, name);
      moveContent(*ordinary, *target);
    }
    if (target != nullptr) {
      addAlias(*system, currentControlSetName, *target);
    }
  }
  markSaved();
}

}  // namespace zelvreg::machine
