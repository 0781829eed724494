#include "machine/hive/HiveReader.h"

#include <algorithm>
#include <utility>

#include "machine/base/CaseFold.h"
#include "machine/hive/HiveBytes.h"
#include "machine/hive/NameHash.h"

namespace zelvreg::machine {

using namespace hiveFormat;
using Answer = FoundSubkey::Answer;

namespace {

constexpr std::size_t listEntrySize = sizeof(HiveLink);
// In a list that has no more entries than this all are looked at; a longer one is searched.
constexpr std::size_t shortList = 64;

std::size_t entryCount(std::span<const HiveList> leaves) {
  std::size_t count = 0;
  for (const HiveList& leaf : leaves) {
    count += leaf.size();
  }
  return count;
}

// The first entry from an index on whose mark may be that of a name; size() if there is none.
std::size_t nextCandidate(const HiveList& leaf, std::uint32_t hash, std::u16string_view name,
                          std::size_t from) {
  switch (leaf.kind) {
    case HiveList::Kind::Hashes:
      return leaf.findMark(hash, from);
    case HiveList::Kind::Hints:
      while (from < leaf.size() && !mayBeHintOf(leaf.markAt(from), name)) {
        ++from;
      }
      return from;
    default:
      return leaf.size();
  }
}

HivePlace entryAt(std::span<const HiveList> leaves, std::size_t index) {
  auto leaf = leaves.begin();
  for (; index >= leaf->size(); ++leaf) {
    index -= leaf->size();
  }
  return leaf->placeAt(index);
}

}  // namespace

HiveReader::HiveReader(std::span<const std::byte> hive)
    : image(hive),
      visited(image.size() / cellUnit + 1),
      entriesLeft(image.size() / listEntrySize),
      valuesLeft(image.size() / (listEntrySize + valueName)),
      bytesLeft(image.size()),
      partsLeft(image.size() / partSize * 2),
      marksLeft(image.size() / listEntrySize) {
  static_cast<void>(firstVisit(image.root()));
}

bool HiveReader::firstVisit(HivePlace place) {
  const std::size_t unit = place / cellUnit;
  if (unit >= visited.size() || visited[unit]) {
    return false;
  }
  visited[unit] = true;
  return true;
}

bool HiveReader::spend(std::size_t& budget, std::size_t amount) {
  if (amount > budget) {
    budget = 0;
    return false;
  }
  budget -= amount;
  return true;
}

bool HiveReader::leavesOf(const HiveKey& key, std::size_t& budget,
                          std::vector<HiveList>& leaves) const {
  const auto first = image.subkeyList(placeOf(key.subkeyList));
  if (!first) {
    return false;
  }
  if (first->kind != HiveList::Kind::Lists) {
    leaves.push_back(*first);
    return first->isWhole;
  }
  bool isWhole = first->isWhole;
  for (std::size_t index = 0; index < first->size(); ++index) {
    if (!spend(budget, 1)) {
      return false;
    }
    const auto leaf = image.subkeyList(first->placeAt(index));
    // A list of lists leads to lists of keys alone.
    if (!leaf || leaf->kind == HiveList::Kind::Lists) {
      isWhole = false;
      continue;
    }
    isWhole = isWhole && leaf->isWhole;
    leaves.push_back(*leaf);
  }
  return isWhole;
}

bool HiveReader::subkeys(std::uint32_t node, std::span<const std::uint32_t> known,
                         const TakeSubkey& take) {
  const std::optional<HiveKey> key = image.keyAt(node);
  if (!key || key->subkeyCount == 0) {
    return key.has_value();
  }
  std::vector<HiveList> leaves = std::exchange(spareLeaves, {});
  leaves.clear();
  bool isWhole = leavesOf(*key, entriesLeft, leaves);
  isWhole = isWhole && entryCount(leaves) == key->subkeyCount;
  std::vector<std::uint32_t> stillKnown(known.begin(), known.end());
  for (const HiveList& leaf : leaves) {
    isWhole = takeLeaf(leaf, stillKnown, take) && isWhole;
  }
  spareLeaves = std::move(leaves);
  return isWhole;
}

bool HiveReader::takeLeaf(const HiveList& leaf, std::vector<std::uint32_t>& known,
                          const TakeSubkey& take) {
  // So long before a record is looked at it is sent for, since it lies anywhere in the file.
  constexpr std::size_t ahead = 8;
  bool isWhole = true;
  for (std::size_t index = 0; index < leaf.size(); ++index) {
    if (!spend(entriesLeft, 1)) {
      return false;
    }
    if (index + ahead < leaf.size()) {
      image.expect(leaf.placeAt(index + ahead));
    }
    const HivePlace place = leaf.placeAt(index);
    const std::optional<HiveKey> key = image.keyAt(place);
    if (!key || !key->name) {
      isWhole = false;
      continue;
    }
    if (!firstVisit(place)) {
      // Known ones were given before, once.
      isWhole = std::erase(known, place) > 0 && isWhole;
      continue;
    }
    take({.name = *key->name, .node = static_cast<std::uint32_t>(place)});
  }
  return isWhole;
}

FoundSubkey HiveReader::findSubkey(std::uint32_t node, std::u16string_view name) {
  const std::optional<HiveKey> key = image.keyAt(node);
  if (!key) {
    return {};
  }
  if (key->subkeyCount == 0) {
    return {.answer = Answer::Absent};
  }
  std::vector<HiveList> leaves = std::exchange(spareLeaves, {});
  leaves.clear();
  FoundSubkey found;
  // What is damaged is left to a whole reading, which tells of it.
  if (leavesOf(*key, marksLeft, leaves) && entryCount(leaves) == key->subkeyCount) {
    const Search search{.parent = node, .name = name};
    if (key->subkeyCount <= shortList) {
      found = searchByNames(leaves, search);
    } else {
      found = searchByMarks(leaves, search);
      found = found.answer == Answer::Absent ? searchByOrder(leaves, search) : found;
    }
  }
  spareLeaves = std::move(leaves);
  return found;
}

FoundSubkey HiveReader::given(const HiveSubkey& subkey) {
  return firstVisit(subkey.node) ? FoundSubkey{.answer = Answer::Found, .subkey = subkey}
                                 : FoundSubkey{};
}

FoundSubkey HiveReader::searchByNames(std::span<const HiveList> leaves, const Search& search) {
  std::optional<HiveSubkey> match;
  for (const HiveList& leaf : leaves) {
    for (std::size_t index = 0; index < leaf.size(); ++index) {
      const HivePlace place = leaf.placeAt(index);
      const std::optional<HiveKey> key = ownKeyAt(place, search);
      if (!key) {
        return {};
      }
      if (!match && key->name->isSame(search.name)) {
        match = HiveSubkey{.name = *key->name, .node = static_cast<std::uint32_t>(place)};
      }
    }
  }
  return match ? given(*match) : FoundSubkey{.answer = Answer::Absent};
}

FoundSubkey HiveReader::searchByMarks(std::span<const HiveList> leaves, const Search& search) {
  const std::uint32_t hash = hashOfName(search.name);
  for (const HiveList& leaf : leaves) {
    if (!spend(marksLeft, leaf.size())) {
      return {};
    }
    for (std::size_t index = nextCandidate(leaf, hash, search.name, 0); index < leaf.size();
         index = nextCandidate(leaf, hash, search.name, index + 1)) {
      if (const auto match = subkeyNamed(leaf.placeAt(index), search)) {
        return given(*match);
      }
    }
  }
  return {.answer = Answer::Absent};
}

// What has neither the right mark nor the right place is not found by Windows either.
FoundSubkey HiveReader::searchByOrder(std::span<const HiveList> leaves, const Search& search) {
  const auto isBefore = [&](HivePlace place) -> std::optional<bool> {
    const std::optional<HiveKey> key = ownKeyAt(place, search);
    return key ? std::optional(compareNames(key->name->text(), search.name) < 0) : std::nullopt;
  };
  std::size_t first = 0;
  std::size_t count = entryCount(leaves);
  while (count > 0) {
    const std::optional<bool> goesOn = isBefore(entryAt(leaves, first + count / 2));
    if (!goesOn) {
      return {};
    }
    first += *goesOn ? count / 2 + 1 : 0;
    count = *goesOn ? count - count / 2 - 1 : count / 2;
  }
  const bool isInside = first < entryCount(leaves);
  const auto match = isInside ? subkeyNamed(entryAt(leaves, first), search) : std::nullopt;
  return match ? given(*match) : FoundSubkey{.answer = Answer::Absent};
}

std::optional<HiveKey> HiveReader::ownKeyAt(HivePlace place, const Search& search) const {
  const std::optional<HiveKey> key = image.keyAt(place);
  const bool isOwn = key && key->name && placeOf(key->parent) == search.parent;
  return isOwn ? key : std::nullopt;
}

std::optional<HiveSubkey> HiveReader::subkeyNamed(HivePlace place, const Search& search) const {
  const std::optional<HiveKey> key = ownKeyAt(place, search);
  return key && key->name->isSame(search.name)
             ? std::optional(
                   HiveSubkey{.name = *key->name, .node = static_cast<std::uint32_t>(place)})
             : std::nullopt;
}

bool HiveReader::values(std::uint32_t node, const TakeValue& take) {
  const std::optional<HiveKey> key = image.keyAt(node);
  if (!key || key->valueCount == 0) {
    return key.has_value();
  }
  const std::optional<HiveList> list = image.valueList(*key);
  if (!list) {
    return false;
  }
  bool isWhole = list->isWhole;
  for (std::size_t index = 0; index < list->size(); ++index) {
    if (!spend(valuesLeft, 1)) {
      return false;
    }
    isWhole = takeValue(list->placeAt(index), take) && isWhole;
  }
  return isWhole;
}

bool HiveReader::takeValue(HivePlace place, const TakeValue& take) {
  const std::optional<HiveRecord> record = image.valueAt(place);
  if (!record || !record->name || !record->data) {
    return false;
  }
  const HiveData& data = *record->data;
  if (data.parts && !assemble(data)) {
    return false;
  }
  if (!spend(bytesLeft, data.size)) {
    return false;
  }
  take({.name = *record->name,
        .type = record->type,
        .bytes = data.parts ? std::span<const std::byte>(assembled) : data.piece,
        .isInHive = !data.parts});
  return true;
}

// Whether all parts are there.
bool HiveReader::assemble(const HiveData& data) {
  if (!spend(partsLeft, (data.size + partSize - 1) / partSize)) {
    return false;
  }
  assembled.clear();
  for (std::size_t index = 0; assembled.size() < data.size; ++index) {
    const auto part =
        image.partAt(data.parts->placeAt(index), std::min(partSize, data.size - assembled.size()));
    if (!part) {
      return false;
    }
    assembled.insert(assembled.end(), part->begin(), part->end());
  }
  return true;
}

bool HiveReader::hasJust(std::uint32_t node, std::uint32_t type) const {
  const std::optional<HiveKey> key = image.keyAt(node);
  if (!key || key->valueCount != 1) {
    return false;
  }
  const std::optional<HiveList> list = image.valueList(*key);
  const auto record = list && list->size() == 1 ? image.valueAt(list->placeAt(0)) : std::nullopt;
  return record && record->type == type;
}

}  // namespace zelvreg::machine
