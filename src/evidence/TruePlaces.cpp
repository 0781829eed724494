#include "evidence/TruePlaces.h"

#include <algorithm>
#include <optional>

#include "keys/AccountSids.h"
#include "roots/NameLimits.h"
#include "roots/UserKeys.h"
#include "runtime/Environment.h"
#include "scan/Resolver.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

using Names = std::vector<std::u16string>;

const std::u16string wowName = u"Wow6432Node";

bool isUserClasses(const std::u16string& name) {
  const std::size_t size = userClassesSuffix.size();
  return name.size() > size &&
         isSameName(name.substr(name.size() - size), std::u16string(userClassesSuffix));
}

// The system ignores doubled backslashes and one at the end.
Names namesOf(const std::u16string& path) {
  Names names;
  for (std::size_t start = 0; start <= path.size();) {
    const std::size_t end = std::min(path.find(u'\\', start), path.size());
    if (end > start) {
      names.push_back(path.substr(start, end - start));
    }
    start = end + 1;
  }
  return names;
}

// How many names of the path are the same in both views, before the 32-bit view leads elsewhere; 0
// if the views do not differ.
std::size_t sharedNames(HiveHandle hive, const Names& names) {
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

std::u16string joined(const Names& names) {
  std::u16string path;
  for (const std::u16string& name : names) {
    path += path.empty() ? name : u"\\" + name;
  }
  return path;
}

// Where a 32-bit process finds these names, if that is not where a 64-bit one does.
std::optional<TruePlace> placeOfOtherView(HiveHandle hive, const Names& names) {
  const std::size_t shared = sharedNames(hive, names);
  if (shared == 0 || shared >= names.size() || isSameName(names[shared], wowName)) {
    return std::nullopt;
  }
  Names other = names;
  other.insert(other.begin() + static_cast<std::ptrdiff_t>(shared), wowName);
  return TruePlace{hive, joined(other)};
}

// Whether the 32-bit view really leads elsewhere: for the classes only below two names, for other
// keys only in the local machine's.
bool isRedirected(HiveHandle hive, const Names& names) {
  const std::size_t shared = sharedNames(hive, names);
  const bool isOfClasses =
      hive == HiveHandle::Users ? shared != 2 : isSameName(names[shared - 1], u"Classes");
  return isOfClasses
             ? isSameName(names[shared], u"CLSID") || isSameName(names[shared], u"Interface")
             : hive == HiveHandle::LocalMachine;
}

// A path as its names joined; std::nullopt if one of them is too long for a key.
std::optional<std::u16string> plainKeyPath(std::u16string path) {
  std::size_t kept = 0;
  for (std::size_t start = 0; start < path.size();) {
    const std::size_t end = std::min(path.find(u'\\', start), path.size());
    const std::size_t length = end - start;
    if (length > longestKeyName) {
      return std::nullopt;
    }
    if (length > 0) {
      const std::size_t to = kept + (kept > 0 ? 1 : 0);
      // Nearly every path is joined so already.
      if (to != start) {
        path.replace(kept, start - kept, kept > 0 ? 1 : 0, u'\\');
      }
      kept = to + length;
    }
    // What follows has moved up with the name.
    start = (length > 0 ? kept : end) + 1;
  }
  path.resize(kept);
  return path;
}

std::vector<TruePlace> truePlaces(HiveHandle hive, std::u16string path) {
  std::vector<TruePlace> places;
  switch (hive) {
    case HiveHandle::ClassesRoot:
      path.insert(0, path.empty() ? u"Software\\Classes" : u"Software\\Classes\\");
      places.reserve(2);
      places.push_back({HiveHandle::CurrentUser, path});
      places.push_back({HiveHandle::LocalMachine, std::move(path)});
      break;
    case HiveHandle::LocalMachine:
    case HiveHandle::CurrentUser:
    case HiveHandle::Users:
      places.push_back({hive, std::move(path)});
      break;
    default:
      break;
  }
  return places;
}

}  // namespace

std::u16string TruePlace::fullPath() const {
  const std::u16string root(wideLongName(hive));
  return path.empty() ? root : root + u"\\" + path;
}

std::vector<TruePlace> possiblePlaces(HiveHandle hive, const std::string& key, Views views) {
  auto path = plainKeyPath(utf16UntilNul(key));
  std::vector<TruePlace> places =
      path ? truePlaces(hive, *std::move(path)) : std::vector<TruePlace>();
  if (views == Views::True) {
    return places;
  }
  const bool isOwnApart = views == Views::Own && runsOn64BitWindows();
  std::vector<TruePlace> otherPlaces;
  for (TruePlace& place : places) {
    const Names names = namesOf(place.path);
    const std::optional<TruePlace> other = placeOfOtherView(place.hive, names);
    if (other && isOwnApart && isRedirected(place.hive, names)) {
      place = *other;
    }
    if (views == Views::Both && other) {
      otherPlaces.push_back(*other);
    }
  }
  places.insert(places.end(), otherPlaces.begin(), otherPlaces.end());
  return places;
}

std::u16string userOf(const std::u16string& path) {
  std::u16string name = path.substr(0, path.find(u'\\'));
  if (isUserClasses(name)) {
    name.resize(name.size() - userClassesSuffix.size());
  }
  return name;
}

std::u16string currentUserKey() { return utf16UntilNul(currentUsersKey()); }

TruePlace below(const TruePlace& key, const std::u16string& name) {
  return {key.hive, key.path.empty() ? name : key.path + u"\\" + name};
}

bool isSameKey(const TruePlace& first, const TruePlace& second) {
  return first.hive == second.hive && isSameName(first.path, second.path);
}

std::vector<TruePlace> TruePlaces::of(HiveHandle hive, const std::string& key, Views views) {
  std::vector<TruePlace> places;
  for (const TruePlace& place : possiblePlaces(hive, key, views)) {
    addIfThere(places, place);
  }
  return places;
}

void TruePlaces::addIfThere(std::vector<TruePlace>& places, const TruePlace& asked) {
  if (WideKey(asked.hive, asked.path, KEY_QUERY_VALUE).presence() == Presence::Absent) {
    return;
  }
  TruePlace spelled{asked.hive, {}};
  for (const std::u16string& name : namesOf(asked.path)) {
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
