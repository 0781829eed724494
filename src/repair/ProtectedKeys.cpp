#include "repair/ProtectedKeys.h"

#include <algorithm>
#include <vector>

#include "scan/ScannedKeys.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

// The names of a path in lower case, from the root on, in one spelling for the whole computer: all
// classes are under "classes", and the names of views and of control sets are left out.
using Path = std::vector<std::string>;

bool isControlSet(const std::string& name) {
  return name == "currentcontrolset" || (name.starts_with("controlset") && name.size() > 10);
}

Path namesOf(const std::string& key) {
  Path names;
  for (const std::string_view name : split(untilNul(key), "\\")) {
    std::string lower = lowerCase(name);
    if (!lower.empty() && lower != "wow6432node") {
      names.push_back(std::move(lower));
    }
  }
  return names;
}

bool beginsWith(const Path& path, const Path& front) {
  return front.size() <= path.size() && std::equal(front.begin(), front.end(), path.begin());
}

Path replaceFront(const Path& path, std::size_t count, const char* name) {
  Path result{name};
  result.insert(result.end(), path.begin() + static_cast<std::ptrdiff_t>(count), path.end());
  return result;
}

// A user's key under HKEY_USERS. The classes have a separate one.
Path ofUsers(const Path& path) {
  if (path.empty()) {
    return {"users"};
  }
  return replaceFront(path, 1, path.front().ends_with("_classes") ? "classes" : "user");
}

Path rooted(HiveHandle hive, const Path& path) {
  switch (hive) {
    case HiveHandle::ClassesRoot:
      return replaceFront(path, 0, "classes");
    case HiveHandle::CurrentUser:
      return replaceFront(path, 0, "user");
    case HiveHandle::Users:
      return ofUsers(path);
    default:
      return replaceFront(path, 0, "machine");
  }
}

Path canonical(HiveHandle hive, const std::string& key) {
  Path path = rooted(hive, namesOf(key));
  for (const char* root : {"machine", "user"}) {
    if (beginsWith(path, {root, "software", "classes"})) {
      path = replaceFront(path, 3, "classes");
    }
  }
  if (path.size() > 2 && path[0] == "machine" && path[1] == "system" && isControlSet(path[2])) {
    path[2] = "currentcontrolset";
  }
  return path;
}

std::vector<Path> protectedPaths() {
  std::vector<Path> paths;
  paths.reserve(scannedKeys::all.size() + scannedKeys::recentLists.size() + 3);
  for (const auto& [hive, key] : scannedKeys::all) {
    paths.push_back(canonical(hive, key));
  }
  for (const char* key : scannedKeys::recentLists) {
    paths.push_back(canonical(HiveHandle::CurrentUser, key));
  }
  // Two keys above the classes, which the paths no longer contain.
  paths.push_back({"machine", "software", "classes"});
  paths.push_back({"user", "software", "classes"});
  paths.push_back({"users", "user"});
  return paths;
}

}  // namespace

bool isProtectedKey(HiveHandle hive, const std::string& key) {
  static const std::vector<Path> paths = protectedPaths();
  const Path target = canonical(hive, key);
  return std::ranges::any_of(paths, [&](const Path& path) { return beginsWith(path, target); });
}

}  // namespace zelvreg
