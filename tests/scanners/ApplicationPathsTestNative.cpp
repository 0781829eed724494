// Only the emulated computer can be a 32-bit one.
#include "scanners/ApplicationPathsFixture.h"

namespace zelvreg {
namespace {

using fixture::Rows;

class ApplicationPaths32Test : public fixture::ApplicationPathsFixture {
 protected:
  ApplicationPaths32Test() : ApplicationPathsFixture(32) {
    removeKey(machine + "\\SOFTWARE\\Wow6432Node");
  }
};

TEST_F(ApplicationPaths32Test, ThePathOfAProgramKeepsItsCase) {
  setText(appPaths + "\\Tool.exe", "", gone);
  Command5(form);
  EXPECT_EQ(findings(), Rows{inAppPaths(gone, "Tool.exe", appPathsReported)});
}

TEST_F(ApplicationPaths32Test, NothingOfTheSystemFolderIsReported) {
  const std::string system = "C:\\Windows\\System32\\application paths test.exe";
  setText(appPaths + "\\Tool.exe", "", system);
  setText(store, system, "");
  setText(layers, system, "");
  setText(own, "Program", system);
  setText(ownOfUser, "Program", system);
  Command5(form);
  EXPECT_EQ(findings(), Rows{});
}

TEST_F(ApplicationPaths32Test, ThePlacesOfTheOtherViewAreNotThere) {
  setText(own, "Program", gone);
  Command5(form);
  EXPECT_EQ(findings(), Rows{named("Program", machine, ownReported)});
  EXPECT_EQ(shownCount(), "1");
}

}  // namespace
}  // namespace zelvreg
