#include "machine/offline/PreparedHive.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "machine/base/MachineError.h"
#include "machine/base/RunApart.h"
#include "machine/hive/HiveCheck.h"
#include "machine/hive/HiveFile.h"
#include "machine/offline/HiveWriter.h"
#include "machine/registry/Registry.h"

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
  hive.content().values(node, [&](const HiveValue& found) {
    const RegistryValue* value = values.at(count++);
    isSame = isSame && value != nullptr && value->type == found.type &&
             std::ranges::equal(value->bytes(), found.bytes) && found.name.text() == value->name();
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
  hive.content().subkeys(parent, {}, [&](const HiveSubkey& subkey) {
    if (const auto gone = expected.gone.find(subkey.node); gone != expected.gone.end()) {
      throw MachineError(Registry::pathOf(*gone->second) + ": is still there after deleting it");
    }
    const auto there = expected.there.find(subkey.node);
    const bool isThere =
        there != expected.there.end() && subkey.name.text() == there->second->name();
    found += isThere ? 1 : 0;
  });
  if (found != expected.there.size()) {
    throw MachineError(Registry::pathOf(*expected.there.begin()->second->parent) +
                       ": lacks a new key after adding it");
  }
}

}  // namespace

PreparedHive::PreparedHive(HivePlan hivePlan) : plan(std::move(hivePlan)) {
  for (RegistryKey* key : plan.added) {
    addNew(*key);
  }
  newFile.emplace(plan.hive->path(), [&](const std::filesystem::path& beside) {
    onHive(*plan.hive, [&] {
      writeApart(beside);
      if (isChanged) {
        check(beside);
      }
    });
  });
  if (!isChanged) {
    newFile.reset();
  }
}

void PreparedHive::addNew(RegistryKey& key) {
  newKeys.push_back(&key);
  key.children.forEach([&](RegistryKey* child) {
    if (!child->isAlias) {
      addNew(*child);
    }
  });
}

void PreparedHive::writeApart(const std::filesystem::path& beside) {
  // What the other process has learned is its answer: whether anything is changed, and
  // the nodes of the new keys.
  const std::string answer = runApart([&] {
    HiveWriter writer(plan.hive->source());
    change(writer);
    if (isChanged) {
      writer.write(beside);
    }
    std::string learned(1, isChanged ? '1' : '0');
    for (const RegistryKey* key : newKeys) {
      const std::uint32_t node = newNodes.at(key);
      learned.append(reinterpret_cast<const char*>(&node), sizeof node);
    }
    return learned;
  });
  isChanged = answer.front() == '1';
  std::size_t at = 1;
  for (const RegistryKey* key : newKeys) {
    std::memcpy(&newNodes[key], answer.data() + at, sizeof(std::uint32_t));
    at += sizeof(std::uint32_t);
  }
}

void PreparedHive::change(HiveWriter& writer) {
  for (RegistryKey* key : plan.erased) {
    onKey(*key, [&] { writer.eraseKey(key->hiveNode); });
  }
  for (const RegistryKey* key : newKeys) {
    const std::uint32_t node = onKey(*key, [&] {
      const std::uint32_t made = writer.addKey(nodeOf(*key->parent), key->name());
      writer.setValues(made, key->values);
      return made;
    });
    newNodes.emplace(key, node);
  }
  for (RegistryKey* key : plan.changed) {
    const bool isOther = onKey(*key, [&] { return writer.setValues(key->hiveNode, key->values); });
    isChanged = isChanged || isOther;
  }
  isChanged = isChanged || !plan.erased.empty() || !plan.added.empty();
}

std::uint32_t PreparedHive::nodeOf(const RegistryKey& key) const {
  const auto isNew = newNodes.find(&key);
  return isNew != newNodes.end() ? isNew->second : key.hiveNode;
}

void PreparedHive::check(const std::filesystem::path& written) const {
  checkHive(readWholeFile(written));
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
    parents[nodeOf(*key->parent)].there.emplace(node, key);
    checkValues(*key, node);
  }
  for (const RegistryKey* key : plan.changed) {
    checkValues(*key, key->hiveNode);
  }
  for (const auto& [parent, expected] : parents) {
    checkSubkeys(copy, parent, expected);
  }
}

void PreparedHive::wasReplaced() {
  if (isChanged) {
    plan.hive->noteReplaced();
  }
  for (RegistryKey* key : newKeys) {
    key->hive = plan.hive;
    key->hiveNode = newNodes.at(key);
  }
}

}  // namespace zelvreg::machine
