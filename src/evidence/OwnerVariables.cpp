#include "evidence/OwnerVariables.h"

#include <algorithm>
#include <array>

#include "evidence/CommandText.h"
#include "roots/UserKeys.h"
#include "roots/ValueTypes.h"
#include "runtime/Environment.h"
#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

constexpr int deepestVariable = 8;
constexpr int mostVariables = 256;

constexpr std::array<std::string_view, 14> commonVariables{"windir",
                                                           "systemroot",
                                                           "systemdrive",
                                                           "programfiles",
                                                           "programfiles(x86)",
                                                           "programw6432",
                                                           "commonprogramfiles",
                                                           "commonprogramfiles(x86)",
                                                           "commonprogramw6432",
                                                           "programdata",
                                                           "allusersprofile",
                                                           "public",
                                                           "comspec",
                                                           "driverdata"};

// The folders of programs have another value in each view, under one name.
struct ViewVariable {
  std::string_view name;
  const char* in64Bit;
  const char* in32Bit;
};
constexpr std::array viewVariables{
    ViewVariable{"programfiles", "ProgramW6432", "ProgramFiles(x86)"},
    ViewVariable{"commonprogramfiles", "CommonProgramW6432", "CommonProgramFiles(x86)"},
};

// "%1" is an argument of a command, and what holds a separator is no name.
bool isVariableName(std::string_view name) {
  constexpr std::string_view beginsNoName = " 0123456789*~";
  return !name.empty() && beginsNoName.find(name.front()) == std::string_view::npos &&
         name.find_first_of("\\/:\"") == std::string_view::npos;
}

std::optional<std::string> known(std::string text) {
  return text.empty() ? std::nullopt : std::optional(std::move(text));
}

}  // namespace

bool isCommonVariable(std::string_view name) {
  return std::ranges::find(commonVariables, lowerCase(name)) != commonVariables.end();
}

std::u16string OwnerVariables::ownerOf(const TruePlace& key) {
  if (key.hive != HiveHandle::Users) {
    return {};
  }
  std::u16string owner = userOf(key.path);
  if (!currentUser) {
    currentUser = currentUserKey();
  }
  return isSameName(owner, *currentUser) ? std::u16string() : owner;
}

ExpandedText OwnerVariables::expand(std::string_view text, const std::u16string& owner,
                                    ProgramView view) {
  Expansion expansion{{}, mostVariables};
  expandInto(expansion, text, owner, view, 0);
  return std::move(expansion.result);
}

void OwnerVariables::expandInto(Expansion& expansion, std::string_view text,
                                const std::u16string& owner, ProgramView view, int depth) {
  ExpandedText& result = expansion.result;
  for (;;) {
    const auto start = text.find('%');
    result.text += text.substr(0, start);
    if (start == std::string_view::npos) {
      return;
    }
    text.remove_prefix(start);
    const auto end = std::min(text.find('%', 1), text.size());
    const auto found =
        end == text.size() ? std::nullopt : value(text.substr(1, end - 1), owner, view);
    const bool isTooMuch = depth >= deepestVariable || expansion.variablesLeft <= 0 ||
                           result.text.size() > longestText;
    if (!found || isTooMuch) {
      const bool isClosed = end < text.size();
      result.isComplete =
          result.isComplete && !(isClosed && isVariableName(text.substr(1, end - 1)));
      result.text += text.substr(0, end);
      text.remove_prefix(end);
      continue;
    }
    --expansion.variablesLeft;
    result.hasUsersVariable = result.hasUsersVariable || isUsers(text.substr(1, end - 1));
    expandInto(expansion, *found, owner, view, depth + 1);
    text.remove_prefix(end + 1);
  }
}

bool OwnerVariables::mapsDrive(char letter, const std::u16string& owner) {
  const auto [entry, isNew] = mapped.try_emplace(owner);
  if (isNew) {
    const HiveHandle root = owner.empty() ? HiveHandle::CurrentUser : HiveHandle::Users;
    const WideKey drives(root, owner.empty() ? u"Network" : owner + u"\\Network",
                         KEY_ENUMERATE_SUB_KEYS);
    const auto names = drives.isOpen() ? drives.subkeys() : std::nullopt;
    for (const std::u16string& name : names.value_or(std::vector<std::u16string>())) {
      entry->second += name.size() == 1 ? lowerCase(utf8(name)) : "";
    }
  }
  return contains(entry->second, lowerCase(std::string(1, letter)));
}

bool OwnerVariables::isUsers(std::string_view name) {
  const std::string lower = lowerCase(name);
  return !isCommonVariable(name) &&
         (ownValue(lower, {}) ||
          !valuesOf(HiveHandle::LocalMachine, computersVariables).contains(lower));
}

std::optional<std::string> OwnerVariables::value(std::string_view name, const std::u16string& owner,
                                                 ProgramView view) {
  const std::string lower = lowerCase(name);
  const auto* ofView = std::ranges::find(viewVariables, lower, &ViewVariable::name);
  if (ofView != viewVariables.end()) {
    const char* theirs = view == ProgramView::Bits64 ? ofView->in64Bit : ofView->in32Bit;
    if (auto found = known(environmentVariable(theirs))) {
      return found;
    }
  }
  if (auto found = ownValue(lower, owner)) {
    return found;
  }
  if (owner.empty() || isCommonVariable(lower)) {
    if (auto found = known(environmentVariable(lower.c_str()))) {
      return found;
    }
  }
  const Values& computers = valuesOf(HiveHandle::LocalMachine, computersVariables);
  const auto found = computers.find(lower);
  return found == computers.end() ? std::nullopt : std::optional(found->second);
}

// What the user has set, then what follows from the user's profile.
std::optional<std::string> OwnerVariables::ownValue(const std::string& lowerName,
                                                    const std::u16string& owner) {
  const HiveHandle root = owner.empty() ? HiveHandle::CurrentUser : HiveHandle::Users;
  const std::u16string above = owner.empty() ? std::u16string() : owner + u"\\";
  for (const char16_t* key : {u"Environment", u"Volatile Environment"}) {
    const Values& values = valuesOf(root, above + key);
    const auto found = values.find(lowerName);
    if (found != values.end()) {
      return found->second;
    }
  }
  if (owner.empty()) {
    return std::nullopt;
  }
  const Values& profile = profileOf(owner);
  const auto found = profile.find(lowerName);
  return found == profile.end() ? std::nullopt : std::optional(found->second);
}

const OwnerVariables::Values& OwnerVariables::valuesOf(HiveHandle root, const std::u16string& key) {
  const TruePlace place{root, key};
  const auto [entry, isNew] = keys.try_emplace(place.fullPath());
  if (isNew) {
    const WideKey open(root, key, KEY_QUERY_VALUE);
    for (const WideValue& value : open.isOpen() ? open.values().value_or(std::vector<WideValue>())
                                                : std::vector<WideValue>()) {
      if (isSingleText(value.type)) {
        entry->second.emplace(lowerCase(utf8(value.name)), textOf(value));
      }
    }
  }
  return entry->second;
}

const OwnerVariables::Values& OwnerVariables::profileOf(const std::u16string& owner) {
  const auto [entry, isNew] = profiles.try_emplace(owner);
  if (!isNew) {
    return entry->second;
  }
  const Values list =
      valuesOf(HiveHandle::LocalMachine, std::u16string(profileListKey) + u"\\" + owner);
  const auto folder = list.find("profileimagepath");
  if (folder != list.end()) {
    const std::string path = expand(folder->second, std::u16string(), ProgramView::Bits64).text;
    entry->second = {{"userprofile", path},
                     {"username", std::string(fileNameIn(path))},
                     {"homedrive", path.substr(0, 2)},
                     {"homepath", path.size() > 2 ? path.substr(2) : std::string()},
                     {"appdata", path + "\\AppData\\Roaming"},
                     {"localappdata", path + "\\AppData\\Local"},
                     {"temp", path + "\\AppData\\Local\\Temp"},
                     {"tmp", path + "\\AppData\\Local\\Temp"}};
    const Values moved = valuesOf(HiveHandle::Users, owner + u"\\" + userShellFoldersKey);
    for (const auto& [variable, folderName] :
         {std::pair("appdata", "appdata"), std::pair("localappdata", "local appdata")}) {
      const auto found = moved.find(folderName);
      if (found != moved.end()) {
        entry->second[variable] = expand(found->second, owner, ProgramView::Bits64).text;
      }
    }
  }
  return entry->second;
}

}  // namespace zelvreg
