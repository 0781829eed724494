// Users who are not signed in. Only on Windows are hives loaded; Wine loads those that it has saved
// itself.
#include "console/ActingProfile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

#include "console/ProfileOfDora.h"
#include "keys/AccountSids.h"
#include "keys/Deletion.h"
#include "registry/RegistryValues.h"
#include "runtime/Environment.h"
#include "runtime/PrivateFiles.h"

namespace zelvreg::console {
namespace {

class ActingProfileTest : public ProfileOfDora {};

TEST_F(ActingProfileTest, AScanSeesACopy) {
  const std::string own = currentUserSid();
  {
    const ActingProfile acting(listed(), UserWork::Scan, hives);
    EXPECT_TRUE(valueAt(HiveHandle::CurrentUser, run, u"Gone").has_value());
    EXPECT_EQ(currentUserSid(), sid);
    EXPECT_EQ(currentUsersKey(), ownKey);
    // Nobody is kept from the file itself.
    EXPECT_NE(MoveFileW(Wide(folder + "\\NTUSER.DAT").get(), Wide(folder + "\\moved").get()), 0);
    EXPECT_NE(MoveFileW(Wide(folder + "\\moved").get(), Wide(folder + "\\NTUSER.DAT").get()), 0);
    fDeleteValue("HKCU", utf8(run), "Gone");
  }
  EXPECT_FALSE(valueAt(HiveHandle::CurrentUser, run, u"Gone").has_value());
  EXPECT_FALSE(isLoaded(ownKey));
  EXPECT_FALSE(isLoaded(ownClasses));
  EXPECT_EQ(currentUserSid(), own);
  EXPECT_FALSE(isGoneInFile());
}

TEST_F(ActingProfileTest, TheCopyIsPrivateAndGoesWithTheScan) {
  const std::string copy = copiesFolder() + "\\" + ownKey + ".dat";
  {
    const ActingProfile acting(listed(), UserWork::Scan, hives);
    EXPECT_TRUE(isFileThere(copy));
    EXPECT_FALSE(couldOthersWrite(copy));
  }
  EXPECT_FALSE(isFileThere(copiesFolder()));
}

TEST_F(ActingProfileTest, ARepairLoadsTheHiveItselfAndUnloadsItWhateverHappens) {
  try {
    const ActingProfile acting(listed(), UserWork::Repair, hives);
    EXPECT_TRUE(isLoaded(ownKey));
    EXPECT_FALSE(isFileThere(copiesFolder()));
    // Such a call leaves its key open.
    fDeleteValue("HKCU", utf8(run), "Gone");
    throw std::runtime_error("stopped");
  } catch (const std::runtime_error& stopped) {
    EXPECT_EQ(std::string(stopped.what()), "stopped");
  }
  EXPECT_FALSE(isLoaded(ownKey));
  EXPECT_TRUE(isGoneInFile());
}

TEST_F(ActingProfileTest, ClassesAreTheUsersAndTheComputers) {
  const std::string users = std::string("CLSID\\") + server;
  const std::string computers = std::string("CLSID\\") + otherServer;
  for (const UserWork work : {UserWork::Scan, UserWork::Repair}) {
    const ActingProfile acting(listed(), work, hives);
    EXPECT_TRUE(RegKeyExists(HiveHandle::ClassesRoot, users));
    EXPECT_TRUE(RegKeyExists(HiveHandle::ClassesRoot, computers));
    const auto names =
        WideKey(HiveHandle::ClassesRoot, u"CLSID", KEY_ENUMERATE_SUB_KEYS).subkeys().value();
    for (const char* name : {server, otherServer}) {
      EXPECT_EQ(std::ranges::count(names, utf16(name)), 1) << name;
    }
    // What is the computer's cannot be deleted for a user.
    DeleteRegistryTree(HiveHandle::ClassesRoot, computers);
    EXPECT_TRUE(RegKeyExists(HiveHandle::ClassesRoot, computers));
    EXPECT_TRUE(isThere(HiveHandle::CurrentUser, u"Software\\Classes\\" + utf16(users)));
  }
  EXPECT_FALSE(RegKeyExists(HiveHandle::ClassesRoot, users));
}

TEST_F(ActingProfileTest, NobodySeesTheVariablesOfWhoRunsTheProgram) {
  SetEnvironmentVariableW(L"ADMINS", L"C:\\admins");
  const std::string profile = environmentVariable("USERPROFILE");
  const std::string account = environmentVariable("USERNAME");
  {
    const ActingProfile acting(listed(), UserWork::Scan, hives);
    EXPECT_EQ(environmentVariable("ADMINS"), "");
    EXPECT_EQ(environmentVariable("USERPROFILE"), folder);
    EXPECT_EQ(environmentVariable("OWN"), "Dora's");
    EXPECT_EQ(environmentVariable("APPDATA"), "D:\\moved");
    EXPECT_EQ(environmentVariable("LOCALAPPDATA"), folder + "\\AppData\\Local");
    EXPECT_NE(environmentVariable("SystemRoot"), "");
    EXPECT_TRUE(environmentVariable("Path").ends_with(";C:\\doras")) << environmentVariable("Path");
    EXPECT_EQ(environmentVariable("USERNAME"), "Dora");
    // Rights are for whoever repairs.
    EXPECT_EQ(processAccount(), account);
  }
  EXPECT_EQ(environmentVariable("ADMINS"), "C:\\admins");
  EXPECT_EQ(environmentVariable("USERPROFILE"), profile);
  EXPECT_EQ(environmentVariable("OWN"), "");
  SetEnvironmentVariableW(L"ADMINS", nullptr);
}

TEST_F(ActingProfileTest, AProfileThatIsInUseIsNamedAndNothingIsLeftLoaded) {
  hives = LoadedHives(
      {.load = [](const std::string& /*key*/,
                  const std::string& /*file*/) { return LONG{ERROR_SHARING_VIOLATION}; },
       .unload = calls.unload});
  for (const UserWork work : {UserWork::Scan, UserWork::Repair}) {
    std::string said;
    try {
      const ActingProfile acting(listed(), work, hives);
    } catch (const std::runtime_error& refusal) {
      said = refusal.what();
    }
    EXPECT_EQ(said,
              "the profile of Dora, " + folder + ", was left out: it is in use by another program");
    EXPECT_FALSE(isLoaded(ownKey));
    EXPECT_NE(currentUserSid(), sid);
    EXPECT_FALSE(isFileThere(copiesFolder()));
  }
  calls.load = [](const std::string& /*key*/, const std::string& /*file*/) {
    return LONG{ERROR_SHARING_VIOLATION};
  };
  EXPECT_EQ(runCommand({"zelvreg", "--user", "all", "scan", "--only", "startup"}), failed);
  EXPECT_NE(error.str().find("is in use"), std::string::npos) << error.str();
}

TEST_F(ActingProfileTest, WhoHasSignedInMeanwhileIsLeftAlone) {
  const ListedProfile before = listed();
  ASSERT_EQ(systemProfileCalls().load(sid, folder + "\\NTUSER.DAT"), 0);
  EXPECT_THROW(ActingProfile(before, UserWork::Repair, hives), std::runtime_error);
  EXPECT_EQ(listed().user.key, sid);
  EXPECT_EQ(systemProfileCalls().unload(sid), 0);
}

TEST_F(ActingProfileTest, WhatCannotBeUnloadedIsTriedAgainAndThenTold) {
  int refusals = 3;
  calls.unload = [this, &refusals, unload = calls.unload](const std::string& key) {
    return key == ownKey && refusals-- > 0 ? LONG{ERROR_ACCESS_DENIED} : unload(key);
  };
  // Once after the scan, at the end, and by the next start.
  EXPECT_THROW(runCommand({"zelvreg", "--user", "all", "scan", "--only", "startup"}),
               std::runtime_error);
  EXPECT_TRUE(isLoaded(ownKey));
  EXPECT_NE(closing.find("the profile of Dora, " + folder), std::string::npos) << closing;
  EXPECT_NE(closing.find(std::string("HKEY_USERS\\") + ownKey), std::string::npos) << closing;
  refusals = 1;
  EXPECT_EQ(runCommand({"zelvreg", "--user", "all", "scan", "--only", "startup"}), failed);
  EXPECT_NE(error.str().find("is still loaded at"), std::string::npos) << error.str();
  EXPECT_EQ(runCommand({"zelvreg", "--user", "all", "scan", "--only", "startup"}), problemsFound);
  EXPECT_FALSE(isLoaded(ownKey));
}

TEST_F(ActingProfileTest, WhatAStoppedProcessHasLeftIsRemoved) {
  ASSERT_EQ(calls.load(ownKey, folder + "\\NTUSER.DAT"), 0);
  ASSERT_TRUE(isLoaded(ownKey));
  makePrivateFolder(copiesFolder());
  ASSERT_NE(CopyFileW(Wide(folder + "\\NTUSER.DAT").get(),
                      Wide(copiesFolder() + "\\NTUSER.DAT").get(), TRUE),
            0);
  openRunningComputer({}, Access::Alone, calls);
  EXPECT_FALSE(isLoaded(ownKey));
  EXPECT_FALSE(isFileThere(copiesFolder()));
}

TEST_F(ActingProfileTest, FromTheCommandLineItIsScannedRepairedAndUndone) {
  ASSERT_EQ(deadOfProfile(), 2) << out.str() << error.str();
  EXPECT_EQ(runCommand({"zelvreg", "undo", "on"}), nothingFound);
  EXPECT_EQ(runCommand({"zelvreg", "--user", "all", "fix", "--only", "startup,com-classes", "--yes",
                        "--all"}),
            nothingFound)
      << error.str();
  EXPECT_TRUE(isGoneInFile());
  EXPECT_TRUE(isThere(HiveHandle::LocalMachine,
                      u"Software\\Classes\\CLSID\\" + utf16(otherServer) + u"\\InprocServer32"));
  EXPECT_EQ(deadOfProfile(), 0) << out.str();
  EXPECT_EQ(runCommand({"zelvreg", "undo", "list"}), nothingFound);
  EXPECT_NE(out.str().find("Dora"), std::string::npos) << out.str();
  for (int entry = 1; entry < 9 && isGoneInFile(); ++entry) {
    const std::string number = std::to_string(entry);
    runCommand({"zelvreg", "undo", "restore", number.c_str(), "--yes"});
  }
  EXPECT_FALSE(isGoneInFile()) << error.str();
  EXPECT_EQ(deadOfProfile(), 2) << out.str() << error.str();
  EXPECT_EQ(runCommand({"zelvreg", "undo", "off"}), nothingFound);
}

}  // namespace
}  // namespace zelvreg::console
