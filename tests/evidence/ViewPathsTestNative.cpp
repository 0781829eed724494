// The system folders of a 64-bit and of a 32-bit Windows: only the emulated computer is either.
#include "evidence/ViewPaths.h"

#include "support/MachineFixture.h"

namespace zelvreg {
namespace {

class ViewPathsTest : public fixture::MachineFixture {
 protected:
  // Both places, that of its own view first, and with a mark what is not of its own.
  static std::string placesOf(const std::string& path, ProgramView view = ProgramView::Bits64) {
    std::string places;
    const ViewPaths paths = viewPaths(path, view, "C:\\Windows");
    for (const ViewPath& place : paths) {
      places.append(places.empty() ? "" : "|").append(place.path).append(place.isOwn ? "" : "?");
    }
    return places;
  }
};

TEST_F(ViewPathsTest, APathOfTheSystemFolderIsInBoth) {
  start();
  const std::string first64 = R"(C:\Windows\Sysnative\a.dll|C:\Windows\SysWOW64\a.dll?)";
  const std::string first32 = R"(C:\Windows\SysWOW64\a.dll|C:\Windows\Sysnative\a.dll?)";
  EXPECT_EQ(placesOf(R"(C:\Windows\System32\a.dll)"), first64);
  EXPECT_EQ(placesOf(R"(c:\WINDOWS\SYSTEM32\a.dll)"), first64);
  EXPECT_EQ(placesOf(R"(C:\Windows\System32\a.dll)", ProgramView::Bits32), first32);
  EXPECT_EQ(placesOf(R"(C:\Windows\SysWOW64\a.dll)"), first32);
  EXPECT_EQ(placesOf(R"(C:\Windows\SysNative\a.dll)", ProgramView::Bits32), first64);
}

TEST_F(ViewPathsTest, AnyOtherPathIsInOnePlace) {
  start();
  for (const std::string path :
       {R"(C:\Windows\System\a.dll)", R"(C:\Windows\System32)", R"(C:\Windows\)", R"(C:\Windows)",
        R"(C:\WindowsX\System32\a.dll)", R"(D:\Windows\System32\a.dll)", ""}) {
    EXPECT_EQ(placesOf(path), path);
  }
}

TEST_F(ViewPathsTest, A32BitWindowsHasOneSystemFolder) {
  setting("bits", "32");
  start();
  EXPECT_EQ(placesOf(R"(C:\Windows\System32\a.dll)"), R"(C:\Windows\System32\a.dll)");
}

}  // namespace
}  // namespace zelvreg
