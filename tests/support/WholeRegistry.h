// All of an emulated computer's registry, access lists and the order of values included, as a
// picture to compare another with.
#ifndef ZELVREG_TESTS_SUPPORT_WHOLE_REGISTRY_H
#define ZELVREG_TESTS_SUPPORT_WHOLE_REGISTRY_H

#include <map>
#include <string>

#include "machine/Machine.h"
#include "machine/registry/Registry.h"
#include "unicode/Unicode.h"

namespace zelvreg::fixture {

// By the path of a key: what a program is told of its security, and its values in their order, each
// with its type and bytes. The program's own keys are left out.
using WholeRegistry = std::map<std::string, std::string>;

inline void addWholeKey(WholeRegistry& whole, machine::Registry& registry,
                        machine::RegistryKey& key) {
  const std::string path = machine::Registry::pathOf(key);
  if (key.isAlias || path.ends_with("\\zelvane")) {
    return;
  }
  constexpr SECURITY_INFORMATION all =
      OWNER_SECURITY_INFORMATION | GROUP_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;
  const machine::Bytes told = machine::selfRelative(registry.security(key), all);
  std::string& text = whole[path];
  text = machine::formatSddl(machine::readDescriptor(told.data())) + "\n";
  for (std::size_t at = 0; const auto* value = registry.values(key).at(at); ++at) {
    const auto* bytes = reinterpret_cast<const char*>(value->data);
    text += utf8(value->name()) + "=" + std::to_string(value->type) + ":" +
            std::string(bytes, value->dataSize) + "\n";
  }
  registry.children(key).forEach(
      [&](machine::RegistryKey* child) { addWholeKey(whole, registry, *child); });
}

inline WholeRegistry wholeRegistry(const machine::Machine& computer) {
  WholeRegistry whole;
  machine::Registry& registry = computer.registry();
  addWholeKey(whole, registry, registry.machineRoot());
  addWholeKey(whole, registry, registry.usersRoot());
  return whole;
}

// The first key that differs, with both texts; empty if there is none.
inline std::string firstDifference(const WholeRegistry& before, const WholeRegistry& after) {
  for (const auto& [path, text] : before) {
    const auto found = after.find(path);
    if (found == after.end()) {
      return path + " is gone";
    }
    if (found->second != text) {
      return path + "\nbefore: " + text + "\nafter: " + found->second;
    }
  }
  for (const auto& [path, text] : after) {
    if (!before.contains(path)) {
      return path + " is new";
    }
  }
  return {};
}

}  // namespace zelvreg::fixture

#endif
