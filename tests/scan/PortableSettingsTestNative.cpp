// On Windows all tests share one folder, in which this one would leave another.
#include "scan/Settings.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

class SettingsFolderTest : public fixture::ComputerFixture {};

TEST_F(SettingsFolderTest, AFolderWithTheNameOfTheFileMakesNothingPortable) {
  makeFolder(settingsFile());
  EXPECT_FALSE(isPortable());
}

}  // namespace
}  // namespace zelvreg
