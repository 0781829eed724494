// Wine makes the list of a file up from its mode and gives all files to the user.
#include <gtest/gtest.h>

#include "machine/Machine.h"
#include "machine/files/Drives.h"
#include "machine/files/FileRecords.h"
#include "machine/security/Security.h"
#include "runtime/FileText.h"
#include "runtime/PrivateFiles.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

const std::string folder = "C:\\PrivateFilesTest";
const std::string file = folder + "\\a.reg";
const std::string privateList = "O:BAD:P(A;;FA;;;BA)(A;;FA;;;SY)";
const std::string privateFolderList = "O:BAD:P(A;OICI;FA;;;BA)(A;OICI;FA;;;SY)";

class PrivateFilesListsTest : public fixture::ComputerFixture {
 protected:
  PrivateFilesListsTest() { makeFolder(folder); }

  static machine::FileRecords& records() { return machine::Machine::current()->drives().records(); }
  static void setSecurity(const std::string& path, const std::string& sddl) {
    records().setSecurity(path, machine::parseSddl(sddl));
  }
  static std::string securityOf(const std::string& path) {
    return machine::formatSddl(records().security(path));
  }
};

TEST_F(PrivateFilesListsTest, AdministratorsOwnThemWhoeverMadeThem) {
  makePrivateFolder(folder + "\\below");
  const std::string below = folder + "\\below\\a.reg";
  ASSERT_TRUE(replaceFileText(below, "x", FileReaders::Administrators));
  EXPECT_EQ(securityOf(folder + "\\below"), privateFolderList);
  EXPECT_EQ(securityOf(below), privateList);
}

TEST_F(PrivateFilesListsTest, AFolderThatOthersOwnIsTakenOver) {
  setSecurity(folder, "O:BUD:(A;OICI;FA;;;BA)(A;OICI;FA;;;SY)");
  ASSERT_TRUE(replaceFileText(file, "x", FileReaders::Administrators));
  EXPECT_TRUE(couldOthersWrite(file));
  makePrivateFolder(folder);
  EXPECT_FALSE(couldOthersWrite(file));
  EXPECT_EQ(securityOf(folder), privateFolderList);
}

TEST_F(PrivateFilesListsTest, AFolderThatCannotBeGivenToAnotherIsClosedAllTheSame) {
  setSecurity(folder, "O:BAD:(A;OICI;0x171fff;;;BA)(A;OICI;0x301ff;;;BU)");
  makePrivateFolder(folder);
  EXPECT_EQ(securityOf(folder), privateFolderList);
}

TEST_F(PrivateFilesListsTest, AReplacedFileKeepsItsListAndAPrivateOneIsClosed) {
  for (const char* list : {"D:P(A;;FA;;;BA)(A;;FR;;;BU)", "D:AI(A;;FR;;;WD)(A;ID;FA;;;BA)"}) {
    makeFile(file, "old");
    setSecurity(file, list);
    ASSERT_TRUE(replaceFileText(file, "new"));
    EXPECT_EQ(readFileText(file), "new");
    EXPECT_EQ(securityOf(file), list);
    ASSERT_TRUE(replaceFileText(file, "newer", FileReaders::Administrators));
    EXPECT_EQ(readFileText(file), "newer");
    EXPECT_EQ(securityOf(file), privateList);
  }
}

TEST_F(PrivateFilesListsTest, AFileWhoseListCannotBeKeptIsNotReplaced) {
  makeFile(file, "old");
  setSecurity(file, "O:BAD:P(A;;FR;;;BU)(A;;SD;;;BA)");
  auto& faults = machine::Machine::current()->faults();
  for (const auto call : {machine::ApiCall::GetFileSecurity, machine::ApiCall::SetFileSecurity}) {
    faults.failFrom(call, 1, ERROR_ACCESS_DENIED);
    EXPECT_FALSE(replaceFileText(file, "new"));
    faults.clear();
    EXPECT_EQ(readFileText(file), "old");
  }
}

}  // namespace
}  // namespace zelvreg
