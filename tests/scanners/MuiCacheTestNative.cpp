// Only the emulated computer can be a 32-bit one.
#include "scan/Findings.h"
#include "scanners/MuiCache.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

const std::string cacheKey =
    "HKEY_CURRENT_USER\\Software\\Classes\\Local Settings\\Software\\Microsoft\\Windows\\Shell\\"
    "MuiCache";

class MuiCache32Test : public fixture::Computer32Fixture {};

TEST_F(MuiCache32Test, AProgramOfTheSystemFolderIsNeverReported) {
  setText(cacheKey, "C:\\Windows\\System32\\gone.exe", "x");
  setText(cacheKey, "C:\\Windows\\gone.exe", "x");
  MuiCache(form);
  ASSERT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(form.View2.text(1, badValueColumn), "C:\\Windows\\gone.exe");
}

}  // namespace
}  // namespace zelvreg
