#include "console/ActingProfile.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "keys/AccountSids.h"
#include "keys/ActingUser.h"
#include "keys/RestorePrivileges.h"
#include "keys/WideKey.h"
#include "roots/UserKeys.h"
#include "runtime/Environment.h"
#include "runtime/PrivateFiles.h"
#include "text/Wide.h"

namespace zelvreg::console {
namespace {

constexpr const char* classesHive = "\\AppData\\Local\\Microsoft\\Windows\\UsrClass.dat";
// With a hive goes what Windows has not written into it yet.
constexpr std::array hiveParts{"", ".LOG", ".LOG1", ".LOG2"};

// False if a part that is there could not be copied; GetLastError() says why.
bool copyHive(const std::string& from, const std::string& to) {
  return std::ranges::all_of(hiveParts, [&](const char* part) {
    const std::string source = from + part;
    return !isFileThere(source) ||
           CopyFileW(Wide(source).get(), Wide(to + part).get(), FALSE) != FALSE;
  });
}

// Of the hive that is loaded at this key.
std::string copyOf(const std::string& key) { return copiesFolder() + "\\" + key + ".dat"; }

// A link is removed itself, never what it leads to. What is still loaded stays.
void deleteFolder(const std::string& folder) {
  const DWORD attributes = GetFileAttributesW(Wide(folder).get());
  const bool isLink =
      attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
  WIN32_FIND_DATAW found{};
  HANDLE search =
      isLink ? INVALID_HANDLE_VALUE : FindFirstFileW(Wide(folder + "\\*").get(), &found);
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

// The user's own classes: a hive of its own, or a key of somebody who has none. Null without any.
HKEY openClasses(const std::string& key) {
  HKEY classes = nullptr;
  for (const std::string& path : {key + utf8(userClassesSuffix), key + "\\Software\\Classes"}) {
    if (RegOpenKeyExW(HKEY_USERS, Wide(path).get(), 0, MAXIMUM_ALLOWED, &classes) ==
        ERROR_SUCCESS) {
      return classes;
    }
  }
  return nullptr;
}

}  // namespace

ProfileCalls systemProfileCalls() {
  return {.load =
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

std::string copiesFolder() { return programFolder() + "\\copies"; }

void LoadedHives::removeLeftovers() {
  const WideKey users(HiveHandle::Users, u"", KEY_ENUMERATE_SUB_KEYS);
  for (const std::u16string& name : users.subkeys().value_or(std::vector<std::u16string>())) {
    if (utf8(name).starts_with(ownKeys)) {
      calls.unload(utf8(name));
    }
  }
  deleteFolder(copiesFolder());
}

LONG LoadedHives::load(const std::string& key, const std::string& file,
                       const ListedProfile& profile) {
  const LONG code = calls.load(key, file);
  if (code == ERROR_SUCCESS) {
    loaded.emplace_back(key, profile);
  }
  return code;
}

void LoadedHives::unloadAll() {
  const bool wasAny = !loaded.empty();
  std::erase_if(loaded, [this](const auto& hive) {
    return calls.unload(hive.first) == ERROR_SUCCESS || !isLoaded(hive.first);
  });
  if (wasAny && loaded.empty()) {
    deleteFolder(copiesFolder());
  }
}

std::vector<std::string> LoadedHives::stillLoaded() const {
  std::vector<std::string> lines;
  for (const auto& [key, profile] : loaded) {
    lines.push_back(nameInMessages(profile) +
                    ", could not be unloaded, since another program uses "
                    "HKEY_USERS\\" +
                    key + "; end that program and start this one again");
  }
  return lines;
}

ActingProfile::ActingProfile(const ListedProfile& profileInUse, UserWork work,
                             LoadedHives& hivesInUse)
    : profile(profileInUse), hives(hivesInUse) {
  try {
    open(work);
    require(RegOverridePredefKey(HKEY_CURRENT_USER, root));
    const std::string account = environmentVariable("UserName");
    variables.emplace(profile);
    setActingUser(ActingUser{
        .sid = profile.user.sid, .key = profile.user.key, .account = account, .classes = classes});
  } catch (...) {
    close();
    throw;
  }
}

ActingProfile::~ActingProfile() {
  setActingUser(std::nullopt);
  close();
}

// What was signed in may have signed out since the profiles were listed, and the other way round.
void ActingProfile::open(UserWork work) {
  const std::string& key = profile.user.key;
  const bool isSignedIn = key == profile.user.sid;
  if (isSignedIn != isLoaded(profile.user.sid)) {
    leaveOut(isSignedIn ? "was signed out meanwhile" : "was signed in meanwhile");
  }
  if (!isSignedIn && isLoaded(key)) {
    leaveOut("is still loaded at HKEY_USERS\\" + key + ", since another program uses it");
  }
  if (!isSignedIn && work == UserWork::Scan) {
    makeCopies();
    load(copyOf(key), copyOf(key + utf8(userClassesSuffix)));
  } else if (!isSignedIn) {
    load(profile.folder + userHive, profile.folder + classesHive);
  }
  require(RegOpenKeyExW(HKEY_USERS, Wide(key).get(), 0, MAXIMUM_ALLOWED, &root));
  classes = openClasses(key);
}

void ActingProfile::load(const std::string& userFile, const std::string& classesFile) {
  const std::string& key = profile.user.key;
  require(hives.load(key, userFile, profile));
  if (isFileThere(classesFile)) {
    require(hives.load(key + utf8(userClassesSuffix), classesFile, profile));
    require(linkClasses(key));
  }
}

void ActingProfile::makeCopies() {
  const std::string folder = copiesFolder();
  const std::string user = copyOf(profile.user.key);
  const std::string classesCopy = copyOf(profile.user.key + utf8(userClassesSuffix));
  const PrivateSecurity security(PrivateSecurity::Of::Folder);
  // The call only reads, though its type does not say so.
  auto* attributes = const_cast<SECURITY_ATTRIBUTES*>(security.get());
  if (!isFileThere(folder) &&
      (attributes == nullptr || CreateDirectoryW(Wide(folder).get(), attributes) == FALSE)) {
    leaveOut("cannot be scanned, since " + folder + " for a copy cannot be made (error " +
             std::to_string(GetLastError()) + "); run the program as administrator");
  }
  hasCopies = true;
  // An empty one tells whether the disk keeps access lists at all.
  HANDLE empty = CreateFileW(Wide(user).get(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                             FILE_ATTRIBUTE_NORMAL, nullptr);
  if (empty != INVALID_HANDLE_VALUE) {
    CloseHandle(empty);
  }
  if (couldOthersWrite(user)) {
    leaveOut("cannot be scanned, since " + folder + " keeps no copy private");
  }
  const bool isCopied = copyHive(profile.folder + userHive, user) &&
                        copyHive(profile.folder + classesHive, classesCopy);
  require(isCopied ? ERROR_SUCCESS : static_cast<LONG>(GetLastError()));
}

void ActingProfile::require(LONG code) {
  if (code == ERROR_SHARING_VIOLATION) {
    leaveOut("is in use by another program");
  }
  if (code != ERROR_SUCCESS) {
    leaveOut("cannot be loaded (error " + std::to_string(code) +
             "); run the program as administrator");
  }
}

void ActingProfile::leaveOut(const std::string& why) const {
  throw std::runtime_error(nameInMessages(profile) + ", was left out: it " + why);
}

// In the order in which nothing is used any more.
void ActingProfile::close() {
  variables.reset();
  RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
  for (HKEY* key : {&classes, &root}) {
    if (*key != nullptr) {
      RegCloseKey(std::exchange(*key, nullptr));
    }
  }
  hives.unloadAll();
  if (hasCopies) {
    deleteFolder(copiesFolder());
  }
}

}  // namespace zelvreg::console
