// Users who are not signed in. Only on Windows are hives loaded; Wine loads those that it has saved
// itself, and none privately, so that a stand-in loads these for everybody.
#include "console/ActingProfile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <sstream>
#include <stdexcept>

#include "console/Commands.h"
#include "console/RunningComputer.h"
#include "keys/AccountSids.h"
#include "keys/Deletion.h"
#include "keys/RestorePrivileges.h"
#include "keys/WideKey.h"
#include "runtime/Environment.h"
#include "support/ParsedJson.h"
#include "text/Wide.h"

namespace zelvreg::console {
namespace {

constexpr const char* sid = "S-1-5-21-7-7-7-1005";
constexpr const char* ownKey = "zelvreg-S-1-5-21-7-7-7-1005";
constexpr const char* standIn = "stand-in";
constexpr const char16_t* run = u"Software\\Microsoft\\Windows\\CurrentVersion\\Run";
constexpr const char* profileList =
    "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\ProfileList\\";

bool isThere(HiveHandle hive, const std::u16string& path) {
  return WideKey(hive, path, KEY_QUERY_VALUE).isOpen();
}

bool isLoaded(const std::string& key) { return isThere(HiveHandle::Users, utf16(key)); }

void setText(const WideKey& key, const std::u16string& name, const std::u16string& text) {
  const auto* bytes = reinterpret_cast<const BYTE*>(text.c_str());
  EXPECT_TRUE(key.setValue({.name = name,
                            .type = REG_SZ,
                            .data = {bytes, bytes + (text.size() + 1) * sizeof(char16_t)}}));
}

class ActingProfileTest : public ::testing::Test {
 protected:
  ActingProfileTest() {
    std::array<char16_t, 300> above{};
    const DWORD size = GetTempPathW(static_cast<DWORD>(above.size()), roomIn(above));
    folder = utf8({above.data(), size}) + "Dora";
    CreateDirectoryW(Wide(folder).get(), nullptr);
    saveHive();
    setText(WideKey::make(HiveHandle::LocalMachine, utf16(profileList) + utf16(sid), KEY_SET_VALUE),
            u"ProfileImagePath", utf16(folder));
    calls = systemProfileCalls();
    calls.unload = [](const std::string& key) {
      keepChanges(key);
      return systemProfileCalls().unload(key);
    };
    calls.loadPrivately = [this](const std::string& file, HKEY& root) {
      ++privateLoads;
      // Nothing tells that the last handle was closed.
      systemProfileCalls().unload(standIn);
      const LONG code = systemProfileCalls().load(standIn, file);
      return code != ERROR_SUCCESS
                 ? code
                 : RegOpenKeyExW(HKEY_USERS, Wide(standIn).get(), 0, KEY_ALL_ACCESS, &root);
    };
  }
  ~ActingProfileTest() override {
    systemProfileCalls().unload(standIn);
    systemProfileCalls().unload(ownKey);
    DeleteRegistryTree(HiveHandle::LocalMachine, profileList + std::string(sid));
    DeleteFileW(Wide(folder + "\\NTUSER.DAT").get());
    RemoveDirectoryW(Wide(folder).get());
  }

  // Windows writes to the file what was changed, Wine does not.
  static void keepChanges(const std::string& name) {
    const std::string file = listed().folder + "\\NTUSER.DAT";
    HKEY key = nullptr;
    if (name == ownKey &&
        RegOpenKeyExW(HKEY_USERS, Wide(name).get(), 0, KEY_ALL_ACCESS, &key) == ERROR_SUCCESS) {
      DeleteFileW(Wide(file).get());
      const RestorePrivileges privileges;
      EXPECT_EQ(RegSaveKeyW(key, Wide(file).get(), nullptr), 0);
      RegCloseKey(key);
    }
  }

  // A hive with a dead startup program.
  void saveHive() const {
    const std::u16string made = u"Software\\MadeForAHive";
    setText(WideKey::make(HiveHandle::CurrentUser, made + u"\\" + run, KEY_SET_VALUE), u"Gone",
            u"C:\\gone.exe");
    setText(WideKey::make(HiveHandle::CurrentUser, made + u"\\Environment", KEY_SET_VALUE), u"OWN",
            u"Dora's");
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, wideText(made), 0, KEY_ALL_ACCESS, &key), 0);
    const RestorePrivileges privileges;
    EXPECT_EQ(RegSaveKeyW(key, Wide(folder + "\\NTUSER.DAT").get(), nullptr), 0);
    RegCloseKey(key);
    DeleteRegistryTree(HiveHandle::CurrentUser, utf8(made));
  }

  [[nodiscard]] static ListedProfile listed() {
    const auto profiles = listedProfiles();
    const auto found = std::ranges::find_if(
        profiles, [](const ListedProfile& profile) { return profile.user.sid == sid; });
    return found == profiles.end() ? ListedProfile() : *found;
  }

  // Whether the hive in the file has the dead startup program.
  [[nodiscard]] bool isGoneInFile() const {
    systemProfileCalls().unload(standIn);
    EXPECT_EQ(calls.load(standIn, folder + "\\NTUSER.DAT"), 0);
    const bool isGone =
        !valueAt(HiveHandle::Users, utf16(standIn) + u"\\" + run, u"Gone").has_value();
    EXPECT_EQ(calls.unload(standIn), 0);
    return isGone;
  }

  int runCommand(const std::vector<const char*>& arguments) {
    out.str("");
    error.str("");
    const auto parsed = parseCommandLine(static_cast<int>(arguments.size()), arguments.data());
    const auto computer = openRunningComputer(Access::Alone, calls);
    return console::runCommand(parsed.options, *computer, {.out = out, .error = error});
  }

  // How many dead startup programs a scan finds of the one who is not signed in.
  int deadOfProfile() {
    runCommand({"zelvreg", "--user", "all", "scan", "--only", "startup", "--json"});
    const auto findings = fixture::parsedJson(out.str())["findings"];
    return static_cast<int>(std::ranges::count_if(findings, [](const auto& finding) {
      return finding["user"] == "Dora" && finding["sid"] == sid && finding["badValue"] == "Gone";
    }));
  }

  std::string folder;
  ProfileCalls calls;
  int privateLoads = 0;
  std::ostringstream out;
  std::ostringstream error;
};

TEST_F(ActingProfileTest, ProfilesComeFromTheListAndTheOwnFirst) {
  const auto profiles = listedProfiles();
  EXPECT_EQ(profiles.front().user.sid, currentUserSid());
  EXPECT_EQ(listed().user.name, "Dora");
  EXPECT_EQ(listed().user.key, ownKey);
  DeleteFileW(Wide(folder + "\\NTUSER.DAT").get());
  EXPECT_EQ(listed().user.sid, "");
}

TEST_F(ActingProfileTest, AScanSeesACopy) {
  const std::string own = currentUserSid();
  const std::string profile = environmentVariable("USERPROFILE");
  {
    const ActingProfile acting(listed(), UserWork::Scan, calls);
    EXPECT_EQ(privateLoads, 1);
    EXPECT_TRUE(valueAt(HiveHandle::CurrentUser, run, u"Gone").has_value());
    EXPECT_EQ(currentUserSid(), sid);
    EXPECT_EQ(environmentVariable("USERPROFILE"), folder);
    EXPECT_EQ(environmentVariable("OWN"), "Dora's");
    EXPECT_FALSE(isLoaded(ownKey));
    // Nobody is kept from the file itself.
    EXPECT_NE(MoveFileW(Wide(folder + "\\NTUSER.DAT").get(), Wide(folder + "\\moved").get()), 0);
    EXPECT_NE(MoveFileW(Wide(folder + "\\moved").get(), Wide(folder + "\\NTUSER.DAT").get()), 0);
  }
  EXPECT_FALSE(valueAt(HiveHandle::CurrentUser, run, u"Gone").has_value());
  EXPECT_EQ(currentUserSid(), own);
  EXPECT_EQ(environmentVariable("USERPROFILE"), profile);
  EXPECT_EQ(environmentVariable("OWN"), "");
}

TEST_F(ActingProfileTest, ARepairLoadsTheHiveItselfAndUnloadsItWhateverHappens) {
  try {
    const ActingProfile acting(listed(), UserWork::Repair, calls);
    EXPECT_TRUE(isLoaded(ownKey));
    // Such a call leaves its key open.
    fDeleteValue("HKCU", utf8(run), "Gone");
    throw std::runtime_error("stopped");
  } catch (const std::runtime_error& stopped) {
    EXPECT_EQ(std::string(stopped.what()), "stopped");
  }
  EXPECT_FALSE(isLoaded(ownKey));
  EXPECT_TRUE(isGoneInFile());
}

TEST_F(ActingProfileTest, AProfileThatIsInUseIsNamedAndNothingIsLeftLoaded) {
  for (const UserWork work : {UserWork::Scan, UserWork::Repair}) {
    calls.loadPrivately = [](const std::string& /*file*/, HKEY& /*root*/) {
      return LONG{ERROR_SHARING_VIOLATION};
    };
    calls.load = [](const std::string& /*key*/, const std::string& /*file*/) {
      return LONG{ERROR_SHARING_VIOLATION};
    };
    std::string said;
    try {
      const ActingProfile acting(listed(), work, calls);
    } catch (const std::runtime_error& refusal) {
      said = refusal.what();
    }
    EXPECT_NE(said.find("Dora, " + folder + ", is in use"), std::string::npos) << said;
    EXPECT_FALSE(isLoaded(ownKey));
    EXPECT_NE(currentUserSid(), sid);
  }
  EXPECT_EQ(runCommand({"zelvreg", "--user", "all", "scan", "--only", "startup"}), failed);
  EXPECT_NE(error.str().find("is in use"), std::string::npos) << error.str();
}

TEST_F(ActingProfileTest, WhatAStoppedProcessHasLeftIsUnloaded) {
  ASSERT_EQ(calls.load(ownKey, folder + "\\NTUSER.DAT"), 0);
  ASSERT_TRUE(isLoaded(ownKey));
  openRunningComputer(Access::Alone, calls);
  EXPECT_FALSE(isLoaded(ownKey));
}

TEST_F(ActingProfileTest, FromTheCommandLineItIsScannedRepairedAndUndone) {
  ASSERT_EQ(deadOfProfile(), 1) << out.str() << error.str();
  EXPECT_EQ(runCommand({"zelvreg", "undo", "on"}), nothingFound);
  EXPECT_EQ(runCommand({"zelvreg", "--user", "all", "fix", "--only", "startup", "--yes", "--all"}),
            nothingFound)
      << error.str();
  EXPECT_TRUE(isGoneInFile());
  EXPECT_EQ(deadOfProfile(), 0);
  EXPECT_EQ(runCommand({"zelvreg", "undo", "list"}), nothingFound);
  EXPECT_NE(out.str().find("Dora"), std::string::npos) << out.str();
  for (int entry = 1; entry < 9 && isGoneInFile(); ++entry) {
    const std::string number = std::to_string(entry);
    runCommand({"zelvreg", "undo", "restore", number.c_str(), "--yes"});
  }
  EXPECT_FALSE(isGoneInFile()) << error.str();
  EXPECT_EQ(runCommand({"zelvreg", "undo", "off"}), nothingFound);
}

}  // namespace
}  // namespace zelvreg::console
