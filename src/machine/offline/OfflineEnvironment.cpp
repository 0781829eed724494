#include "machine/offline/OfflineEnvironment.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "machine/base/CaseFold.h"
#include "machine/computer/Environment.h"
#include "roots/UserKeys.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {
namespace {

constexpr std::string_view currentVersion =
    R"(HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion)";
constexpr std::string_view profileList =
    R"(HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows NT\CurrentVersion\ProfileList)";
constexpr std::string_view systemVariables =
    R"(HKEY_LOCAL_MACHINE\SYSTEM\CurrentControlSet\Control\Session Manager\Environment)";

// A variable and the value of CurrentVersion that says where its folder is.
struct FolderValue {
  const char* variable;
  const char* value;
};
constexpr FolderValue foldersOf32Bit[] = {{"ProgramFiles", "ProgramFilesDir"},
                                          {"CommonProgramFiles", "CommonFilesDir"}};
// A 32-bit process takes the (x86) folders for its own.
constexpr FolderValue foldersOf64Bit[] = {{"ProgramFiles", "ProgramFilesDir (x86)"},
                                          {"ProgramFiles(x86)", "ProgramFilesDir (x86)"},
                                          {"ProgramW6432", "ProgramFilesDir"},
                                          {"CommonProgramFiles", "CommonFilesDir (x86)"},
                                          {"CommonProgramFiles(x86)", "CommonFilesDir (x86)"},
                                          {"CommonProgramW6432", "CommonFilesDir"}};

std::optional<std::u16string> textOfValue(const RegistryValue& value) {
  if (value.type != REG_SZ && value.type != REG_EXPAND_SZ) {
    return std::nullopt;
  }
  std::u16string text(value.dataSize / sizeof(char16_t), u'\0');
  if (!text.empty()) {
    std::memcpy(text.data(), value.data, text.size() * sizeof(char16_t));
  }
  return std::u16string(untilNul(text));
}

enum class Whose : std::uint8_t { Computers, Users };

class Builder {
 public:
  Builder(Registry& source, const std::string& userName)
      : registry(source), known(source.is64Bit(), utf16(userName)) {}

  void set(std::u16string_view name, std::u16string_view text) {
    const std::u16string value = known.expand(text);
    known.set(name, value);
    // One variable may be spelled in two ways in two places.
    const auto old = std::ranges::find_if(
        found, [&](const auto& entry) { return isSameName(utf16(entry.first), name); });
    found[old == found.end() ? utf8(name) : old->first] = utf8(value);
  }

  void set(std::string_view name, std::string_view text) { set(utf16(name), utf16(text)); }

  void setFolder(const FolderValue& folder) {
    if (const auto text = textValue(registry, currentVersion, folder.value)) {
      set(folder.variable, *text);
    }
  }

  // All variables that a key holds. In a path those of a user follow the computer's.
  void setAll(std::string_view path, Whose whose) {
    RegistryKey* key = registry.find(path);
    for (std::size_t index = 0; key != nullptr && index < registry.values(*key).size(); ++index) {
      const RegistryValue& value = *registry.values(*key).at(index);
      const std::optional<std::u16string> text = textOfValue(value);
      // The computer's own list names the system as its user.
      if (!text || value.name().empty() || isSameName(value.name(), u"USERNAME")) {
        continue;
      }
      const auto before = known.get(value.name());
      const bool isAppended = whose == Whose::Users && before && isSameName(value.name(), u"Path");
      set(value.name(), isAppended ? std::u16string(*before) + u";" + *text : *text);
    }
  }

  std::map<std::string, std::string> found;

 private:
  Registry& registry;
  Environment known;
};

// Folders of a profile that may have been moved elsewhere.
struct ProfileFolder {
  const char* variable;
  const char* value;  // of the user's shell folders, which says where it is
  const char* usual;
  const char* old;
};
constexpr ProfileFolder profileFolders[] = {
    {"APPDATA", "AppData", R"(%USERPROFILE%\AppData\Roaming)", R"(%USERPROFILE%\Application Data)"},
    {"LOCALAPPDATA", "Local AppData", R"(%USERPROFILE%\AppData\Local)",
     R"(%USERPROFILE%\Local Settings\Application Data)"}};

void setProfile(Builder& builder, Registry& registry, const MachineUser& user) {
  builder.set("USERPROFILE", user.profile);
  const std::string moved = "HKEY_USERS\\" + user.key + "\\" + utf8(userShellFoldersKey);
  for (const ProfileFolder& folder : profileFolders) {
    const std::string place = textValue(registry, moved, folder.value).value_or("");
    builder.set(folder.variable, !place.empty()       ? place
                                 : user.hasOldProfile ? folder.old
                                                      : folder.usual);
  }
  for (const char* name : {"TEMP", "TMP"}) {
    builder.set(name, user.hasOldProfile ? R"(%USERPROFILE%\Local Settings\Temp)"
                                         : R"(%LOCALAPPDATA%\Temp)");
  }
}

}  // namespace

std::optional<std::string> textValue(Registry& registry, std::string_view path,
                                     std::string_view name) {
  RegistryKey* key = registry.find(path);
  const RegistryValue* value = key == nullptr ? nullptr : registry.values(*key).find(utf16(name));
  const std::optional<std::u16string> text = value == nullptr ? std::nullopt : textOfValue(*value);
  return text ? std::optional(utf8(*text)) : std::nullopt;
}

std::map<std::string, std::string> readOfflineEnvironment(Registry& registry,
                                                          const std::string& windows,
                                                          const MachineUser& user) {
  Builder builder(registry, user.name);
  builder.set("SystemDrive", windows.substr(0, 2));
  builder.set("SystemRoot", windows);
  builder.set("WINDIR", windows);
  if (registry.is64Bit()) {
    std::ranges::for_each(foldersOf64Bit, [&](const auto& folder) { builder.setFolder(folder); });
  } else {
    std::ranges::for_each(foldersOf32Bit, [&](const auto& folder) { builder.setFolder(folder); });
  }
  if (const auto programData = textValue(registry, profileList, "ProgramData")) {
    builder.set("ProgramData", *programData);
    builder.set("ALLUSERSPROFILE", *programData);
  }
  if (!user.profile.empty()) {
    setProfile(builder, registry, user);
  }
  builder.setAll(systemVariables, Whose::Computers);
  builder.setAll("HKEY_USERS\\" + user.key + "\\Environment", Whose::Users);
  return builder.found;
}

}  // namespace zelvreg::machine
