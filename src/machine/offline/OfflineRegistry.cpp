#include "machine/offline/OfflineRegistry.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <set>
#include <utility>

#include "machine/base/CaseFold.h"
#include "machine/base/CodePage.h"
#include "machine/base/MachineError.h"
#include "machine/hive/HiveFile.h"
#include "machine/offline/OfflineEnvironment.h"
#include "machine/offline/OfflineFiles.h"
#include "machine/security/Accounts.h"
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

// The system's own accounts, which have profiles too.
bool isService(std::string_view sid) {
  return sid == "S-1-5-18" || sid == "S-1-5-19" || sid == "S-1-5-20";
}

// A SID for a profile that no list names: the same one in each run, by the folder's name alone.
std::string inventedSid(std::string_view folderName, const std::set<std::string>& taken) {
  std::uint32_t hash = 2166136261U;
  for (const char16_t unit : upperCase(utf16(folderName))) {
    hash = (hash ^ unit) * 16777619U;
  }
  std::string sid;
  do {
    constexpr std::uint32_t lowest = 1'000'000'000;
    sid = "S-1-5-21-1-1-1-" + std::to_string(lowest + hash++ % lowest);
  } while (taken.contains(sid));
  return sid;
}

// A profile and the key that it became.
struct User {
  const OfflineProfile* profile;
  std::string sid;
  bool isWhole;  // its hive could be read
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
    result.bits = files.is64Bit ? 64 : 32;
    result.registry = std::make_unique<Registry>(result.bits, noUserSid());
    mount(result.registry->machineRoot(), "SOFTWARE", files.software);
    mount(result.registry->machineRoot(), "SYSTEM", files.system);
    mount(result.registry->usersRoot(), ".DEFAULT", files.defaultUser);
    mountUsers();
    chooseUser();
    result.registry->finishLoading();
    readFacts();
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

  // The SIDs of ProfileList by the name of their folder.
  std::map<std::string, std::string> listedSids() {
    std::map<std::string, std::string> sids;
    const std::string listPath = std::string(windowsVersion) + "\\ProfileList";
    RegistryKey* list = result.registry->find(listPath);
    if (list == nullptr) {
      return sids;
    }
    result.registry->children(*list).forEach([&](const RegistryKey* key) {
      const std::string sid = utf8(key->name());
      const auto folder = textValue(*result.registry, listPath + "\\" + sid, "ProfileImagePath");
      if (folder && sid.starts_with("S-1-") && sidFromText(sid)) {
        sids.emplace(sid, lastName(*folder));
      }
    });
    return sids;
  }

  void mountUsers() {
    const std::map<std::string, std::string> listed = listedSids();
    std::set<std::string> taken;
    for (const OfflineProfile& profile : files.profiles) {
      const auto entry = std::ranges::find_if(listed, [&](const auto& sidAndFolder) {
        return isSameName(utf16(sidAndFolder.second), utf16(profile.name)) &&
               !taken.contains(sidAndFolder.first);
      });
      const std::string sid =
          entry != listed.end() ? entry->first : inventedSid(profile.name, taken);
      taken.insert(sid);
      const bool isWhole = mount(result.registry->usersRoot(), sid, profile.hive);
      mount(result.registry->usersRoot(), sid + "_Classes", profile.classesHive);
      users.push_back({&profile, sid, isWhole});
    }
  }

  // The one who was asked for, else the one whose hive was written last.
  void chooseUser() {
    if (disk.user) {
      const auto found = std::ranges::find_if(users, [&](const User& user) {
        return isSameName(utf16(user.profile->name), utf16(*disk.user));
      });
      if (found == users.end()) {
        throw MachineError("there is no user \"" + *disk.user + "\" on this disk; " + knownUsers());
      }
      current = &*found;
    } else {
      const auto rank = [](const User& user) {
        return std::tuple(user.isWhole, !isService(user.sid), user.profile->lastWrite);
      };
      // The users are sorted by name, so of equals the first by name stays.
      for (const User& user : users) {
        if (current == nullptr || rank(*current) < rank(user)) {
          current = &user;
        }
      }
    }
    result.userName = current == nullptr ? noUserName : current->profile->name;
    result.userSid = current == nullptr ? noUserSid() : current->sid;
    result.registry->setCurrentUser(result.userSid);
  }

  [[nodiscard]] std::string knownUsers() const {
    if (users.empty()) {
      return "no user's hive was found; leave the name out";
    }
    std::string names = "known are";
    for (const User& user : users) {
      names += (&user == &users.front() ? " " : ", ") + user.profile->name;
    }
    return names;
  }

  void readFacts() {
    const auto systemRoot = textValue(*result.registry, windowsVersion, "SystemRoot");
    const bool hasLetter = systemRoot && systemRoot->size() > 1 && (*systemRoot)[1] == ':' &&
                           upperCase(static_cast<char16_t>((*systemRoot)[0])) >= u'A' &&
                           upperCase(static_cast<char16_t>((*systemRoot)[0])) <= u'Z';
    if (hasLetter) {
      result.systemDrive = static_cast<char>(upperCase(static_cast<char16_t>((*systemRoot)[0])));
    }
    const std::string drive{result.systemDrive, ':', '\\'};
    result.windowsFolder = drive + files.windowsFolder;
    result.codePage = codePage();
    result.environment = readOfflineEnvironment(
        *result.registry,
        {.windows = result.windowsFolder,
         .profile =
             current == nullptr ? "" : drive + files.profilesFolder + "\\" + current->profile->name,
         .isOldProfile = files.hasOldProfiles},
        result.userName);
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
  std::vector<User> users;
  const User* current = nullptr;
};

}  // namespace

OfflineRegistry readOfflineRegistry(const OfflineDisk& disk, Windows windows) {
  return Loader(disk, windows).load();
}

}  // namespace zelvreg::machine
