// Only the emulated computer can be a 32-bit one, and shows the lists of files entry by entry.
#include "keys/AccountSids.h"
#include "scan/Resolver.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

class Resolver32Test : public fixture::Computer32Fixture {};

TEST_F(Resolver32Test, TheProcessRunsOnItsOwnKindOfSystem) { EXPECT_FALSE(runsOn64BitWindows()); }

TEST_F(Resolver32Test, OnlyTheVariablesOfAPathAreReplaced) {
  std::string path = "%ProgramFiles%\\A\\System32.exe";
  EXPECT_EQ(GetPath(form, path), std::string("C:\\Program Files\\A\\System32.exe") + '\0');
}

TEST_F(Resolver32Test, NothingOfTheSystemFolderIsEverGone) {
  std::string path = "C:\\Windows\\System32\\nothing.dll";
  EXPECT_TRUE(FileExists(form, GetPath(form, path)));
}

class Resolver64Test : public fixture::ComputerFixture {};

TEST_F(Resolver64Test, TheProcessRunsUnderEmulation) { EXPECT_TRUE(runsOn64BitWindows()); }

TEST_F(Resolver64Test, APathInTheRecycleBinIsOpenedToTheUserBeforeTheTest) {
  makeFile("C:\\$Recycle.Bin\\S-1\\a.txt");
  EXPECT_TRUE(FileExists(form, "C:\\$Recycle.Bin\\S-1\\a.txt"));
  EXPECT_EQ(accessOfFile("C:\\$Recycle.Bin\\S-1\\a.txt").back().sid, lookUpSid(userName()));
}

}  // namespace
}  // namespace zelvreg
