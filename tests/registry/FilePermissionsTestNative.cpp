// Wine keeps the lists of files as the permissions of the system below it, which merges entries, so
// only the emulated computer can show them one by one.
#include <windows.h>
// sddl needs windows.h before it.
#include <sddl.h>

#include "keys/AccountSids.h"
#include "machine/Machine.h"
#include "registry/setpermission.h"
#include "support/ComputerFixture.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

using fixture::AccessRecord;

class FileAccessTest : public fixture::ComputerFixture {
 protected:
  std::vector<AccessRecord> userEntries(const std::string& path) const {
    std::vector<AccessRecord> own;
    for (const AccessRecord& record : accessOfFile(path)) {
      if (record.sid == user) {
        own.push_back(record);
      }
    }
    return own;
  }

  std::vector<BYTE> user = lookUpSid(userName());
};

TEST_F(FileAccessTest, AFileGetsOneEntryBehindTheOthers) {
  makeFile("C:\\PermissionsTest\\plain.txt");
  const auto before = accessOfFile("C:\\PermissionsTest\\plain.txt");
  SetAccess(userName(), "C:\\PermissionsTest\\plain.txt", GENERIC_ALL);
  const auto after = accessOfFile("C:\\PermissionsTest\\plain.txt");
  ASSERT_EQ(after.size(), before.size() + 1);
  EXPECT_EQ(after.back(), (AccessRecord{0, 0, 0x1F01FF, user}));
}

TEST_F(FileAccessTest, AFolderGetsTwoEntriesOfWhichTheSecondIsForWhatLiesBelow) {
  makeFolder("C:\\PermissionsTest\\folder");
  SetAccess(userName(), "C:\\PermissionsTest\\folder", GENERIC_ALL);
  const auto own = userEntries("C:\\PermissionsTest\\folder");
  ASSERT_EQ(own.size(), 2U);
  EXPECT_EQ(own[0].flags, 9);
  EXPECT_EQ(own[1].flags, 2);
}

TEST_F(FileAccessTest, TheUsersOldEntriesAreReplaced) {
  makeFile("C:\\PermissionsTest\\again.txt");
  SetAccess(userName(), "C:\\PermissionsTest\\again.txt", GENERIC_READ);
  SetAccess(userName(), "C:\\PermissionsTest\\again.txt", GENERIC_ALL);
  EXPECT_EQ(userEntries("C:\\PermissionsTest\\again.txt").size(), 1U);
}

TEST_F(FileAccessTest, AListWithoutEntriesIsLeftAsItIs) {
  const std::string path = "C:\\PermissionsTest\\nobody.txt";
  makeFile(path);
  PSECURITY_DESCRIPTOR nobody = nullptr;
  ConvertStringSecurityDescriptorToSecurityDescriptorW(Wide("D:").get(), SDDL_REVISION_1, &nobody,
                                                       nullptr);
  ASSERT_NE(SetFileSecurityW(Wide(path).get(), DACL_SECURITY_INFORMATION, nobody), FALSE);
  LocalFree(nobody);
  ASSERT_EQ(accessOfFile(path).size(), 0U);
  machine::FaultPlan& faults = machine::Machine::current()->faults();
  faults.clear();
  SetAccess(userName(), path, GENERIC_ALL);
  EXPECT_GT(faults.calls(machine::ApiCall::GetFileSecurity), 0U);
  EXPECT_EQ(faults.calls(machine::ApiCall::SetFileSecurity), 0U);
}

TEST_F(FileAccessTest, APathInTheRecycleBinIsOpenedToTheUser) {
  makeFile("C:\\$Recycle.Bin\\S-1\\a.txt");
  std::string path = " C:\\$RECYCLE.BIN\\S-1\\a.txt ";
  changepermission(path);
  EXPECT_EQ(userEntries("C:\\$Recycle.Bin\\S-1\\a.txt").size(), 1U);
  EXPECT_EQ(path, "C:\\$RECYCLE.BIN\\S-1\\a.txt");
}

}  // namespace
}  // namespace zelvreg
