#include "machine/registry/HiveChanges.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "machine/hive/HiveFile.h"
#include "machine/registry/Registry.h"

namespace zelvreg::machine {
namespace {

bool isHiveRoot(const RegistryKey& key) {
  return key.hive != nullptr && key.hiveNode == key.hive->root();
}

// The hive that holds the key or would hold it; null if there is none.
HiveFile* homeOf(const RegistryKey& key) {
  const RegistryKey* place = &key;
  while (place != nullptr && place->hive == nullptr) {
    place = place->parent;
  }
  return place == nullptr ? nullptr : place->hive;
}

// The key itself or one above it: the highest that is not in the hive yet.
RegistryKey& highestNew(RegistryKey& key) {
  RegistryKey* highest = &key;
  while (highest->parent != nullptr && highest->parent->hive == nullptr) {
    highest = highest->parent;
  }
  return *highest;
}

// HKEY_LOCAL_MACHINE\X or HKEY_USERS\X, where a hive would have been mounted.
const RegistryKey& mountPointOf(const RegistryKey& key) {
  const RegistryKey* place = &key;
  while (place->parent != nullptr && place->parent->parent != nullptr) {
    place = place->parent;
  }
  return *place;
}

// Whether it went as part of a key of the hive above it.
bool wentWithItsParent(const RegistryKey& key) {
  return key.parent->isDeleted && key.parent->hive != nullptr && !isHiveRoot(*key.parent);
}

class Planner {
 public:
  void addErased(RegistryKey& key) {
    if (key.hive != nullptr && !isHiveRoot(key) && !wentWithItsParent(key)) {
      planOf(*key.hive).erased.push_back(&key);
    }
  }

  void addChanged(RegistryKey& key) {
    HiveFile* home = homeOf(key);
    if (key.isDeleted || key.isAlias || home == nullptr) {
      return;
    }
    RegistryKey& place = key.hive != nullptr ? key : highestNew(key);
    if (known.insert(&place).second) {
      HivePlan& plan = planOf(*home);
      (key.hive != nullptr ? plan.changed : plan.added).push_back(&place);
    }
  }

  std::vector<HivePlan> plans;

 private:
  HivePlan& planOf(HiveFile& hive) {
    const auto found = std::ranges::find(plans, &hive, &HivePlan::hive);
    if (found != plans.end()) {
      return *found;
    }
    plans.emplace_back().hive = &hive;
    return plans.back();
  }

  std::unordered_set<const RegistryKey*> known;
};

}  // namespace

void HiveChanges::note(RegistryKey& key, Kind kind) {
  // Programs write many values of one key in a row.
  if (notes.empty() || notes.back().key != &key || notes.back().kind != kind) {
    notes.push_back({&key, kind});
  }
}

std::vector<HivePlan> HiveChanges::plans() const {
  Planner planner;
  for (const Note& note : notes) {
    if (note.kind == Kind::Erased) {
      planner.addErased(*note.key);
    } else {
      planner.addChanged(*note.key);
    }
  }
  return std::move(planner.plans);
}

std::vector<std::string> HiveChanges::homeless() const {
  std::vector<std::string> lines;
  const auto addLine = [&lines](const std::string& line) {
    if (std::ranges::find(lines, line) == lines.end()) {
      lines.push_back(line);
    }
  };
  for (const Note& note : notes) {
    const RegistryKey& key = *note.key;
    if (note.kind == Kind::Erased && isHiveRoot(key)) {
      addLine(Registry::pathOf(key) + ": is a whole hive, which stays; delete the keys in it");
    } else if (note.kind != Kind::Erased && !key.isDeleted && !key.isAlias &&
               homeOf(key) == nullptr) {
      addLine(Registry::pathOf(mountPointOf(key)) +
              ": the disk has no hive for it that can be read, so changes there are not kept");
    }
  }
  return lines;
}

void HiveChanges::forget(const HiveFile& hive) {
  std::erase_if(notes, [&hive](const Note& note) { return homeOf(*note.key) == &hive; });
}

}  // namespace zelvreg::machine
