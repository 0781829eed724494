// Only the clock of the emulated computer stands still between two runs.
#include "machine/Machine.h"
#include "machine/computer/Clock.h"
#include "undo/FixListBackupFixture.h"

namespace zelvreg {
namespace {

class FixListBackupNativeTest : public FixListBackupFixture {};

TEST_F(FixListBackupNativeTest, ASecondRunInTheSameSecondReplacesTheCopy) {
  addTicked("first");
  Command30_Click(form);
  form.View2.clear();
  addTicked("second");
  Command30_Click(form);
  EXPECT_EQ(stamp("1"), "31_01_2026_13.45.06");
  EXPECT_EQ(stamp("2"), stamp("1"));
  EXPECT_EQ(storedText(settings, "cnt"), "2");
  EXPECT_EQ(copy("1"), "HKEY_USERS,Software\\Key,bad value,second\r\n\r\n");
}

TEST_F(FixListBackupNativeTest, ARunASecondLaterKeepsTheCopyBefore) {
  addTicked("first");
  Command30_Click(form);
  form.View2.clear();
  addTicked("second");
  machine::Machine::current()->clock().advance(1000);
  Command30_Click(form);
  EXPECT_EQ(stamp("2"), "31_01_2026_13.45.07");
  EXPECT_EQ(copy("1"), "HKEY_USERS,Software\\Key,bad value,first\r\n\r\n");
  EXPECT_EQ(copy("2"), "HKEY_USERS,Software\\Key,bad value,second\r\n\r\n");
}

}  // namespace
}  // namespace zelvreg
