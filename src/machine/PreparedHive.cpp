#include "machine/PreparedHive.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "machine/CodePage.h"
#include "machine/HiveFile.h"
#include "machine/HiveWriter.h"
#include "machine/Machine.h"
#include "machine/Registry.h"

namespace zelvreg::machine {
namespace {

// Does something to a hive; what fails is told with the file and with what to do.
template <typename Action>
void onHive(const HiveFile& hive, Action action) {
  try {
    action();
  } catch (const MachineError& error) {
    throw MachineError(hive.path().string() + " cannot be written: " + error.what() +
                       "; undo that change, or repair the disk; nothing on it was changed");
  }
}

// Does something with a key; what fails is told with the key's path.
template <typename Action>
auto onKey(const RegistryKey& key, Action action) {
  try {
    return action();
  } catch (const MachineError& error) {
    throw MachineError(Registry::pathOf(key) + ": " + error.what());
  }
}

bool holds(HiveFile& hive, std::uint32_t node, const ValueList& values) {
  std::size_t count = 0;
  bool isSame = true;
  hive.values(node, [&](const HiveValue& found) {
    const RegistryValue* value = values.at(count++);
    isSame = isSame && value != nullptr && value->type == found.type &&
             std::ranges::equal(value->bytes(), found.bytes) &&
             utf16FromUtf8(found.name) == value->name();
  });
  return isSame && count == values.size();
}

// The keys that are to be found, or not to be found, below one node.
struct ExpectedSubkeys {
  std::map<std::uint32_t, const RegistryKey*> there;
  std::map<std::uint32_t, const RegistryKey*> gone;
};

void checkSubkeys(HiveFile& hive, std::uint32_t parent, const ExpectedSubkeys& expected) {
  std::size_t found = 0;
  hive.subkeys(parent, [&](std::string_view name, std::uint32_t node) {
    if (const auto gone = expected.gone.find(node); gone != expected.gone.end()) {
      throw MachineError(Registry::pathOf(*gone->second) + ": is still there after deleting it");
    }
    const auto there = expected.there.find(node);
    found += there != expected.there.end() && utf16FromUtf8(name) == there->second->name() ? 1 : 0;
  });
  if (found != expected.there.size()) {
    throw MachineError(Registry::pathOf(*expected.there.begin()->second->parent) +
                       ": lacks a new key after adding it");
  }
}

}  // namespace

PreparedHive::PreparedHive(HivePlan hivePlan) : plan(std::move(hivePlan)) {
  std::optional<HiveWriter> writer;
  onHive(*plan.hive, [&] { change(writer.emplace(plan.hive->path())); });
  if (!isChanged) {
    return;
  }
  backup.emplace(AtomicFile::backupOf(plan.hive->path()));
  file.emplace(plan.hive->path(), [&](const std::filesystem::path& beside) {
    onHive(*plan.hive, [&] {
      writer->write(beside);
      check(beside);
    });
  });
}

void PreparedHive::change(HiveWriter& writer) {
  for (RegistryKey* key : plan.erased) {
    onKey(*key, [&] { writer.eraseKey(key->hiveNode); });
  }
  for (RegistryKey* key : plan.added) {
    add(writer, key->parent->hiveNode, *key);
  }
  for (RegistryKey* key : plan.changed) {
    const bool isOther = onKey(*key, [&] { return writer.setValues(key->hiveNode, key->values); });
    isChanged = isChanged || isOther;
  }
  isChanged = isChanged || !plan.erased.empty() || !plan.added.empty();
}

void PreparedHive::add(HiveWriter& writer, std::uint32_t parent, RegistryKey& key) {
  const std::uint32_t node = onKey(key, [&] {
    const std::uint32_t made = writer.addKey(parent, key.name());
    writer.setValues(made, key.values);
    return made;
  });
  newNodes.emplace(&key, node);
  key.children.forEach([&](RegistryKey* child) {
    if (!child->isAlias) {
      add(writer, node, *child);
    }
  });
}

void PreparedHive::check(const std::filesystem::path& written) const {
  HiveFile copy(written);
  const auto checkValues = [&copy](const RegistryKey& key, std::uint32_t node) {
    if (!holds(copy, node, key.values)) {
      throw MachineError(Registry::pathOf(key) + ": has other values after setting them");
    }
  };
  std::map<std::uint32_t, ExpectedSubkeys> parents;
  for (const RegistryKey* key : plan.erased) {
    parents[key->parent->hiveNode].gone.emplace(key->hiveNode, key);
  }
  for (const auto& [key, node] : newNodes) {
    const auto newParent = newNodes.find(key->parent);
    parents[newParent != newNodes.end() ? newParent->second : key->parent->hiveNode].there.emplace(
        node, key);
    checkValues(*key, node);
  }
  for (const RegistryKey* key : plan.changed) {
    checkValues(*key, key->hiveNode);
  }
  for (const auto& [parent, expected] : parents) {
    checkSubkeys(copy, parent, expected);
  }
}

void PreparedHive::replace() {
  if (isChanged) {
    backup->replace();
    file->replace();
    plan.hive->noteReplaced();
  }
  for (const auto& [key, node] : newNodes) {
    key->hive = plan.hive;
    key->hiveNode = node;
  }
}

}  // namespace zelvreg::machine
