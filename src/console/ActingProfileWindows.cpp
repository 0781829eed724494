#include "console/ActingProfile.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "keys/AccountSids.h"
#include "keys/ActingUser.h"
#include "keys/DirectText.h"
#include "keys/RestorePrivileges.h"
#include "keys/WideKey.h"
#include "roots/UserKeys.h"
#include "roots/ValueTypes.h"
#include "runtime/Environment.h"
#include "runtime/PrivateFiles.h"
#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg::console {
namespace {

// Nobody else loads hives at keys of such names, so what is there at a start was left behind.
constexpr std::string_view ownKeys = "zelvreg-";

constexpr const char* userHive = "\\NTUSER.DAT";
constexpr const char* classesHive = "\\AppData\\Local\\Microsoft\\Windows\\UsrClass.dat";
// With a hive goes what Windows has not written into it yet.
constexpr std::array hiveParts{"", ".LOG", ".LOG1", ".LOG2"};

bool isFile(const std::string& path) {
  return GetFileAttributesW(Wide(path).get()) != INVALID_FILE_ATTRIBUTES;
}

bool isLoaded(const std::string& key) {
  return WideKey(HiveHandle::Users, utf16(key), KEY_QUERY_VALUE).presence() != Presence::Absent;
}

std::string folderOf(const std::u16string& sid) {
  const auto value =
      valueAt(HiveHandle::LocalMachine, profileListKey + (u"\\" + sid), u"ProfileImagePath");
  if (!value || !isSingleText(value->type)) {
    return {};
  }
  return std::string(untilNul(expandedText(textOf(*value))));
}

// A profile that Windows has put aside has such a key too, with more after the identifier.
bool isIdentifier(const std::string& name) {
  return name.starts_with("S-1-") && name.find_first_not_of("0123456789-", 1) == std::string::npos;
}

std::string temporaryFolder() {
  std::array<char16_t, 300> above{};
  const DWORD size = GetTempPathW(static_cast<DWORD>(above.size()), roomIn(above));
  return utf8({above.data(), size}) + "zelvreg-" + std::to_string(GetCurrentProcessId());
}

// False if a part that is there could not be copied; GetLastError() says why.
bool copyHive(const std::string& from, const std::string& to) {
  return std::ranges::all_of(hiveParts, [&](const char* part) {
    const std::string source = from + part;
    return !isFile(source) || CopyFileW(Wide(source).get(), Wide(to + part).get(), TRUE) != FALSE;
  });
}

void deleteFolder(const std::string& folder) {
  WIN32_FIND_DATAW found{};
  HANDLE search = FindFirstFileW(Wide(folder + "\\*").get(), &found);
  if (search != INVALID_HANDLE_VALUE) {
    do {
      const Wide file(folder + "\\" + utf8(untilNul(found.cFileName)));
      SetFileAttributesW(file.get(), FILE_ATTRIBUTE_NORMAL);
      DeleteFileW(file.get());
    } while (FindNextFileW(search, &found) != FALSE);
    FindClose(search);
  }
  RemoveDirectoryW(Wide(folder).get());
}

// Windows makes this link when somebody signs in. It goes with the hive.
LONG linkClasses(const std::string& key) {
  HKEY link = nullptr;
  const LONG code = RegCreateKeyExW(HKEY_USERS, Wide(key + "\\Software\\Classes").get(), 0, nullptr,
                                    REG_OPTION_VOLATILE | REG_OPTION_CREATE_LINK,
                                    KEY_WRITE | KEY_CREATE_LINK, nullptr, &link, nullptr);
  if (code != ERROR_SUCCESS) {
    // A hive that has such a key of its own keeps it.
    return code == ERROR_ALREADY_EXISTS ? ERROR_SUCCESS : code;
  }
  const std::u16string target = utf16("\\Registry\\User\\" + key).append(userClassesSuffix);
  const LONG set = RegSetValueExW(link, L"SymbolicLinkValue", 0, REG_LINK,
                                  reinterpret_cast<const BYTE*>(target.data()),
                                  static_cast<DWORD>(target.size() * sizeof(char16_t)));
  RegCloseKey(link);
  return set;
}

}  // namespace

ProfileCalls systemProfileCalls() {
  return {.loadPrivately =
              [](const std::string& file, HKEY& root) {
                constexpr DWORD forThisProcessAlone = 1;
                return RegLoadAppKeyW(Wide(file).get(), &root, KEY_ALL_ACCESS, forThisProcessAlone,
                                      0);
              },
          .load =
              [](const std::string& key, const std::string& file) {
                const RestorePrivileges privileges;
                return RegLoadKeyW(HKEY_USERS, Wide(key).get(), Wide(file).get());
              },
          .unload =
              [](const std::string& key) {
                const RestorePrivileges privileges;
                return RegUnLoadKeyW(HKEY_USERS, Wide(key).get());
              }};
}

std::vector<ListedProfile> listedProfiles() {
  std::vector<ListedProfile> profiles;
  const WideKey list(HiveHandle::LocalMachine, profileListKey, KEY_ENUMERATE_SUB_KEYS);
  for (const std::u16string& name : list.subkeys().value_or(std::vector<std::u16string>())) {
    const std::string sid = utf8(name);
    const std::string folder = folderOf(name);
    const bool isSignedIn = isLoaded(sid);
    if (isIdentifier(sid) && (isSignedIn || isFile(folder + userHive))) {
      profiles.push_back({.user = {.name = folder.substr(folder.find_last_of('\\') + 1),
                                   .sid = sid,
                                   .key = isSignedIn ? sid : std::string(ownKeys) + sid},
                          .folder = folder});
    }
  }
  const std::string own = currentUserSid();
  const auto found = std::ranges::find_if(
      profiles, [&](const ListedProfile& profile) { return profile.user.sid == own; });
  if (found == profiles.end()) {
    const ComputerUser user{.name = environmentVariable("UserName"), .sid = own, .key = own};
    profiles.insert(profiles.begin(), {.user = user, .folder = {}});
  } else {
    std::rotate(profiles.begin(), found, found + 1);
  }
  return profiles;
}

void unloadLeftovers(const ProfileCalls& calls) {
  const WideKey users(HiveHandle::Users, u"", KEY_ENUMERATE_SUB_KEYS);
  for (const std::u16string& name : users.subkeys().value_or(std::vector<std::u16string>())) {
    if (utf8(name).starts_with(ownKeys)) {
      calls.unload(utf8(name));
    }
  }
}

ActingProfile::ActingProfile(const ListedProfile& profile, UserWork work,
                             const ProfileCalls& callsInUse)
    : calls(callsInUse) {
  try {
    open(profile, work);
    require(RegOverridePredefKey(HKEY_CURRENT_USER, root), profile);
    setVariables(profile);
  } catch (...) {
    close();
    throw;
  }
  setActingUser(profile.user.sid);
}

ActingProfile::~ActingProfile() {
  setActingUser({});
  close();
}

void ActingProfile::open(const ListedProfile& profile, UserWork work) {
  if (isLoaded(profile.user.sid)) {
    require(RegOpenKeyExW(HKEY_USERS, Wide(profile.user.sid).get(), 0, MAXIMUM_ALLOWED, &root),
            profile);
  } else if (work == UserWork::Scan) {
    openCopy(profile);
  } else {
    openHives(profile);
  }
}

void ActingProfile::require(LONG code, const ListedProfile& profile) {
  if (code == ERROR_SUCCESS) {
    return;
  }
  const std::string whose = "the profile of " + profile.user.name + ", " + profile.folder;
  if (code == ERROR_SHARING_VIOLATION) {
    throw std::runtime_error(whose + ", is in use by another program, and was left out");
  }
  throw std::runtime_error(whose + ", cannot be loaded (error " + std::to_string(code) +
                           "), and was left out; run the program as administrator");
}

void ActingProfile::openCopy(const ListedProfile& profile) {
  copies = temporaryFolder();
  deleteFolder(copies);
  makePrivateFolder(copies);
  const std::string user = copies + userHive;
  const std::string classes = copies + "\\UsrClass.dat";
  const bool isCopied =
      copyHive(profile.folder + userHive, user) && copyHive(profile.folder + classesHive, classes);
  require(isCopied ? ERROR_SUCCESS : static_cast<LONG>(GetLastError()), profile);
  require(calls.loadPrivately(user, root), profile);
  if (!isFile(classes)) {
    return;
  }
  // Two private hives cannot be linked, so the classes are copied to where the link would be.
  HKEY from = nullptr;
  require(calls.loadPrivately(classes, from), profile);
  HKEY to = nullptr;
  LONG code = RegCreateKeyExW(root, L"Software\\Classes", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                              &to, nullptr);
  if (code == ERROR_SUCCESS) {
    code = RegCopyTreeW(from, nullptr, to);
    RegCloseKey(to);
  }
  RegCloseKey(from);
  require(code, profile);
}

void ActingProfile::openHives(const ListedProfile& profile) {
  const std::string& key = profile.user.key;
  require(calls.load(key, profile.folder + userHive), profile);
  loaded.push_back(key);
  if (isFile(profile.folder + classesHive)) {
    const std::string classes = key + utf8(userClassesSuffix);
    require(calls.load(classes, profile.folder + classesHive), profile);
    loaded.push_back(classes);
    require(linkClasses(key), profile);
  }
  require(RegOpenKeyExW(HKEY_USERS, Wide(key).get(), 0, MAXIMUM_ALLOWED, &root), profile);
}

void ActingProfile::setVariables(const ListedProfile& profile) {
  const std::string& folder = profile.folder;
  const std::string local = folder + "\\AppData\\Local";
  const std::array<std::pair<const char*, std::string>, 8> ofProfile{
      {{"USERPROFILE", folder},
       {"HOMEDRIVE", folder.substr(0, 2)},
       {"HOMEPATH", folder.substr(std::min<std::size_t>(2, folder.size()))},
       {"APPDATA", folder + "\\AppData\\Roaming"},
       {"LOCALAPPDATA", local},
       {"TEMP", local + "\\Temp"},
       {"TMP", local + "\\Temp"},
       {"USERNAME", profile.user.name}}};
  for (const auto& [name, value] : ofProfile) {
    setVariable(name, value);
  }
  const WideKey own(HiveHandle::CurrentUser, u"Environment", KEY_QUERY_VALUE);
  for (const WideValue& value :
       own.isOpen() ? own.values().value_or(std::vector<WideValue>()) : std::vector<WideValue>()) {
    // The folders of programs that this user has follow the computer's, which stay as they are.
    if (isSingleText(value.type) && !isSameName(value.name, u"Path")) {
      const std::string text = expandedText(textOf(value));
      setVariable(utf8(value.name), std::string(untilNul(text)));
    }
  }
}

void ActingProfile::setVariable(const std::string& name, const std::string& value) {
  variables.emplace_back(name, environmentVariable(name.c_str()));
  SetEnvironmentVariableW(Wide(name).get(), Wide(value).get());
}

// In the order in which nothing is used any more.
void ActingProfile::close() {
  for (; !variables.empty(); variables.pop_back()) {
    const auto& [name, before] = variables.back();
    SetEnvironmentVariableW(Wide(name).get(), before.empty() ? nullptr : Wide(before).get());
  }
  RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
  if (root != nullptr) {
    RegCloseKey(std::exchange(root, nullptr));
  }
  for (; !loaded.empty(); loaded.pop_back()) {
    calls.unload(loaded.back());
  }
  if (!copies.empty()) {
    deleteFolder(copies);
  }
}

}  // namespace zelvreg::console
