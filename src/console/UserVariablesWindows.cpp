#include "console/UserVariables.h"

#include <windows.h>

#include <algorithm>
#include <array>

#include "evidence/OwnerVariables.h"
#include "keys/DirectText.h"
#include "keys/WideKey.h"
#include "roots/UserKeys.h"
#include "roots/ValueTypes.h"
#include "runtime/Environment.h"
#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg::console {
namespace {

using Variables = std::vector<std::pair<std::string, std::string>>;

Variables processVariables() {
  Variables variables;
  WCHAR* block = GetEnvironmentStringsW();
  for (const WCHAR* next = block; next != nullptr && *next != L'\0';) {
    const std::u16string_view entry = untilNul(next);
    // What begins with "=" is the current folder of a drive.
    const std::size_t sign = entry.find(u'=', 1);
    if (entry.front() != u'=' && sign != std::u16string_view::npos) {
      variables.emplace_back(utf8(entry.substr(0, sign)), utf8(entry.substr(sign + 1)));
    }
    next += entry.size() + 1;
  }
  FreeEnvironmentStringsW(block);
  return variables;
}

void set(const std::string& name, const std::string& value) {
  SetEnvironmentVariableW(Wide(name).get(), Wide(value).get());
}

void remove(const std::string& name) { SetEnvironmentVariableW(Wide(name).get(), nullptr); }

bool isPath(const std::u16string& name) { return isSameName(name, u"Path"); }

std::string expanded(const WideValue& value) {
  return std::string(untilNul(expandedText(textOf(value))));
}

// In the search path the user's folders follow the computer's.
void setAll(HiveHandle root, const std::u16string& path) {
  const WideKey key(root, path, KEY_QUERY_VALUE);
  for (const WideValue& value :
       key.isOpen() ? key.values().value_or(std::vector<WideValue>()) : std::vector<WideValue>()) {
    // The computer's own list names the system as its user.
    if (!isSingleText(value.type) || value.name.empty() || isSameName(value.name, u"UserName")) {
      continue;
    }
    const bool isAppended = isPath(value.name) && root == HiveHandle::CurrentUser;
    set(utf8(value.name),
        (isAppended ? environmentVariable("Path") + ";" : std::string()) + expanded(value));
  }
}

// Folders of the profile may have been moved elsewhere.
std::string movedFolder(const char* name, const std::string& usual) {
  std::string folder;
  readExpandedText(HiveHandle::CurrentUser, utf8(userShellFoldersKey), name, KEY_WOW64_64KEY,
                   folder);
  return folder.empty() ? usual : folder;
}

void setProfile(const ListedProfile& profile) {
  const std::string& folder = profile.folder;
  set("USERPROFILE", folder);
  set("HOMEDRIVE", folder.substr(0, 2));
  set("HOMEPATH", folder.substr(std::min<std::size_t>(2, folder.size())));
  set("USERNAME", profile.user.name);
  const std::string local = movedFolder("Local AppData", folder + "\\AppData\\Local");
  set("APPDATA", movedFolder("AppData", folder + "\\AppData\\Roaming"));
  set("LOCALAPPDATA", local);
  set("TEMP", local + "\\Temp");
  set("TMP", local + "\\Temp");
}

}  // namespace

UserVariables::UserVariables(const ListedProfile& profile) : before(processVariables()) {
  for (const auto& [name, value] : before) {
    if (!isCommonVariable(name) && lowerCase(name) != "computername") {
      remove(name);
    }
  }
  setAll(HiveHandle::LocalMachine, computersVariables);
  setProfile(profile);
  setAll(HiveHandle::CurrentUser, u"Environment");
  setAll(HiveHandle::CurrentUser, u"Volatile Environment");
}

UserVariables::~UserVariables() {
  for (const auto& [name, value] : processVariables()) {
    remove(name);
  }
  for (const auto& [name, value] : before) {
    set(name, value);
  }
}

}  // namespace zelvreg::console
