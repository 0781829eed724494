// A user of this Windows who is not signed in, with hives that Wine has saved itself.
#ifndef ZELVREG_TESTS_CONSOLE_PROFILE_OF_DORA_H
#define ZELVREG_TESTS_CONSOLE_PROFILE_OF_DORA_H

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <array>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "console/ActingProfile.h"
#include "console/Commands.h"
#include "console/RunningComputer.h"
#include "keys/Deletion.h"
#include "keys/RestorePrivileges.h"
#include "keys/WideKey.h"
#include "support/ParsedJson.h"
#include "text/Wide.h"

namespace zelvreg::console {

class ProfileOfDora : public ::testing::Test {
 protected:
  static constexpr const char* sid = "S-1-5-21-7-7-7-1005";
  static constexpr const char* ownKey = "zelvreg-S-1-5-21-7-7-7-1005";
  static constexpr const char* ownClasses = "zelvreg-S-1-5-21-7-7-7-1005_Classes";
  static constexpr const char* tried = "tried";
  static constexpr const char* server = "{6B29FC40-CA47-1067-B31D-00DD010662DA}";
  static constexpr const char* otherServer = "{6B29FC40-CA47-1067-B31D-00DD010662DB}";
  static constexpr const char16_t* run = u"Software\\Microsoft\\Windows\\CurrentVersion\\Run";
  static constexpr const char* profileList =
      "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\ProfileList\\";

  ProfileOfDora() {
    std::array<char16_t, 300> above{};
    const DWORD size = GetTempPathW(static_cast<DWORD>(above.size()), roomIn(above));
    folder = utf8({above.data(), size}) + "Dora";
    std::string below = folder;
    CreateDirectoryW(Wide(below).get(), nullptr);
    for (const char* name : {"AppData", "Local", "Microsoft", "Windows"}) {
      below += std::string("\\") + name;
      CreateDirectoryW(Wide(below).get(), nullptr);
    }
    saveHives();
    list(sid, folder);
    setText(HiveHandle::LocalMachine, otherClass() + u"\\InprocServer32", u"",
            u"C:\\computers\\gone.dll");
    calls.load = [this](const std::string& key, const std::string& file) {
      files[key] = file;
      return systemProfileCalls().load(key, file);
    };
    calls.unload = [this](const std::string& key) {
      keepChanges(key);
      return systemProfileCalls().unload(key);
    };
  }
  ~ProfileOfDora() override {
    for (const char* key : {tried, ownKey, ownClasses}) {
      systemProfileCalls().unload(key);
    }
    DeleteRegistryTree(HiveHandle::LocalMachine, profileList + std::string(sid));
    DeleteRegistryTree(HiveHandle::LocalMachine, utf8(otherClass()));
    DeleteFileW(Wide(folder + "\\NTUSER.DAT").get());
    DeleteFileW(Wide(folder + classesFile).get());
  }

  static std::u16string otherClass() { return u"Software\\Classes\\CLSID\\" + utf16(otherServer); }

  static bool isThere(HiveHandle hive, const std::u16string& path) {
    return WideKey(hive, path, KEY_QUERY_VALUE).isOpen();
  }

  static void setText(HiveHandle root, const std::u16string& path, const std::u16string& name,
                      const std::u16string& text) {
    const auto* bytes = reinterpret_cast<const BYTE*>(text.c_str());
    EXPECT_TRUE(WideKey::make(root, path, KEY_SET_VALUE)
                    .setValue({.name = name,
                               .type = REG_SZ,
                               .data = {bytes, bytes + (text.size() + 1) * sizeof(char16_t)}}));
  }

  // Enters a profile in the list of profiles.
  static void list(const std::string& identifier, const std::string& path) {
    setText(HiveHandle::LocalMachine, utf16(profileList + identifier), u"ProfileImagePath",
            utf16(path));
  }

  // Windows writes to the file what was changed, Wine does not.
  void keepChanges(const std::string& name) {
    HKEY key = nullptr;
    const auto file = files.find(name);
    if (file != files.end() && isFileThere(file->second) &&
        RegOpenKeyExW(HKEY_USERS, Wide(name).get(), 0, KEY_ALL_ACCESS, &key) == ERROR_SUCCESS) {
      save(key, file->second);
      RegCloseKey(key);
    }
  }

  static void save(HKEY key, const std::string& file) {
    DeleteFileW(Wide(file).get());
    const RestorePrivileges privileges;
    EXPECT_EQ(RegSaveKeyW(key, Wide(file).get(), nullptr), 0);
  }

  static void saveBelow(const std::u16string& made, const std::string& file) {
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, wideText(made), 0, KEY_ALL_ACCESS, &key), 0);
    save(key, file);
    RegCloseKey(key);
    DeleteRegistryTree(HiveHandle::CurrentUser, utf8(made));
  }

  // Hives with a dead startup program and a dead server.
  void saveHives() const {
    const std::u16string made = u"Software\\MadeForAHive";
    setText(HiveHandle::CurrentUser, made + u"\\" + run, u"Gone", u"C:\\gone.exe");
    setText(HiveHandle::CurrentUser, made + u"\\Environment", u"OWN", u"Dora's");
    setText(HiveHandle::CurrentUser, made + u"\\Environment", u"Path", u"C:\\doras");
    setText(HiveHandle::CurrentUser,
            made + u"\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders",
            u"AppData", u"D:\\moved");
    saveBelow(made, folder + "\\NTUSER.DAT");
    setText(HiveHandle::CurrentUser, made + u"\\CLSID\\" + utf16(server) + u"\\InprocServer32", u"",
            u"C:\\gone.dll");
    saveBelow(made, folder + classesFile);
  }

  [[nodiscard]] static ListedProfile listed() {
    const auto profiles = listProfiles().profiles;
    const auto found = std::ranges::find_if(
        profiles, [](const ListedProfile& profile) { return profile.user.sid == sid; });
    return found == profiles.end() ? ListedProfile() : *found;
  }

  // Whether the hive in the file has lost the dead startup program.
  [[nodiscard]] bool isGoneInFile() const {
    EXPECT_EQ(systemProfileCalls().load(tried, folder + "\\NTUSER.DAT"), 0);
    const bool isGone =
        !valueAt(HiveHandle::Users, utf16(tried) + u"\\" + run, u"Gone").has_value();
    EXPECT_EQ(systemProfileCalls().unload(tried), 0);
    return isGone;
  }

  // As the program does it, to its end.
  int runCommand(const std::vector<const char*>& arguments) {
    out.str("");
    error.str("");
    closing.clear();
    const auto parsed = parseCommandLine(static_cast<int>(arguments.size()), arguments.data());
    const auto computer = openRunningComputer(parsed.options.target, Access::Alone, calls);
    const int status = console::runCommand(parsed.options, *computer, {.out = out, .error = error});
    try {
      computer->close();
    } catch (const std::runtime_error& failure) {
      closing = failure.what();
      throw;
    }
    return status;
  }

  // How many findings a scan lists of the one who is not signed in.
  int deadOfProfile() {
    runCommand({"zelvreg", "--user", "all", "scan", "--only", "startup,com-classes", "--json"});
    const auto findings = fixture::parsedJson(out.str())["findings"];
    return static_cast<int>(std::ranges::count_if(findings, [](const auto& finding) {
      return finding["user"] == "Dora" && finding["sid"] == sid;
    }));
  }

  static constexpr const char* classesFile = "\\AppData\\Local\\Microsoft\\Windows\\UsrClass.dat";
  std::string folder;
  std::map<std::string, std::string> files;  // by the keys that they are loaded at
  ProfileCalls calls;
  LoadedHives hives{
      ProfileCalls{.load = [this](const std::string& key,
                                  const std::string& file) { return calls.load(key, file); },
                   .unload = [this](const std::string& key) { return calls.unload(key); }}};
  std::ostringstream out;
  std::ostringstream error;
  std::string closing;  // what its end has failed with
};

}  // namespace zelvreg::console

#endif
