// All keys and values of an emulated computer, as a picture to compare another with.
#ifndef ZELVREG_TESTS_SUPPORT_REGISTRY_CONTENT_H
#define ZELVREG_TESTS_SUPPORT_REGISTRY_CONTENT_H

#include <map>
#include <set>
#include <string>

#include "machine/Machine.h"
#include "machine/registry/Registry.h"
#include "unicode/Unicode.h"

namespace zelvreg::fixture {

// Keys by their path in the 64-bit view ("HKEY_LOCAL_MACHINE\\SOFTWARE"), and values as path, "|"
// and name, each with its type and bytes. Links, access lists and the program's own keys are left
// out.
using RegistryContent = std::map<std::string, std::string>;

inline void addKey(RegistryContent& content, machine::Registry& registry,
                   machine::RegistryKey& key) {
  const std::string path = machine::Registry::pathOf(key);
  if (key.isAlias || path.ends_with("\\zelvane")) {
    return;
  }
  content[path];
  for (std::size_t at = 0; const auto* value = registry.values(key).at(at); ++at) {
    const auto* bytes = reinterpret_cast<const char*>(value->data);
    content[path + "|" + utf8(value->name())] =
        std::to_string(value->type) + ":" + std::string(bytes, value->dataSize);
  }
  registry.children(key).forEach(
      [&](machine::RegistryKey* child) { addKey(content, registry, *child); });
}

inline RegistryContent registryContent(const machine::Machine& computer) {
  RegistryContent content;
  machine::Registry& registry = computer.registry();
  addKey(content, registry, registry.machineRoot());
  addKey(content, registry, registry.usersRoot());
  return content;
}

// The keys and values that one of the two alone has, or that have other content.
inline std::set<std::string> changedEntries(const RegistryContent& before,
                                            const RegistryContent& after) {
  std::set<std::string> names;
  for (const auto& [name, value] : before) {
    const auto found = after.find(name);
    if (found == after.end() || found->second != value) {
      names.insert(name);
    }
  }
  for (const auto& [name, value] : after) {
    if (!before.contains(name)) {
      names.insert(name);
    }
  }
  return names;
}

}  // namespace zelvreg::fixture

#endif
