// Access lists and inspection of the registry.
#include <algorithm>
#include <functional>
#include <utility>

#include "machine/base/MachineError.h"
#include "machine/registry/Registry.h"
#include "machine/registry/RegistryWalk.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {
namespace {

// The keys from a root down to `key`.
std::vector<const RegistryKey*> lineOf(const RegistryKey& key) {
  std::vector<const RegistryKey*> line;
  for (const RegistryKey* next = &key; next != nullptr; next = next->parent) {
    line.push_back(next);
  }
  std::ranges::reverse(line);
  return line;
}

}  // namespace
void Registry::setSecurity(std::string_view path, SecurityDescriptor descriptor) {
  RegistryKey* key = find(path);
  if (key == nullptr) {
    throw MachineError("there is no key " + std::string(path) +
                       "; name one that exists, with its root's long name");
  }
  const bool before = hasNewSecurity;
  setSecurity(*key, std::move(descriptor));
  hasNewSecurity = before;
}

std::vector<std::pair<std::string, SecurityDescriptor>> Registry::securities() const {
  std::vector<std::pair<std::string, SecurityDescriptor>> list;
  // Keys that were not yet read from a hive have no list of their own.
  const std::function<void(const RegistryKey*)> collect = [&](const RegistryKey* key) {
    if (key->security != 0) {
      list.emplace_back(pathOf(*key), security(*key));
    }
    key->children.forEach(collect);
  };
  collect(machine);
  collect(users);
  return list;
}

const SecurityDescriptor& Registry::security(const RegistryKey& key) const {
  return securityTable.at(key.security);
}

void Registry::setSecurity(RegistryKey& key, SecurityDescriptor descriptor) {
  if (security(key) != descriptor) {
    hasNewSecurity = true;
  }
  key.security = securityTable.keep(std::move(descriptor));
}

RegistryKey* Registry::find(std::string_view path) {
  const std::u16string wide = utf16(path);
  std::u16string_view rest = wide;
  const std::u16string_view rootName = takeComponent(rest);
  const std::optional<KeyPlace> root = rootPlace(*this, rootName, View::Bits64);
  if (!root) {
    return nullptr;
  }
  const std::optional<KeyPlace> place = walk(*this, *root, rest, View::Bits64);
  return place ? shownKey(*this, *place) : nullptr;
}

Registry::Counts Registry::count() {
  Counts counts;
  const std::function<void(RegistryKey&)> visit = [&](RegistryKey& key) {
    counts.values += values(key).size();
    children(key).forEach([&](RegistryKey* below) {
      if (!below->isAlias) {
        ++counts.keys;
        visit(*below);
      }
    });
  };
  visit(*machine);
  visit(*users);
  return counts;
}

std::string Registry::pathOf(const RegistryKey& key) {
  std::u16string path;
  for (const RegistryKey* step : lineOf(key)) {
    if (!path.empty()) {
      path += u'\\';
    }
    path += step->name();
  }
  return utf8(path);
}

}  // namespace zelvreg::machine
