#include <gtest/gtest.h>
#include <windows.h>

#include "machine/Machine.h"
#include "machine/RealDisk.h"
#include "machine/TemporaryFolder.h"
#include "machine/base/MachineError.h"
#include "machine/computer/Environment.h"
#include "machine/files/Drives.h"

namespace zelvreg::machine {
namespace {

std::string refusalOf(const OfflineDisk& disk) {
  try {
    Machine::openOffline(disk);
  } catch (const MachineError& error) {
    return error.what();
  }
  return "opened";
}

TEST(OfflineMachine, NeedsAFolderWithHives) {
  const fixture::TemporaryFolder folder;
  OfflineDisk disk;
  disk.root = folder.path() / "missing";
  EXPECT_NE(refusalOf(disk).find("is not a folder"), std::string::npos);
  disk.root = folder.path();
  EXPECT_NE(refusalOf(disk), "opened");
}

// On the disk of a real computer, where one is at hand.
class RealDiskTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!fixture::hasRealDisks()) {
      GTEST_SKIP() << "ZELVREG_REAL_HIVES names no folder with real hives";
    }
    fixture::copyRealDisk("windows7", copy.path());
    disk.root = copy.path();
  }
  const fixture::TemporaryFolder copy;
  OfflineDisk disk;
};

TEST_F(RealDiskTest, ADriveThatWasNotGivenIsUnknownUnlessItIsToBeDead) {
  {
    const auto machine = Machine::openOffline(disk);
    const Running running(*machine);
    EXPECT_TRUE(machine->drives().isUnknown(u"D:\\x.dll"));
    EXPECT_FALSE(machine->drives().isUnknown(u"C:\\x.dll"));
    EXPECT_EQ(GetFileAttributesW(u"D:\\x.dll"), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_NOT_READY));
    EXPECT_EQ(GetFileAttributesW(u"C:\\windows"), FILE_ATTRIBUTE_DIRECTORY);
  }
  disk.missingDrivesAreDead = true;
  const auto machine = Machine::openOffline(disk);
  EXPECT_FALSE(machine->drives().isUnknown(u"D:\\x.dll"));
}

TEST_F(RealDiskTest, TakesFurtherDrivesButNotTheSameTwice) {
  const fixture::TemporaryFolder other;
  other.write("x.dll", "");
  disk.drives['D'] = other.path();
  EXPECT_TRUE(Machine::openOffline(disk)->drives().find(u"d:\\X.DLL").exists());
  disk.drives['D'] = other.path() / "missing";
  EXPECT_NE(refusalOf(disk).find("drive D:"), std::string::npos);
  disk.drives.clear();
  disk.drives['C'] = other.path();
  EXPECT_NE(refusalOf(disk).find("drive C:"), std::string::npos);
}

TEST_F(RealDiskTest, KeepsNoAttributesWhenItIsSaved) {
  const auto machine = Machine::openOffline(disk);
  EXPECT_NO_THROW(machine->save());
  machine->drives().records().setAttributes("C:\\Windows", true, FILE_ATTRIBUTE_HIDDEN);
  EXPECT_NO_THROW(machine->save());
  EXPECT_FALSE(machine->drives().records().attributesChanged());
  EXPECT_TRUE(machine->unsavedChanges().empty());
}

}  // namespace
}  // namespace zelvreg::machine
