// Only the emulated computer can be a 32-bit one.
#include "scan/Findings.h"
#include "scanners/FirewallRules.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

const std::string rulesKey =
    "HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\services\\SharedAccess\\Parameters\\"
    "FirewallPolicy\\FirewallRules";

class FirewallRules32Test : public fixture::Computer32Fixture {};

TEST_F(FirewallRules32Test, AProgramOfTheSystemFolderIsNeverReported) {
  setText(rulesKey, "a", "v2.10|App=C:\\Windows\\System32\\gone.exe|");
  setText(rulesKey, "b", "v2.10|App=C:\\Windows\\gone.exe|");
  Command32(form);
  ASSERT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(form.View2.text(1, badValueColumn), "b");
}

}  // namespace
}  // namespace zelvreg
