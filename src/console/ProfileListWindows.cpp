#include "console/ProfileList.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <set>

#include "evidence/CommandText.h"
#include "keys/AccountSids.h"
#include "keys/DirectText.h"
#include "keys/WideKey.h"
#include "roots/UserKeys.h"
#include "runtime/Environment.h"
#include "runtime/Shares.h"
#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg::console {
namespace {

constexpr const char* mandatoryHive = "\\NTUSER.MAN";

// A value of the list of profiles, with its variables expanded.
std::string pathIn(const std::u16string& key, const char* name) {
  std::string path;
  readExpandedText(HiveHandle::LocalMachine, utf8(key), name, KEY_WOW64_64KEY, path);
  while (path.ends_with('\\')) {
    path.pop_back();
  }
  return path;
}

DWORD stateOf(const std::u16string& key) {
  const auto value = valueAt(HiveHandle::LocalMachine, key, u"State");
  DWORD state = 0;
  if (value && value->type == REG_DWORD && value->data.size() == sizeof state) {
    std::memcpy(&state, value->data.data(), sizeof state);
  }
  return state;
}

bool isOnDrive(const std::string& path) {
  return path.size() > 3 && isDrivePath(path) && mayBeOpened(path, Shares::Refused);
}

class Lister {
 public:
  ProfileList list() {
    const std::u16string above = profileListKey;
    const WideKey key(HiveHandle::LocalMachine, above, KEY_ENUMERATE_SUB_KEYS);
    for (const std::u16string& name : key.subkeys().value_or(std::vector<std::u16string>())) {
      // A profile that Windows has put aside has such a key too, with more after the identifier.
      // Its folder is found as one that the list does not name.
      if (isSidText(utf8(name))) {
        addListed(utf8(name), above + u"\\" + name);
      }
    }
    addFoldersIn(pathIn(above, "ProfilesDirectory"));
    addFolder(pathIn(above, "Default"));
    putOwnFirst();
    return std::move(result);
  }

 private:
  void addListed(const std::string& sid, const std::u16string& key) {
    const bool isSignedIn = isLoaded(sid);
    ListedProfile profile = profileAt(pathIn(key, "ProfileImagePath"), sid);
    if (isSignedIn) {
      profile.user.key = sid;
    }
    // Whoever runs the program is never left out.
    const std::string why =
        sid == own ? std::string() : whyLeftOut(profile, stateOf(key), isSignedIn);
    if (why.empty()) {
      add(std::move(profile));
    } else {
      folders.insert(upperCase(profile.folder));
      result.leftOut.push_back(nameInMessages(profile) + ", " + why + ", and was left out");
    }
  }

  // Empty if it is not.
  std::string whyLeftOut(const ListedProfile& profile, DWORD state, bool isSignedIn) {
    if (const char* why = whyProfileIsLost(state)) {
      return why;
    }
    if (folders.contains(upperCase(profile.folder))) {
      return profileFaults::hasFolderOfAnother;
    }
    if (isSignedIn) {
      return {};
    }
    if (!isOnDrive(profile.folder)) {
      return profileFaults::isOnNoDrive;
    }
    if (isFileThere(profile.folder + userHive)) {
      return {};
    }
    const DWORD code = GetLastError();
    if (isFileThere(profile.folder + mandatoryHive)) {
      return profileFaults::isMandatory;
    }
    return code == ERROR_FILE_NOT_FOUND || code == ERROR_PATH_NOT_FOUND
               ? profileFaults::hasNoHive
               : "cannot be looked into (error " + std::to_string(code) + ")";
  }

  void addFoldersIn(const std::string& above) {
    if (!isOnDrive(above)) {
      return;
    }
    WIN32_FIND_DATAW found{};
    HANDLE search = FindFirstFileW(Wide(above + "\\*").get(), &found);
    if (search == INVALID_HANDLE_VALUE) {
      return;
    }
    do {
      // A junction is an old name of another profile.
      constexpr DWORD kind = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
      const std::string name = utf8(untilNul(found.cFileName));
      if ((found.dwFileAttributes & kind) == FILE_ATTRIBUTE_DIRECTORY && name != "." &&
          name != "..") {
        addFolder(above + "\\" + name);
      }
    } while (FindNextFileW(search, &found) != FALSE);
    FindClose(search);
  }

  // One that the list does not name, as the one that new users get.
  void addFolder(const std::string& folder) {
    if (isOnDrive(folder) && !folders.contains(upperCase(folder)) &&
        isFileThere(folder + userHive)) {
      const std::string_view name = fileNameIn(folder);
      add(profileAt(folder, inventedSid(utf16(upperCase(name)), sids)));
    }
  }

  static ListedProfile profileAt(const std::string& folder, const std::string& sid) {
    return {.user = {.name = std::string(fileNameIn(folder)),
                     .sid = sid,
                     .key = std::string(ownKeys) + sid},
            .folder = folder};
  }

  void add(ListedProfile profile) {
    folders.insert(upperCase(profile.folder));
    sids.insert(profile.user.sid);
    result.profiles.push_back(std::move(profile));
  }

  void putOwnFirst() {
    auto& profiles = result.profiles;
    const auto found = std::ranges::find_if(
        profiles, [&](const ListedProfile& profile) { return profile.user.sid == own; });
    if (found == profiles.end()) {
      const ComputerUser user{.name = environmentVariable("UserName"), .sid = own, .key = own};
      profiles.insert(profiles.begin(), {.user = user, .folder = {}});
    } else {
      std::rotate(profiles.begin(), found, found + 1);
    }
  }

  const std::string own = currentUserSid();
  ProfileList result;
  std::set<std::string> folders;  // that are known, in upper case
  std::set<std::string> sids;
};

}  // namespace

ProfileList listProfiles() { return Lister().list(); }

bool isLoaded(const std::string& key) {
  return WideKey(HiveHandle::Users, utf16(key), KEY_QUERY_VALUE).presence() != Presence::Absent;
}

bool isFileThere(const std::string& path) {
  return GetFileAttributesW(Wide(path).get()) != INVALID_FILE_ATTRIBUTES;
}

std::string nameInMessages(const ListedProfile& profile) {
  const std::string& whose = profile.user.name.empty() ? profile.user.sid : profile.user.name;
  return "the profile of " + whose + (profile.folder.empty() ? "" : ", " + profile.folder);
}

}  // namespace zelvreg::console
