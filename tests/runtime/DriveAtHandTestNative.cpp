// Only the emulated computer has drives of which nothing is known.
#include "runtime/DriveAtHand.h"

#include "machine/OfflineDiskFixture.h"

namespace zelvreg {
namespace {

class DriveAtHandTest : public fixture::OfflineDiskTest {};

TEST_F(DriveAtHandTest, AFolderInAnyScriptThatLeadsAwayIsNotAtHand) {
  hive(software).key("Vendor");
  std::filesystem::create_symlink("/mnt/other", disk.path() / "\u041F\u0430\u043F\u043A\u0430");
  open();
  const machine::Running running(*computer);
  EXPECT_FALSE(isDriveAtHand("C:\\\u043F\u0430\u043F\u043A\u0430\\a.exe"));
  EXPECT_FALSE(isDriveAtHand("D:\\a.exe"));
  EXPECT_TRUE(isDriveAtHand("C:\\\u0434\u0440\u0443\u0433\u0430\u044F\\a.exe"));
}

}  // namespace
}  // namespace zelvreg
