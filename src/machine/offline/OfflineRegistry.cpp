#include "machine/offline/OfflineRegistry.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <map>
#include <optional>
#include <set>
#include <tuple>
#include <utility>

#include "machine/base/CaseFold.h"
#include "machine/base/CodePage.h"
#include "machine/base/MachineError.h"
#include "machine/computer/Environment.h"
#include "machine/hive/HiveFile.h"
#include "machine/offline/OfflineEnvironment.h"
#include "machine/offline/OfflineFiles.h"
#include "machine/security/Accounts.h"
#include "roots/UserKeys.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {
namespace {

constexpr std::string_view windowsVersion =
    R"(HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows NT\CurrentVersion)";
constexpr std::string_view codePages =
    R"(HKEY_LOCAL_MACHINE\SYSTEM\CurrentControlSet\Control\Nls\CodePage)";
constexpr const char* noUserName = "User";

// Of a disk without users, the one that a machine folder's user has.
std::string noUserSid() { return sidText(folderUserSid().data()); }

std::string lastName(std::string_view path) {
  return std::string(path.substr(path.find_last_of("\\/") + 1));
}

constexpr const char* systemsSid = "S-1-5-18";
bool isSystems(std::string_view sid) { return sid == systemsSid; }

// What decides which of the users is the current one.
struct Rank {
  bool isWhole = false;   // the hive could be read
  bool isPerson = false;  // neither a service nor what a new user gets
  std::filesystem::file_time_type lastWrite;

  bool operator<(const Rank& other) const {
    return std::tie(isWhole, isPerson, lastWrite) <
           std::tie(other.isWhole, other.isPerson, other.lastWrite);
  }
};

class Loader {
 public:
  Loader(const OfflineDisk& given, Windows windows)
      : disk(given),
        files(findOfflineFiles(given.root)),
        logUse(windows == Windows::Asleep ? LogUse::Hibernated
               : given.leavesLogs         ? LogUse::LeaveAlone
                                          : LogUse::Replay) {}

  OfflineRegistry load() {
    if (files.empty() && !files.unreadable.empty()) {
      throw MachineError(files.unreadable.front());
    }
    if (files.empty()) {
      throw MachineError(disk.root.string() +
                         ": there is no registry hive on this disk; name the folder that holds "
                         "Windows and Users");
    }
    result.damaged = files.unreadable;
    noteDamage(files.unreadableProfiles);
    result.bits = files.is64Bit ? 64 : 32;
    result.registry = std::make_unique<Registry>(result.bits, noUserSid());
    mount(result.registry->machineRoot(), "SOFTWARE", files.software);
    mount(result.registry->machineRoot(), "SYSTEM", files.system);
    const bool hasSystems = mount(result.registry->usersRoot(), ".DEFAULT", files.defaultUser);
    readPlaces();
    mountUsers();
    if (disk.everyProfile) {
      mountOthers();
      addSystemsProfile(hasSystems);
    }
    chooseUser();
    result.registry->finishLoading();
    result.codePage = codePage();
    return std::move(result);
  }

 private:
  // Whether it could be read.
  bool mount(RegistryKey& parent, std::string_view name,
             const std::optional<std::filesystem::path>& file) {
    if (!file) {
      return false;
    }
    try {
      result.registry->mount(parent, utf16(name), std::make_unique<HiveFile>(*file, logUse));
      return true;
    } catch (const MachineError& error) {
      result.damaged.emplace_back(error.what());
      return false;
    }
  }

  void noteDamage(const std::vector<std::string>& lines) {
    for (auto* list : {&result.damaged, &result.damagedProfiles}) {
      list->insert(list->end(), lines.begin(), lines.end());
    }
  }

  // What ProfileList says of one of its profiles.
  struct Listed {
    std::u16string folder;  // with its variables expanded
    DWORD state = 0;
  };

  std::map<std::string, Listed> listedProfiles() {
    std::map<std::string, Listed> profiles;
    const std::string listPath = std::string(windowsVersion) + "\\ProfileList";
    RegistryKey* list = result.registry->find(listPath);
    if (list == nullptr) {
      return profiles;
    }
    result.registry->children(*list).forEach([&](RegistryKey* key) {
      const std::string sid = utf8(key->name());
      const auto folder = textValue(*result.registry, listPath + "\\" + sid, "ProfileImagePath");
      if (folder && sid.starts_with("S-1-") && sidFromText(sid)) {
        std::u16string path = known.expand(utf16(*folder));
        path.resize(path.find_last_not_of(u'\\') + 1);
        profiles.emplace(sid, Listed{.folder = path, .state = stateOf(*key)});
      }
    });
    return profiles;
  }

  DWORD stateOf(RegistryKey& key) {
    const RegistryValue* value = result.registry->values(key).find(u"State");
    DWORD state = 0;
    if (value != nullptr && value->type == REG_DWORD && value->dataSize == sizeof state) {
      std::memcpy(&state, value->data, sizeof state);
    }
    return state;
  }

  [[nodiscard]] std::u16string pathOf(const OfflineProfile& profile) const {
    return std::u16string{static_cast<char16_t>(result.systemDrive), u':', u'\\'} +
           utf16(profile.folder);
  }

  // The identifier of a profile in the usual folder. An old name of that folder leads there, too.
  std::optional<std::string> listedSid(const OfflineProfile& profile) {
    const std::u16string drive = pathOf(profile).substr(0, 2);
    const auto isNew = [&](const auto& entry) { return !taken.contains(entry.first); };
    auto entry = std::ranges::find_if(listed, [&](const auto& one) {
      return isNew(one) && isSameName(one.second.folder, pathOf(profile));
    });
    if (entry == listed.end()) {
      entry = std::ranges::find_if(listed, [&](const auto& one) {
        return isNew(one) && isSameName(one.second.folder.substr(0, 2), drive) &&
               isSameName(utf16(lastName(utf8(one.second.folder))), utf16(profile.name)) &&
               std::ranges::none_of(files.profiles, [&](const OfflineProfile& other) {
                 return isSameName(one.second.folder, pathOf(other));
               });
      });
    }
    return entry == listed.end() ? std::nullopt : std::optional(entry->first);
  }

  void mountUsers() {
    listed = listedProfiles();
    for (const OfflineProfile& profile : files.profiles) {
      const auto sid = listedSid(profile);
      const char* why =
          sid && disk.everyProfile ? whyProfileIsLost(listed.at(*sid).state) : nullptr;
      if (why != nullptr) {
        taken.insert(*sid);
        leaveOut(*sid, why);
      } else {
        const std::string known = sid.value_or(inventedSid(upperCase(utf16(profile.name)), taken));
        mountUser(profile, known, result.systemDrive, isPersonsSid(known));
      }
    }
  }

  void leaveOut(const std::string& sid, const std::string& why) {
    const std::string folder = utf8(listed.at(sid).folder);
    result.leftOut.push_back("the profile of " + lastName(folder) + ", " + folder + ", " + why +
                             ", and was left out");
  }

  void mountUser(const OfflineProfile& profile, const std::string& sid, char drive, bool isPerson) {
    taken.insert(sid);
    MachineUser user{.name = profile.name,
                     .sid = sid,
                     .key = sid,
                     .profile = std::string{drive, ':', '\\'} + profile.folder,
                     .hasOldProfile = profile.isOld,
                     .hives = {profile.hive},
                     .damage = {}};
    if (profile.classesHive) {
      user.hives.push_back(*profile.classesHive);
    }
    const std::size_t damagedBefore = result.damaged.size();
    const bool isWhole = mount(result.registry->usersRoot(), sid, profile.hive);
    mount(result.registry->usersRoot(), sid + utf8(userClassesSuffix), profile.classesHive);
    user.damage.assign(result.damaged.begin() + static_cast<std::ptrdiff_t>(damagedBefore),
                       result.damaged.end());
    ranks.push_back({isWhole, isPerson, profile.lastWrite});
    result.users.push_back(std::move(user));
  }

  // The profiles that ProfileList names elsewhere, then those that it does not name.
  void mountOthers() {
    noteDamage(files.unreadableOthers);
    for (const auto& [sid, profile] : listed) {
      if (!taken.contains(sid) && !isSystems(sid)) {
        mountListed(sid, profile);
      }
    }
    for (const OfflineProfile& profile : files.otherProfiles) {
      const bool isKnown = isMounted(profile.hive);
      if (!isKnown) {
        mountUser(profile, inventedSid(upperCase(utf16(profile.name)), taken), result.systemDrive,
                  false);
      }
    }
  }

  [[nodiscard]] bool isMounted(const std::filesystem::path& hive) const {
    return std::ranges::any_of(result.users,
                               [&](const MachineUser& user) { return user.hives.front() == hive; });
  }

  void mountListed(const std::string& sid, const Listed& entry) {
    const std::u16string& place = entry.folder;
    const bool hasDrive = place.size() > 3 && place[1] == u':' && place[2] == u'\\';
    const char letter = hasDrive ? static_cast<char>(upperCase(place[0])) : '\0';
    const auto drive = disk.drives.find(letter);
    const char* why = hasDrive ? whyProfileIsLost(entry.state) : profileFaults::isOnNoDrive;
    if (why != nullptr) {
      leaveOut(sid, why);
      return;
    }
    if (letter != result.systemDrive && drive == disk.drives.end()) {
      noteDamage({"the profile of " + sid + " is " + utf8(place) +
                  ", on a drive that was not "
                  "given, and was left out; give it with --drive " +
                  letter + "=DIR"});
      return;
    }
    std::vector<std::string> unreadable;
    const auto profile = findProfileIn(letter == result.systemDrive ? disk.root : drive->second,
                                       utf8(place.substr(3)), unreadable);
    noteDamage(unreadable);
    if (profile && !isMounted(profile->hive)) {
      mountUser(*profile, sid, letter, isPersonsSid(sid));
    } else if (profile) {
      leaveOut(sid, profileFaults::hasFolderOfAnother);
    } else if (unreadable.empty()) {
      leaveOut(sid, profileFaults::hasNoHive);
    }
  }

  // Its hive is that of the screen on which nobody is signed in.
  void addSystemsProfile(bool isThere) {
    if (isThere) {
      ranks.push_back({.isWhole = true, .isPerson = false, .lastWrite = {}});
      result.users.push_back({.name = "systemprofile",
                              .sid = systemsSid,
                              .key = ".DEFAULT",
                              .profile = result.windowsFolder + R"(\System32\config\systemprofile)",
                              .hasOldProfile = false,
                              .hives = {*files.defaultUser},
                              .damage = {}});
    }
  }

  // The one who was asked for, else the one whose hive was written last. The current one comes
  // first; the others whose hive could be read follow as they were found.
  void chooseUser() {
    std::optional<std::size_t> current;
    for (std::size_t index = 0; index < result.users.size(); ++index) {
      const bool isAskedFor =
          disk.user && isSameName(utf16(result.users[index].name), utf16(*disk.user));
      // The users are sorted by name, so of equals the first by name stays.
      const bool isBetter = !disk.user && (!current || ranks[*current] < ranks[index]);
      if ((isAskedFor && !current) || isBetter) {
        current = index;
      }
    }
    if (disk.user && !current) {
      throw MachineError("there is no user \"" + *disk.user + "\" on this disk; " + knownUsers());
    }
    keepUsers(current);
    result.registry->setCurrentUser(result.users.front().key);
  }

  void keepUsers(const std::optional<std::size_t>& current) {
    std::vector<MachineUser> kept;
    if (current) {
      kept.push_back(result.users[*current]);
    } else {
      kept.push_back({.name = noUserName,
                      .sid = noUserSid(),
                      .key = noUserSid(),
                      .profile = {},
                      .hasOldProfile = false,
                      .hives = {},
                      .damage = {}});
    }
    for (std::size_t index = 0; index < result.users.size(); ++index) {
      if (index == current) {
        continue;
      }
      if (ranks[index].isWhole) {
        kept.push_back(std::move(result.users[index]));
      } else {
        const auto& damage = result.users[index].damage;
        result.damagedProfiles.insert(result.damagedProfiles.end(), damage.begin(), damage.end());
      }
    }
    result.users = std::move(kept);
  }

  [[nodiscard]] std::string knownUsers() const {
    if (result.users.empty()) {
      return "no user's hive was found; leave the name out";
    }
    std::string names = "known are";
    for (const MachineUser& user : result.users) {
      names += (&user == &result.users.front() ? " " : ", ") + user.name;
    }
    return names;
  }

  // Where Windows is, by the drive letter that it has itself.
  void readPlaces() {
    const auto systemRoot = textValue(*result.registry, windowsVersion, "SystemRoot");
    const bool hasLetter = systemRoot && systemRoot->size() > 1 && (*systemRoot)[1] == ':' &&
                           upperCase(static_cast<char16_t>((*systemRoot)[0])) >= u'A' &&
                           upperCase(static_cast<char16_t>((*systemRoot)[0])) <= u'Z';
    if (hasLetter) {
      result.systemDrive = static_cast<char>(upperCase(static_cast<char16_t>((*systemRoot)[0])));
    }
    result.windowsFolder = std::string{result.systemDrive, ':', '\\'} + files.windowsFolder;
    const std::u16string windows = utf16(result.windowsFolder);
    known.set(u"SystemDrive", windows.substr(0, 2));
    known.set(u"SystemRoot", windows);
    known.set(u"windir", windows);
  }

  unsigned codePage() {
    constexpr unsigned usual = 1252;
    const std::string text = textValue(*result.registry, codePages, "ACP").value_or("");
    unsigned number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    try {
      return sharedCodePage(number).number();
    } catch (const MachineError&) {
      return usual;
    }
  }

  const OfflineDisk& disk;
  OfflineFiles files;
  LogUse logUse;
  OfflineRegistry result;
  Environment known;                     // what a path of ProfileList may hold
  std::map<std::string, Listed> listed;  // by SID
  std::set<std::string> taken;           // SIDs
  std::vector<Rank> ranks;               // of result.users
};

}  // namespace

OfflineRegistry readOfflineRegistry(const OfflineDisk& disk, Windows windows) {
  return Loader(disk, windows).load();
}

}  // namespace zelvreg::machine
