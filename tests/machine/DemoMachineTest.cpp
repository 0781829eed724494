// The demo computer is one that opens, and on which there is something to find and something not.
#include <gtest/gtest.h>
#include <windows.h>

#include "machine/Machine.h"
#include "machine/TemporaryFolder.h"
#include "machine/files/Drives.h"
#include "machine/registry/Registry.h"
#include "support/SourceFolder.h"

namespace zelvreg::machine {
namespace {

class DemoMachineTest : public ::testing::Test {
 protected:
  // A copy, so that tests at the same time do not lock each other out.
  DemoMachineTest() {
    std::filesystem::copy(sourceFolder() + "/demo/machine", copy.path() / "demo",
                          std::filesystem::copy_options::recursive);
    machine = Machine::open(copy.path() / "demo");
  }
  bool has(std::u16string_view path) { return machine->drives().find(path).exists(); }

  fixture::TemporaryFolder copy;
  std::unique_ptr<Machine> machine;
};

TEST_F(DemoMachineTest, OpensAndIsUnchanged) {
  EXPECT_TRUE(machine->is64Bit());
  EXPECT_FALSE(machine->registry().contentChanged());
  EXPECT_NE(machine->registry().find(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Wow6432Node\zelvane)"
                                     R"(\Zelvane Tuner Deluxe\timer\reg)"),
            nullptr);
}

TEST_F(DemoMachineTest, HasSoundFilesAndMissingOnes) {
  EXPECT_TRUE(has(u"C:\\Windows\\Fonts\\LUMENSANSB.TTF"));
  EXPECT_TRUE(has(u"C:\\Windows\\Sysnative\\nwshell.dll"));
  EXPECT_TRUE(has(u"C:\\Program Files\\Common Files\\northwind\\nwprint.dll"));
  EXPECT_FALSE(has(u"C:\\Windows\\Fonts\\quill.ttf"));
  EXPECT_FALSE(has(u"C:\\Windows\\Sysnative\\nwgone.dll"));
  EXPECT_FALSE(has(u"C:\\Program Files\\Common Files\\Northwind\\nwspell.dll"));
  EXPECT_FALSE(has(u"C:\\Program Files (x86)\\Common Files\\Harbour\\hbold.dll"));
}

TEST_F(DemoMachineTest, HasAReadOnlyHiddenSharedDll) {
  const Place dll =
      machine->drives().find(u"C:\\Program Files\\Common Files\\Northwind\\nwcore.dll");
  EXPECT_EQ(machine->drives().records().attributes(dll.path(), dll.isFolder),
            FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
}

}  // namespace
}  // namespace zelvreg::machine
