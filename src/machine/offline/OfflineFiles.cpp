#include "machine/offline/OfflineFiles.h"

#include <algorithm>
#include <array>
#include <span>
#include <system_error>

#include "machine/base/CaseFold.h"
#include "machine/base/HostName.h"
#include "machine/base/MachineError.h"
#include "machine/base/PlainFile.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {
namespace {

namespace fs = std::filesystem;

// Folders beside the users' own. The first two hold the hive that new users get.
constexpr std::array<std::u16string_view, 4> noUsers{u"Default", u"Default User", u"All Users",
                                                     u"Public"};
constexpr std::size_t withDefaultHive = 2;
constexpr std::array<std::u16string_view, 2> services{u"LocalService", u"NetworkService"};

// Whether Windows knows a file of this system by that name, in any case.
bool isNamed(std::string_view hostName, std::u16string_view name) {
  const std::optional<std::u16string> own = windowsName(hostName);
  return own && isSameName(*own, name);
}

class Disk {
 public:
  // Adds a line to `unreadable` for each hive or folder that is left out because it is a link.
  Disk(const fs::path& folder, std::vector<std::string>& unreadable)
      : root(folder), realRoot(fs::canonical(folder)), leftOut(unreadable) {}

  // The folder or file at a path of names; of several that differ in case only, the first.
  [[nodiscard]] std::optional<fs::path> find(const fs::path& from,
                                             const std::vector<std::u16string_view>& names) const {
    std::optional<fs::path> place = from;
    for (const std::u16string_view name : names) {
      place = place && fs::is_directory(*place) ? child(*place, name) : std::nullopt;
    }
    return place;
  }

  // The same for a hive, which must be no link: a new file could not take its place.
  [[nodiscard]] std::optional<fs::path> findHive(
      const fs::path& from, const std::vector<std::u16string_view>& names) const {
    std::optional<fs::path> hive = find(from, names);
    if (hive && fs::is_symlink(*hive)) {
      leftOut.push_back(hive->string() +
                        ": is a link, and was left out; put the hive itself in its place");
      hive.reset();
    }
    return hive;
  }

  [[nodiscard]] static std::vector<fs::path> list(const fs::path& folder) {
    std::vector<fs::path> entries;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
      entries.push_back(entry.path());
    }
    std::ranges::sort(entries);
    return entries;
  }

  const fs::path root;

 private:
  [[nodiscard]] std::optional<fs::path> child(const fs::path& folder,
                                              std::u16string_view name) const {
    for (const fs::path& entry : list(folder)) {
      if (!isNamed(entry.filename().string(), name)) {
        continue;
      }
      if (staysInside(entry)) {
        return entry;
      }
      leftOut.push_back(entry.string() +
                        ": is a link that leads out of the disk or nowhere, and was left out; put "
                        "what it stands for in its place");
    }
    return std::nullopt;
  }

  [[nodiscard]] bool staysInside(const fs::path& entry) const {
    if (!fs::is_symlink(entry)) {
      return true;
    }
    std::error_code isBroken;
    const fs::path real = fs::canonical(entry, isBroken);
    return !isBroken && std::ranges::mismatch(realRoot, real).in1 == realRoot.end();
  }

  const fs::path realRoot;
  std::vector<std::string>& leftOut;
};

void findSystemHives(const Disk& disk, OfflineFiles& files) {
  files.windowsFolder = "Windows";
  for (const std::u16string_view name : {u"Windows", u"WINNT"}) {
    const std::optional<fs::path> windows = disk.find(disk.root, {name});
    const std::optional<fs::path> config =
        windows ? disk.find(*windows, {u"System32", u"config"}) : std::nullopt;
    if (config) {
      files.windowsFolder = windows->filename().string();
      files.is64Bit = disk.find(*windows, {u"SysWOW64"}).has_value();
      files.software = disk.findHive(*config, {u"SOFTWARE"});
      files.system = disk.findHive(*config, {u"SYSTEM"});
      files.defaultUser = disk.findHive(*config, {u"DEFAULT"});
      return;
    }
  }
}

bool isAnyOf(const std::string& name, std::span<const std::u16string_view> names) {
  return std::ranges::any_of(names,
                             [&](std::u16string_view other) { return isNamed(name, other); });
}

// `above` is the folder around it, as Windows names it below its drive.
std::optional<OfflineProfile> profileIn(const Disk& disk, const fs::path& folder,
                                        const std::string& above, bool isOld) {
  const std::string name = folder.filename().string();
  // A junction in this folder is an old name of another profile.
  if (fs::is_symlink(folder) || !fs::is_directory(folder)) {
    return std::nullopt;
  }
  const std::optional<fs::path> hive = disk.findHive(folder, {u"NTUSER.DAT"});
  if (!hive) {
    return std::nullopt;
  }
  if (!windowsName(name)) {
    throw MachineError(folder.string() +
                       ": its name is no UTF-8, and it was left out; mount the disk so that it "
                       "shows names in UTF-8");
  }
  const std::optional<fs::path> data =
      isOld ? disk.find(folder, {u"Local Settings", u"Application Data"})
            : disk.find(folder, {u"AppData", u"Local"});
  return OfflineProfile{
      .name = name,
      .folder = above.empty() ? name : above + "\\" + name,
      .isOld = isOld,
      .hive = *hive,
      .classesHive =
          data ? disk.findHive(*data, {u"Microsoft", u"Windows", u"UsrClass.dat"}) : std::nullopt,
      .lastWrite = fs::last_write_time(*hive)};
}

// The same, with a line for what cannot be read.
std::optional<OfflineProfile> readableProfileIn(const Disk& disk, const fs::path& folder,
                                                const std::string& above, bool isOld,
                                                std::vector<std::string>& unreadable) {
  try {
    return profileIn(disk, folder, above, isOld);
  } catch (const MachineError& error) {
    unreadable.emplace_back(error.what());
  } catch (const fs::filesystem_error& error) {
    unreadable.push_back(folder.string() + ": cannot be looked into: " + error.code().message());
  }
  return std::nullopt;
}

void addTo(std::vector<OfflineProfile>& list, std::optional<OfflineProfile> profile) {
  if (profile) {
    list.push_back(std::move(*profile));
  }
}

void findProfiles(const Disk& disk, const Disk& others, OfflineFiles& files) {
  std::optional<fs::path> profiles = disk.find(disk.root, {u"Users"});
  const bool areOld = !profiles;
  if (areOld) {
    profiles = disk.find(disk.root, {u"Documents and Settings"});
  }
  if (!profiles) {
    return;
  }
  const std::string above = profiles->filename().string();
  for (const fs::path& folder : Disk::list(*profiles)) {
    const std::string name = folder.filename().string();
    const bool isUser = !isAnyOf(name, noUsers);
    if (isUser || isAnyOf(name, std::span(noUsers).first(withDefaultHive))) {
      addTo(isUser ? files.profiles : files.otherProfiles,
            readableProfileIn(isUser ? disk : others, folder, above, areOld,
                              isUser ? files.unreadableProfiles : files.unreadableOthers));
    }
  }
}

void findServices(const Disk& disk, OfflineFiles& files) {
  const std::string above = files.windowsFolder + "\\ServiceProfiles";
  for (const std::u16string_view name : services) {
    const std::optional<fs::path> folder =
        disk.find(disk.root, {utf16(files.windowsFolder), u"ServiceProfiles", name});
    if (folder) {
      addTo(files.otherProfiles,
            readableProfileIn(disk, *folder, above, false, files.unreadableOthers));
    }
  }
}

}  // namespace

std::vector<fs::path> OfflineFiles::hives() const {
  std::vector<fs::path> all;
  const auto add = [&all](const std::optional<fs::path>& hive) {
    if (hive) {
      all.push_back(*hive);
    }
  };
  for (const auto& hive : {software, system, defaultUser}) {
    add(hive);
  }
  for (const auto* list : {&profiles, &otherProfiles}) {
    for (const OfflineProfile& profile : *list) {
      all.push_back(profile.hive);
      add(profile.classesHive);
    }
  }
  return all;
}

OfflineFiles findOfflineFiles(const fs::path& root) {
  try {
    OfflineFiles files;
    findSystemHives(Disk(root, files.unreadable), files);
    const Disk others(root, files.unreadableOthers);
    findProfiles(Disk(root, files.unreadableProfiles), others, files);
    findServices(others, files);
    return files;
  } catch (const fs::filesystem_error& error) {
    throw MachineError(placeOf(error, root) +
                       ": cannot be read as a Windows disk: " + error.code().message() +
                       "; name the folder on which the drive with Windows is mounted");
  }
}

std::optional<OfflineProfile> findProfileIn(const fs::path& drive, const std::string& folder,
                                            std::vector<std::string>& unreadable) {
  std::vector<std::u16string> names;
  std::string above;
  for (std::size_t start = 0; start < folder.size();) {
    const std::size_t end = std::min(folder.find('\\', start), folder.size());
    names.push_back(utf16(folder.substr(start, end - start)));
    above = start == 0 ? std::string() : folder.substr(0, start - 1);
    start = end + 1;
  }
  try {
    const Disk disk(drive, unreadable);
    const std::optional<fs::path> place = disk.find(drive, {names.begin(), names.end()});
    return place ? readableProfileIn(disk, *place, above, false, unreadable) : std::nullopt;
  } catch (const fs::filesystem_error& error) {
    unreadable.push_back(placeOf(error, drive) + ": cannot be read: " + error.code().message());
    return std::nullopt;
  }
}

}  // namespace zelvreg::machine
