// Profiles of all kinds on a disk; the Windows program takes no disk.
#include <gtest/gtest.h>

#include <filesystem>

#include "console/SeveralUsers.h"

namespace zelvreg::console {
namespace {

class ProfileKindsTest : public SeveralUsersTest {
 protected:
  static constexpr const char* newSid = "S-1-5-21-7-7-7-1009";

  // Enters a profile in the list of profiles.
  void list(const std::string& sid, const std::string& folder) {
    more(software).text(listed(sid), "ProfileImagePath", folder, 2);
  }
  void setState(const std::string& sid, std::uint32_t state) {
    more(software).number(listed(sid), "State", state);
  }
  static std::string listed(const std::string& sid) {
    return R"(Microsoft\Windows NT\CurrentVersion\ProfileList\)" + sid;
  }

  // Makes a profile with a dead startup program.
  void makeProfile(const std::string& folder) {
    hive(folder + "/NTUSER.DAT").text(run, "Gone", R"(C:\gone.exe)");
  }

  // The identifiers of those of this name in whose keys something is found.
  std::multiset<std::string> sidsOf(const std::string& name) {
    const auto object = result({"scan", "--user", "all", "--only", "startup", "--json"});
    std::multiset<std::string> sids;
    for (const auto& finding : object["findings"]) {
      if (finding["user"] == name && finding["badValue"] == "Gone") {
        sids.insert(finding["sid"].get<std::string>());
      }
    }
    return sids;
  }

  [[nodiscard]] bool isTold(const std::string& line) const {
    return error.str().find(line + ", and was left out\n") != std::string::npos;
  }
};

using Sids = std::multiset<std::string>;

TEST_F(ProfileKindsTest, AccountsOfAllKindsAreScanned) {
  int number = 0;
  for (const char* sid :
       {"S-1-12-1-3-3-3-3", "S-1-5-82-1-2-3-4-5", "S-1-5-80-1-2-3-4-5", "S-1-5-83-1-2-3-4-5"}) {
    const std::string name = "Kind" + std::to_string(++number);
    makeProfile("Users/" + name);
    list(sid, R"(%SystemDrive%\Users\)" + name);
    EXPECT_EQ(sidsOf(name), Sids{sid});
  }
}

// Else a pool of a web server would be the one whom a scan of one user is for.
TEST_F(ProfileKindsTest, AServicesAccountIsNoPerson) {
  makeProfile("Users/DefaultAppPool");
  list("S-1-5-82-1-2-3-4-5", R"(C:\Users\DefaultAppPool)");
  std::filesystem::last_write_time(
      disk.path() / "Users/DefaultAppPool/NTUSER.DAT",
      std::filesystem::file_time_type::clock::now() + std::chrono::hours(1));
  onDisk({"scan", "--only", "startup", "--json"});
  EXPECT_NE(out.str().find("\"Own\""), std::string::npos) << out.str();
}

TEST_F(ProfileKindsTest, MandatoryAndTemporaryOnesAreNamed) {
  makeProfile("Users/TEMP");
  list(newSid, R"(C:\Users\TEMP)");
  setState(newSid, 0x804);
  EXPECT_EQ(sidsOf("TEMP"), Sids{});
  EXPECT_TRUE(
      isTold("the profile of TEMP, C:\\Users\\TEMP, is a temporary one, which Windows "
             "deletes"))
      << error.str();
  setState(newSid, 0x1);
  EXPECT_EQ(sidsOf("TEMP"), Sids{});
  EXPECT_TRUE(isTold("is a mandatory one, which does not keep what is changed in it"));
}

TEST_F(ProfileKindsTest, WhatIsThereInNameOnlyIsNamedAndIsNoFailure) {
  list(newSid, R"(%SystemDrive%\Users\Moved away)");
  list("S-1-5-21-7-7-7-1010", R"(\\server\share\Erna)");
  EXPECT_EQ(onDisk({"scan", "--user", "all", "--only", "startup"}), problemsFound);
  EXPECT_TRUE(
      isTold("the profile of Moved away, C:\\Users\\Moved away, has no hive "
             "(NTUSER.DAT)"))
      << error.str();
  EXPECT_TRUE(isTold("is on no drive of this computer")) << error.str();
  // Only who asks for all is told.
  onDisk({"scan", "--only", "startup"});
  EXPECT_EQ(error.str().find("left out"), std::string::npos) << error.str();
  onDisk({"undo", "list"});
  EXPECT_EQ(error.str().find("left out"), std::string::npos) << error.str();
}

// Else the hive would be read twice, and the second repair would undo the first.
TEST_F(ProfileKindsTest, OfTwoWithOneFolderTheSecondIsNamed) {
  list(newSid, "C:\\Users\\Bert\\");
  EXPECT_EQ(sidsOf("Bert"), Sids{bertSid});
  EXPECT_TRUE(isTold("the profile of Bert, C:\\Users\\Bert, has the folder of another one"))
      << error.str();
}

TEST_F(ProfileKindsTest, AFolderOfTheSameNameElsewhereIsSomebodyElses) {
  const fixture::TemporaryFolder other;
  std::filesystem::create_directories(other.path() / "Profiles/Carl");
  {
    fixture::HiveBuilder carls(other.path() / "Profiles/Carl/NTUSER.DAT");
    carls.text(run, "Gone", R"(C:\gone.exe)");
  }
  makeProfile("Users/Carl");
  // By name, the first would be taken for the folder of the second.
  list("S-1-5-21-7-7-7-1003", R"(D:\Profiles\Carl)");
  list(newSid, R"(C:\Users\Carl)");
  const auto object = result({"scan", "--user", "all", "--only", "startup", "--json", "--drive",
                              "D=" + other.path().string()});
  EXPECT_EQ(foundIn(object).count({"Carl", newSid, "144", "Gone"}), 1U) << object;
  EXPECT_EQ(foundIn(object).count({"Carl", "S-1-5-21-7-7-7-1003", "144", "Gone"}), 1U) << object;
  EXPECT_EQ(onDisk({"fix", "--user", "all", "--only", "startup", "--yes", "--kinds", "144",
                    "--drive", "D=" + other.path().string()}),
            nothingFound)
      << error.str();
  EXPECT_FALSE(content("Users/Carl/NTUSER.DAT").contains(std::string("\\") + run + "|Gone"));
  EXPECT_FALSE(fixture::contentOf(other.path() / "Profiles/Carl/NTUSER.DAT")
                   .contains(std::string("\\") + run + "|Gone"));
}

TEST_F(ProfileKindsTest, OneThatIsPutAsideIsScannedByItsFolder) {
  makeProfile("Users/Aside");
  list(std::string(newSid) + ".bak", R"(C:\Users\Aside)");
  const Sids sids = sidsOf("Aside");
  ASSERT_EQ(sids.size(), 1U);
  EXPECT_TRUE(sids.begin()->starts_with("S-1-5-21-1-1-1-")) << *sids.begin();
}

}  // namespace
}  // namespace zelvreg::console
