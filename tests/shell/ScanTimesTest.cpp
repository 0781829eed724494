#include "shell/ScanTimes.h"

#include "scan/Settings.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

using std::chrono::milliseconds;

class ScanTimesTest : public fixture::ComputerFixture {
 protected:
  ScanTimesTest() {
    emptyKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\regscan");
  }
};

TEST_F(ScanTimesTest, ThereAreNoneBeforeTheFirstScan) { EXPECT_EQ(readScanTimes(), ScanTimes()); }

TEST_F(ScanTimesTest, WhatIsKeptIsReadAgain) {
  ScanTimes times;
  times[0] = milliseconds(0);
  times[7] = milliseconds(123456);
  times[16] = milliseconds(9);
  keepScanTimes(times);
  EXPECT_EQ(readScanTimes(), times);
  EXPECT_EQ(readSetting(settings::regscan, "scantimes"), "0 - - - - - - 123456 - - - - - - - - 9");
}

TEST_F(ScanTimesTest, DamagedTimesAreNone) {
  for (const char* damage :
       {"x", "5", "0 - - - - - - 1 - - - - - - - -", "0 - - - - - - -1 - - - - - - - - 9",
        "0 - - - - - - 999999999999 - - - - - - - - 9", "0 - - - - - - 1 - - - - - - - - 9 5",
        "0  - - - - - 1 - - - - - - - - 9", "0 - - - - - - 1x - - - - - - - - 9"}) {
    keepSetting(settings::regscan, "scantimes", damage);
    EXPECT_EQ(readScanTimes(), ScanTimes()) << damage;
  }
}

}  // namespace
}  // namespace zelvreg
