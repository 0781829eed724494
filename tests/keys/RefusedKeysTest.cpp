#include "keys/RefusedKeys.h"

#include "keys/OpenKey.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

constexpr const char* whole = R"(HKEY_LOCAL_MACHINE\SOFTWARE\zelvreg-refused)";
constexpr const char* below = R"(SOFTWARE\zelvreg-refused)";
// Read and nothing else, for everybody; the system keeps all rights, so that the key can be
// removed.
constexpr const char* onlyRead = "D:P(A;;KR;;;WD)(A;;KA;;;SY)";
constexpr const char* nothing = "D:P(A;;KA;;;SY)";
constexpr const char* everything = "D:P(A;;KA;;;WD)";

class RefusedKeysTest : public fixture::ComputerFixture {
 protected:
  void SetUp() override { setText(whole, "name", "text"); }
  void TearDown() override {
    setAccessOfKey(whole, everything);
    removeKey(whole);
  }

  static LONG opened() {
    return OpenKey(HiveHandle::LocalMachine, below, workOn64BitView).openStatus();
  }
};

TEST_F(RefusedKeysTest, AKeyThatMayOnlyBeReadIsOpenedForReadingByAScanAlone) {
  setAccessOfKey(whole, onlyRead);
  EXPECT_EQ(opened(), ERROR_ACCESS_DENIED);
  {
    const RefusedKeys noted;
    const OpenKey key(HiveHandle::LocalMachine, below, workOn64BitView);
    EXPECT_EQ(key.openStatus(), ERROR_SUCCESS);
    EXPECT_TRUE(noted.paths().empty());
    EXPECT_EQ(RegSetValueExW(key.handle(), wideText(u"name"), 0, REG_SZ, nullptr, 0),
              ERROR_ACCESS_DENIED);
  }
  EXPECT_EQ(opened(), ERROR_ACCESS_DENIED);
}

TEST_F(RefusedKeysTest, AKeyThatMayNotBeReadIsNotedOnce) {
  setAccessOfKey(whole, nothing);
  const RefusedKeys noted;
  EXPECT_EQ(opened(), ERROR_ACCESS_DENIED);
  EXPECT_EQ(opened(), ERROR_ACCESS_DENIED);
  const OpenKey inOtherCase(HiveHandle::LocalMachine, lowerCase(below), workOn64BitView);
  EXPECT_EQ(noted.paths(), KeyPaths{whole});
}

TEST_F(RefusedKeysTest, AKeyThatIsNotThereIsNotNoted) {
  const RefusedKeys noted;
  EXPECT_EQ(
      OpenKey(HiveHandle::LocalMachine, "SOFTWARE\\zelvreg-none", workOn64BitView).openStatus(),
      ERROR_FILE_NOT_FOUND);
  EXPECT_TRUE(noted.paths().empty());
}

TEST_F(RefusedKeysTest, WhatIsOpenedToBeChangedIsNeverOpenedForReading) {
  setAccessOfKey(whole, onlyRead);
  const RefusedKeys noted;
  EXPECT_EQ(OpenKey(HiveHandle::LocalMachine, below, workOn64BitView, ClassesOf::User).openStatus(),
            ERROR_ACCESS_DENIED);
}

}  // namespace
}  // namespace zelvreg
