// Which profiles a running Windows has; nothing of them is opened.
#include "console/ProfileList.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "console/ProfileOfDora.h"
#include "keys/AccountSids.h"
#include "roots/UserKeys.h"

namespace zelvreg::console {
namespace {

class ProfileListTest : public ProfileOfDora {
 protected:
  static constexpr const char* newSid = "S-1-5-21-7-7-7-1006";

  ProfileListTest() {
    above = folder + "s";
    CreateDirectoryW(Wide(above).get(), nullptr);
    before = valueAt(HiveHandle::LocalMachine, profileListKey, u"ProfilesDirectory");
    setText(HiveHandle::LocalMachine, profileListKey, u"ProfilesDirectory", utf16(above));
  }
  ~ProfileListTest() override {
    const WideKey key(HiveHandle::LocalMachine, profileListKey, KEY_SET_VALUE);
    EXPECT_TRUE(before ? key.setValue(*before) : key.deleteValue(u"ProfilesDirectory"));
    for (const std::string& entry : entries) {
      DeleteRegistryTree(HiveHandle::LocalMachine, profileList + entry);
    }
    for (const std::string& file : made) {
      DeleteFileW(Wide(file).get());
      RemoveDirectoryW(Wide(file.substr(0, file.find_last_of('\\'))).get());
    }
    RemoveDirectoryW(Wide(above).get());
  }

  void enter(const std::string& identifier, const std::string& path) {
    entries.push_back(identifier);
    list(identifier, path);
  }

  std::string makeProfile(const std::string& name, const std::string& hive = "NTUSER.DAT") {
    const std::string at = above + "\\" + name;
    CreateDirectoryW(Wide(at).get(), nullptr);
    made.push_back(at + "\\" + hive);
    CloseHandle(CreateFileW(Wide(made.back()).get(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                            FILE_ATTRIBUTE_HIDDEN, nullptr));
    return at;
  }

  void setState(const std::string& identifier, DWORD state) {
    const auto* bytes = reinterpret_cast<const BYTE*>(&state);
    EXPECT_TRUE(
        WideKey(HiveHandle::LocalMachine, utf16(profileList + identifier), KEY_SET_VALUE)
            .setValue(
                {.name = u"State", .type = REG_DWORD, .data = {bytes, bytes + sizeof state}}));
  }

  // The identifier of the profile of this name; empty if it is not listed.
  static std::string sidOf(const std::string& name) {
    const auto profiles = listProfiles().profiles;
    const auto found = std::ranges::find_if(
        profiles, [&](const ListedProfile& profile) { return profile.user.name == name; });
    return found == profiles.end() ? "" : found->user.sid;
  }

  // Whether a line says so of the profile.
  static bool isToldOf(const std::string& name, const std::string& why) {
    return std::ranges::any_of(listProfiles().leftOut, [&](const std::string& line) {
      return line.starts_with("the profile of " + name) &&
             line.ends_with(", " + why + ", and was left out");
    });
  }

  std::string above;
  std::optional<WideValue> before;
  std::vector<std::string> entries;
  std::vector<std::string> made;
};

TEST_F(ProfileListTest, TheOwnIsFirst) {
  const auto profiles = listProfiles().profiles;
  EXPECT_EQ(profiles.front().user.sid, currentUserSid());
  EXPECT_EQ(listed().user.name, "Dora");
  EXPECT_EQ(listed().user.key, ownKey);
}

TEST_F(ProfileListTest, AHiveThatIsNotThereIsNamed) {
  DeleteFileW(Wide(folder + "\\NTUSER.DAT").get());
  EXPECT_EQ(listed().user.sid, "");
  EXPECT_TRUE(isToldOf("Dora", "has no hive (NTUSER.DAT)"));
}

TEST_F(ProfileListTest, AccountsOfAllKindsAreListed) {
  int number = 0;
  for (const char* identifier : {"S-1-12-1-3-3-3-3", "S-1-5-82-1-2-3-4-5", "S-1-5-80-1-2-3-4-5"}) {
    const std::string name = "Kind" + std::to_string(++number);
    enter(identifier, makeProfile(name));
    EXPECT_EQ(sidOf(name), identifier);
  }
}

TEST_F(ProfileListTest, MandatoryAndTemporaryOnesAreNamed) {
  enter(newSid, makeProfile("Mandated", "NTUSER.MAN"));
  EXPECT_TRUE(
      isToldOf("Mandated", "is a mandatory one, which does not keep what is changed in it"));
  enter("S-1-5-21-7-7-7-1007", makeProfile("Temporary"));
  setState("S-1-5-21-7-7-7-1007", 0x804);
  EXPECT_TRUE(isToldOf("Temporary", "is a temporary one, which Windows deletes"));
  EXPECT_EQ(sidOf("Mandated") + sidOf("Temporary"), "");
}

TEST_F(ProfileListTest, OfTwoWithOneFolderTheSecondIsNamed) {
  enter(newSid, folder + "\\");
  EXPECT_EQ(listed().user.sid, sid);
  EXPECT_TRUE(isToldOf("Dora", "has the folder of another one"));
}

TEST_F(ProfileListTest, WhatIsOnNoDriveIsNamedAndNotLookedAt) {
  enter(newSid, "\\\\server\\share\\Erna");
  EXPECT_TRUE(isToldOf("Erna", "is on no drive of this computer"));
  EXPECT_EQ(sidOf("Erna"), "");
}

TEST_F(ProfileListTest, FoldersThatTheListDoesNotNameHaveInventedIdentifiers) {
  makeProfile("Default");
  const std::string aside = makeProfile("Aside");
  enter(std::string(newSid) + ".bak", aside);
  EXPECT_EQ(sidOf("Default"), inventedSid(u"DEFAULT", {}));
  EXPECT_EQ(sidOf("Aside"), inventedSid(u"ASIDE", {}));
}

TEST_F(ProfileListTest, LinesAreToldWithAllUsersAlone) {
  enter(newSid, "\\\\server\\share\\Erna");
  runCommand({"zelvreg", "scan", "--only", "fonts"});
  EXPECT_EQ(error.str().find("Erna"), std::string::npos) << error.str();
  runCommand({"zelvreg", "--user", "all", "scan", "--only", "fonts"});
  EXPECT_NE(error.str().find("Erna"), std::string::npos) << error.str();
}

}  // namespace
}  // namespace zelvreg::console
