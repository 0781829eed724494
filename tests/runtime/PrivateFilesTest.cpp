#include "runtime/PrivateFiles.h"

#include "runtime/FileText.h"
#include "support/ComputerFixture.h"
#include "text/Wide.h"
// This one stands on windows.h.
#include <sddl.h>

namespace zelvreg {
namespace {

// Each test has a folder of its own.
class PrivateFilesTest : public fixture::ComputerFixture {
 protected:
  PrivateFilesTest()
      : folder(std::string("C:\\") +
               ::testing::UnitTest::GetInstance()->current_test_info()->name()),
        file(folder + "\\a.reg") {}

  static void setAccess(const std::string& path, const char* sddl) {
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    ASSERT_NE(ConvertStringSecurityDescriptorToSecurityDescriptorW(
                  Wide(sddl).get(), SDDL_REVISION_1, &descriptor, nullptr),
              FALSE);
    EXPECT_NE(SetFileSecurityW(Wide(path).get(), DACL_SECURITY_INFORMATION, descriptor), FALSE);
    LocalFree(descriptor);
  }

  const std::string folder;
  const std::string file;
};

TEST_F(PrivateFilesTest, APrivateFileIsTrusted) {
  makePrivateFolder(folder);
  ASSERT_TRUE(replaceFileText(file, "x", FileReaders::Administrators));
  // The user is asked for anew each time.
  for (int turn = 1; turn <= 3; ++turn) {
    EXPECT_FALSE(couldOthersWrite(file));
  }
}

TEST_F(PrivateFilesTest, AnOpenFolderIsClosed) {
  makeFolder(folder);
  setAccess(folder, "D:(A;OICI;FA;;;BA)(A;OICI;FA;;;SY)(A;OICI;FA;;;WD)");
  ASSERT_TRUE(replaceFileText(file, "x", FileReaders::Administrators));
  EXPECT_TRUE(couldOthersWrite(file));
  makePrivateFolder(folder);
  EXPECT_FALSE(couldOthersWrite(file));
}

TEST_F(PrivateFilesTest, AReplacedFileIsAsClosedAsItWas) {
  makeFile(file, "old");
  setAccess(file, "D:P(A;;FA;;;BA)(A;;FA;;;SY)");
  const auto before = accessOfFile(file);
  ASSERT_TRUE(replaceFileText(file, "new"));
  EXPECT_EQ(readFileText(file), "new");
  EXPECT_EQ(accessOfFile(file), before);
}

TEST_F(PrivateFilesTest, WhatCannotBeToldIsNotTrusted) { EXPECT_TRUE(couldOthersWrite(file)); }

}  // namespace
}  // namespace zelvreg
