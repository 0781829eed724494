#include "repair/TruePlaces.h"

#include <algorithm>

namespace zelvreg {
namespace {

constexpr std::size_t longestKeyName = 255;
const std::u16string wowName = u"Wow6432Node";

bool isSameName(const std::u16string& first, const std::u16string& second) {
  const NameOrder before;
  return !before(first, second) && !before(second, first);
}

const char16_t* rootName(HiveHandle hive) {
  switch (hive) {
    case HiveHandle::CurrentUser:
      return u"HKEY_CURRENT_USER";
    case HiveHandle::Users:
      return u"HKEY_USERS";
    default:
      return u"HKEY_LOCAL_MACHINE";
  }
}

// The system passes over doubled backslashes and one at the end.
std::vector<std::u16string> namesOf(const std::u16string& path) {
  std::vector<std::u16string> names;
  for (std::size_t start = 0; start <= path.size();) {
    const std::size_t end = std::min(path.find(u'\\', start), path.size());
    if (end > start) {
      names.push_back(path.substr(start, end - start));
    }
    start = end + 1;
  }
  return names;
}

bool isUserClasses(const std::u16string& name) {
  const std::u16string suffix = u"_Classes";
  return name.size() > suffix.size() &&
         isSameName(name.substr(name.size() - suffix.size()), suffix);
}

// How many names stand before the one that the 32-bit view seeks elsewhere; 0 where both views are
// the same.
std::size_t sharedNames(HiveHandle hive, const std::vector<std::u16string>& names) {
  const auto isNamed = [&](std::size_t index, const char16_t* name) {
    return index < names.size() && isSameName(names[index], name);
  };
  if (hive == HiveHandle::Users && !names.empty() && isUserClasses(names.front())) {
    return 1;
  }
  const std::size_t software = hive == HiveHandle::Users ? 1 : 0;
  if (!isNamed(software, u"Software")) {
    return 0;
  }
  return software + (isNamed(software + 1, u"Classes") ? 2 : 1);
}

}  // namespace

std::u16string TruePlace::fullPath() const {
  const std::u16string root = rootName(hive);
  return path.empty() ? root : root + u"\\" + path;
}

std::vector<TruePlace> TruePlaces::of(HiveHandle hive, const std::string& key, Views views) {
  const Names names = namesOf(widened(key));
  const bool isPossible = std::ranges::all_of(
      names, [](const std::u16string& name) { return name.size() <= longestKeyName; });
  std::vector<std::pair<HiveHandle, Names>> candidates;
  if (hive == HiveHandle::ClassesRoot) {
    Names below{u"Software", u"Classes"};
    below.insert(below.end(), names.begin(), names.end());
    candidates = {{HiveHandle::LocalMachine, below}, {HiveHandle::CurrentUser, below}};
  } else if (hive == HiveHandle::LocalMachine || hive == HiveHandle::CurrentUser ||
             hive == HiveHandle::Users) {
    candidates = {{hive, names}};
  }
  std::vector<TruePlace> places;
  for (const auto& [trueHive, trueNames] : candidates) {
    const std::size_t shared = sharedNames(trueHive, trueNames);
    if (!isPossible) {
      continue;
    }
    addIfThere(places, trueHive, trueNames);
    const bool isApart =
        shared > 0 && shared < trueNames.size() && !isSameName(trueNames[shared], wowName);
    if (views == Views::Both && isApart) {
      Names other = trueNames;
      other.insert(other.begin() + static_cast<std::ptrdiff_t>(shared), wowName);
      addIfThere(places, trueHive, other);
    }
  }
  return places;
}

void TruePlaces::addIfThere(std::vector<TruePlace>& places, HiveHandle hive, const Names& names) {
  TruePlace asked{hive, {}};
  for (const std::u16string& name : names) {
    asked.path += asked.path.empty() ? name : u"\\" + name;
  }
  if (WideKey(hive, asked.path, KEY_QUERY_VALUE).presence() == Presence::Absent) {
    return;
  }
  TruePlace spelled{hive, {}};
  for (const std::u16string& name : names) {
    const NameSet& siblings = namesIn(spelled);
    const auto found = siblings.find(name);
    const std::u16string& own = found == siblings.end() ? name : *found;
    spelled.path += spelled.path.empty() ? own : u"\\" + own;
  }
  places.push_back(std::move(spelled));
}

const TruePlaces::NameSet& TruePlaces::namesIn(const TruePlace& place) {
  const auto [found, isNew] = listed.try_emplace(place.fullPath());
  if (isNew) {
    const WideKey key(place.hive, place.path, KEY_ENUMERATE_SUB_KEYS);
    const auto names = key.isOpen() ? key.subkeys() : std::nullopt;
    if (names) {
      found->second.insert(names->begin(), names->end());
    }
  }
  return found->second;
}

}  // namespace zelvreg
