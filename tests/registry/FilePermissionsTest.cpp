#include "registry/setpermission.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

class FilePermissionsTest : public fixture::ComputerFixture {};

TEST_F(FilePermissionsTest, AnOrdinaryFileIsLeftAlone) {
  makeFile("C:\\PermissionsTest\\plain.txt");
  const auto before = accessOfFile("C:\\PermissionsTest\\plain.txt");
  std::string path = " C:\\PermissionsTest\\plain.txt ";
  changepermission(path);
  EXPECT_EQ(accessOfFile("C:\\PermissionsTest\\plain.txt"), before);
  EXPECT_EQ(path, " C:\\PermissionsTest\\plain.txt ");
}

TEST_F(FilePermissionsTest, AMissingPathInTheRecycleBinIsPassedOver) {
  std::string path = " C:\\$Recycle.Bin\\none.txt ";
  changepermission(path);
  EXPECT_EQ(path, "C:\\$Recycle.Bin\\none.txt");
}

TEST_F(FilePermissionsTest, AnUnknownUserChangesNothing) {
  makeFile("C:\\PermissionsTest\\plain.txt");
  const auto before = accessOfFile("C:\\PermissionsTest\\plain.txt");
  SetAccess("no such account", "C:\\PermissionsTest\\plain.txt", GENERIC_ALL);
  EXPECT_EQ(accessOfFile("C:\\PermissionsTest\\plain.txt"), before);
}

}  // namespace
}  // namespace zelvreg
