#include "machine/files/Drives.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>
#include <utility>

#include "machine/base/CaseFold.h"
#include "machine/base/HostName.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {

namespace {

constexpr int mostLinks = 40;

// One name still to be followed.
struct Step {
  std::u16string name;
  std::u16string upper;
};

std::string targetOf(const std::string& link) {
  std::array<char, PATH_MAX> target{};
  const ssize_t size = readlink(link.c_str(), target.data(), target.size());
  return {target.data(), size < 0 ? 0 : static_cast<std::size_t>(size)};
}

// One way from a drive's folder down, name by name.
class Walk {
 public:
  Walk(FolderListings& folderListings, const std::string& driveFolder)
      : listings(folderListings), root(driveFolder), file(driveFolder) {}

  void addStepsInFront(const std::vector<Step>& steps) {
    pending.insert(pending.end(), steps.rbegin(), steps.rend());
  }

  // ERROR_SUCCESS if everything is there; `outside` if a link leaves the drive.
  LONG go(LONG outside) {
    while (!pending.empty()) {
      const Step step = std::move(pending.back());
      pending.pop_back();
      if (step.name == u"..") {
        if (!goUp()) return outside;
        continue;
      }
      const ListedName* name = listings.find(file, step.upper, step.name);
      if (name == nullptr) return missing(step);
      if (name->kind == NameKind::Link) {
        const std::string target = targetOf(file + "/" + name->name);
        if (++links > mostLinks || target.empty()) return ERROR_CANT_RESOLVE_FILENAME;
        ownLeft = std::min(ownLeft, pending.size());
        if (!follow(target)) return outside;
        continue;
      }
      if (name->kind == NameKind::Other) return missing(step);
      file += "/" + name->name;
      isFolder = name->kind == NameKind::Folder;
      if (!isFolder && !pending.empty()) return ERROR_PATH_NOT_FOUND;
    }
    return ERROR_SUCCESS;
  }

  [[nodiscard]] const std::string& where() const { return file; }
  [[nodiscard]] bool leadsToFolder() const { return isFolder; }

 private:
  bool goUp() {
    if (file.size() == root.size()) return false;
    file.resize(file.find_last_of('/'));
    isFolder = true;
    return true;
  }

  LONG missing(const Step& step) {
    if (!listings.isSurelyMissing(file, step.name)) return ERROR_ACCESS_DENIED;
    if (pending.size() >= ownLeft) return ERROR_CANT_RESOLVE_FILENAME;
    file += "/" + utf8(step.name);
    return pending.empty() ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND;
  }

  // Puts the names of a link's target in front of those that are left. False if it begins outside
  // or cannot be told.
  bool follow(std::string_view target) {
    if (target.starts_with('/')) {
      const bool inside = target == root || target.starts_with(root + "/");
      if (!inside) return false;
      target.remove_prefix(root.size());
      file = root;
    }
    std::vector<Step> steps;
    while (!target.empty()) {
      const std::string_view name = target.substr(0, target.find('/'));
      target.remove_prefix(std::min(target.size(), name.size() + 1));
      if (name.empty() || name == ".") continue;
      const std::optional<std::u16string> wide = windowsName(name);
      if (!wide) return false;
      steps.push_back({*wide, upperCase(*wide)});
    }
    isFolder = true;
    addStepsInFront(steps);
    return true;
  }

  FolderListings& listings;
  const std::string& root;
  std::string file;
  std::vector<Step> pending;  // the next one last
  // How many of them are left once the target of a link is reached: more belong to that target.
  std::size_t ownLeft = std::string::npos;
  bool isFolder = true;
  int links = 0;
};

std::vector<Step> stepsOf(const PathName& path) {
  std::vector<Step> steps;
  steps.reserve(path.names.size());
  for (const std::u16string& name : path.names) {
    steps.push_back({name, upperCase(name)});
  }
  return steps;
}

}  // namespace

Drives::Drives(DriveSettings driveSettings)
    : settings(std::move(driveSettings)),
      current(parseFullPath(settings.programFolder)),
      windows(parseFullPath(settings.windowsFolder)) {
  for (const auto& [letter, folder] : settings.folders) {
    std::string root = std::filesystem::canonical(folder).string();
    if (root == "/") root.clear();
    roots.emplace(letter, std::move(root));
  }
}

LONG Drives::missingDriveError() const {
  return settings.missingDrivesAreUnknown ? ERROR_NOT_READY : ERROR_PATH_NOT_FOUND;
}

void Drives::redirect(PathName& path) const {
  const std::size_t depth = windows.names.size();
  if (!settings.is64Bit || path.drive != windows.drive || path.names.size() <= depth) return;
  for (std::size_t at = 0; at < depth; ++at) {
    if (!isSameName(path.names[at], windows.names[at])) return;
  }
  std::u16string& name = path.names[depth];
  if (isSameName(name, u"System32")) {
    name = u"SysWOW64";
  } else if (isSameName(name, u"Sysnative")) {
    name = u"System32";
  }
}

Place Drives::find(std::u16string_view text) {
  if (onFind) onFind(text);
  PathName path = parsePath(text, current);
  redirect(path);
  Place place = walk(path);
  if (!place.exists() && !lent.empty()) {
    if (Place other = findLent(path); other.exists()) return other;
  }
  return place;
}

void Drives::lend(std::u16string_view path, const std::filesystem::path& folder) {
  std::error_code error;
  const std::filesystem::path real = std::filesystem::canonical(folder, error);
  if (!error) lent.push_back({parseFullPath(path), real.string()});
}

Place Drives::findLent(const PathName& path) {
  Place place;
  place.error = ERROR_PATH_NOT_FOUND;
  for (const Lent& loan : lent) {
    const auto& above = loan.path.names;
    const bool isBelow = path.drive == loan.path.drive && path.names.size() >= above.size() &&
                         std::equal(above.begin(), above.end(), path.names.begin(),
                                    [](const std::u16string& name, const std::u16string& other) {
                                      return isSameName(name, other);
                                    });
    if (!isBelow) continue;
    PathName rest = path;
    rest.names.erase(rest.names.begin(),
                     rest.names.begin() + static_cast<std::ptrdiff_t>(above.size()));
    Walk way(listings, loan.folder);
    way.addStepsInFront(stepsOf(rest));
    place.error = way.go(ERROR_PATH_NOT_FOUND);
    place.isFolder = place.exists() && way.leadsToFolder();
    place.isLent = true;
    place.file = way.where();
  }
  return place;
}

bool Drives::hasDrive(char16_t letter) const {
  return letter < 0x80 && roots.contains(static_cast<char>(letter & ~0x20));
}

Place Drives::findTrue(std::u16string_view path) { return walk(parseFullPath(path)); }

Place Drives::walk(const PathName& path) {
  Place place;
  place.error = path.error;
  if (!place.exists()) return place;
  const auto root = roots.find(path.drive);
  if (root == roots.end()) {
    place.error = missingDriveError();
    return place;
  }
  Walk way(listings, root->second);
  way.addStepsInFront(stepsOf(path));
  place.error =
      way.go(settings.missingDrivesAreUnknown ? ERROR_NOT_READY : ERROR_CANT_RESOLVE_FILENAME);
  place.isFolder = place.exists() && way.leadsToFolder();
  // A separator after a name says that it is a folder's.
  if (path.endsInSeparator && place.exists() && !place.isFolder) place.error = ERROR_INVALID_NAME;
  place.file = way.where();
  const bool isRoot = place.file.size() == root->second.size();
  place.folder = isRoot ? place.file : place.file.substr(0, place.file.find_last_of('/'));
  place.path = std::string(1, path.drive) + ":" + place.file.substr(root->second.size());
  std::replace(place.path.begin(), place.path.end(), '/', '\\');
  if (isRoot) place.path += '\\';
  return place;
}

std::string Drives::truePath(std::u16string_view text) const {
  const PathName path = parseFullPath(text);
  if (path.error != ERROR_SUCCESS || path.drive == '\0') return {};
  std::string result = std::string(1, path.drive) + ":";
  for (const std::u16string& name : path.names) result += "\\" + utf8(name);
  return path.names.empty() ? result + "\\" : result;
}

bool Drives::isUnknown(std::u16string_view path) {
  if (!settings.missingDrivesAreUnknown) return false;
  const LONG error = find(path).error;
  return error == ERROR_NOT_READY || error == ERROR_ACCESS_DENIED;
}

}  // namespace zelvreg::machine
