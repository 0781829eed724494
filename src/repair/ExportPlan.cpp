#include "repair/ExportPlan.h"

#include <algorithm>
#include <array>

#include "keys/AccountSids.h"
#include "keys/KeySecurity.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

constexpr REGSAM readAccess = KEY_QUERY_VALUE | KEY_ENUMERATE_SUB_KEYS | READ_CONTROL;

// What of a key that cannot be read is still in danger: a repair may delete it, write to it, or
// give itself the rights to do so. Only a denial means that it cannot: what fails because memory is
// short, say, may work a moment later.
bool canBeTaken(const TruePlace& place) {
  constexpr std::array<REGSAM, 3> rights{KEY_SET_VALUE, DELETE, WRITE_DAC};
  return std::ranges::any_of(
      rights, [&](REGSAM right) { return !WideKey(place.hive, place.path, right).isDenied(); });
}

// Whether the export is whole without a key that did not open.
bool isDispensable(const WideKey& key, const TruePlace& place) {
  return key.presence() == Presence::Absent || !canBeTaken(place);
}

bool hasDefault(const std::vector<WideValue>& values) {
  return std::ranges::any_of(values, [](const WideValue& value) { return value.name.empty(); });
}

}  // namespace

ExportPlan::Entry& ExportPlan::entryOf(const TruePlace& place) {
  const auto [found, isNew] = indexes.try_emplace(place.fullPath(), entries.size());
  if (isNew) {
    entries.push_back({.place = place, .names = {}});
  }
  return entries[found->second];
}

void ExportPlan::addTree(HiveHandle hive, const std::string& key) {
  for (const TruePlace& place : places.of(hive, key, Views::Both)) {
    entryOf(place).isTree = true;
  }
}

void ExportPlan::addValue(HiveHandle hive, const std::string& key, const std::string& name) {
  for (const TruePlace& place : places.of(hive, key, Views::True)) {
    entryOf(place).names.insert(utf16UntilNul(name));
  }
}

void ExportPlan::addDefault(HiveHandle hive, const std::string& key) {
  for (const TruePlace& place : places.of(hive, key, Views::Both)) {
    entryOf(place).names.insert(u"");
    defaults.insert(place.fullPath());
  }
}

void ExportPlan::addSecurity(HiveHandle hive, const std::string& key) {
  for (const TruePlace& place : places.of(hive, key, Views::True)) {
    entryOf(place).hasSecurity = true;
  }
}

bool ExportPlan::write(RegistryTextWriter& writer) const {
  writer.markAsSafetyExport(currentUserSid());
  return std::ranges::all_of(entries, [&](const Entry& entry) {
    if (isCovered(entry.place.fullPath())) {
      return true;
    }
    return entry.isTree ? writeTree(writer, entry.place) : writeSingles(writer, entry);
  });
}

// Whether a tree that is exported holds this key below its top.
bool ExportPlan::isCovered(const std::u16string& fullPath) const {
  for (std::size_t end = fullPath.rfind(u'\\'); end != std::u16string::npos;
       end = fullPath.rfind(u'\\', end - 1)) {
    const auto above = indexes.find(fullPath.substr(0, end));
    if (above != indexes.end() && entries[above->second].isTree) {
      return true;
    }
  }
  return false;
}

bool ExportPlan::writeTree(RegistryTextWriter& writer, const TruePlace& place) const {
  std::vector<std::u16string> names;
  {
    const WideKey key(place.hive, place.path, readAccess);
    if (!key.isOpen()) {
      return isDispensable(key, place);
    }
    const auto values = key.values();
    auto subkeys = key.subkeys();
    const auto isAny = [](const WideValue& /*value*/) { return true; };
    if (!values || !subkeys || !beginKey(writer, place, &key) ||
        !writeValues(writer, place, *values, isAny)) {
      return false;
    }
    names = std::move(*subkeys);
  }
  return std::ranges::all_of(names, [&](const std::u16string& name) {
    return writeTree(writer, {place.hive, place.path.empty() ? name : place.path + u"\\" + name});
  });
}

bool ExportPlan::writeSingles(RegistryTextWriter& writer, const Entry& entry) const {
  const REGSAM access = KEY_QUERY_VALUE | (entry.hasSecurity ? READ_CONTROL : 0);
  const WideKey key(entry.place.hive, entry.place.path, access);
  if (!key.isOpen()) {
    return isDispensable(key, entry.place);
  }
  const auto values = key.values();
  if (!values) {
    return false;
  }
  const auto isWanted = [&](const WideValue& value) { return entry.names.contains(value.name); };
  const bool isEmpty = !entry.hasSecurity && !defaults.contains(entry.place.fullPath()) &&
                       std::ranges::none_of(*values, isWanted);
  return isEmpty || (beginKey(writer, entry.place, entry.hasSecurity ? &key : nullptr) &&
                     writeValues(writer, entry.place, *values, isWanted));
}

bool ExportPlan::beginKey(RegistryTextWriter& writer, const TruePlace& place,
                          const WideKey* secured) {
  if (!writer.beginKey(place.fullPath())) {
    return false;
  }
  if (secured == nullptr) {
    return true;
  }
  const std::vector<BYTE> security = secured->security();
  writer.addSecurity(security);
  return isWholeDescriptor(security);
}

bool ExportPlan::writeValues(RegistryTextWriter& writer, const TruePlace& place,
                             const std::vector<WideValue>& values,
                             const std::function<bool(const WideValue&)>& isWanted) const {
  std::vector<std::size_t> positions;
  for (std::size_t index = 0; index < values.size(); ++index) {
    if (isWanted(values[index])) {
      positions.push_back(index);
    }
  }
  if (!positions.empty()) {
    writer.addOrder(positions);
  }
  if (defaults.contains(place.fullPath()) && !hasDefault(values)) {
    writer.addMissingDefault();
  }
  return std::ranges::all_of(positions,
                             [&](std::size_t index) { return writer.addValue(values[index]); });
}

}  // namespace zelvreg
