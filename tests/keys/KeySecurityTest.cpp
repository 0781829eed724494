#include "keys/KeySecurity.h"

#include <algorithm>

#include "keys/WideKey.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

const std::u16string place = u"SOFTWARE\\KeySecurityTest";
const std::string key = "HKEY_LOCAL_MACHINE\\SOFTWARE\\KeySecurityTest";

class KeySecurityTest : public fixture::ComputerFixture {
 protected:
  KeySecurityTest() { emptyKey(key); }
  ~KeySecurityTest() override { removeKey(key); }

  static std::vector<BYTE> current() {
    return WideKey(HiveHandle::LocalMachine, place, READ_CONTROL).security();
  }
};

TEST_F(KeySecurityTest, WhatTheSystemGivesIsWholeAndNoPartOfItIs) {
  setAccessOfKey(key, "D:P(D;CIIO;GA;;;WD)(A;CI;KA;;;BA)(A;CI;KA;;;SY)");
  const std::vector<BYTE> whole = current();
  ASSERT_TRUE(isWholeDescriptor(whole));
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_FALSE(isWholeDescriptor({whole.begin(), whole.begin() + static_cast<int>(size)}))
        << size;
  }
}

TEST_F(KeySecurityTest, ADescriptorOfAnyBytesIsJudgedWithoutHarm) {
  setAccessOfKey(key, "D:P(A;CI;KA;;;BA)(A;CI;KA;;;SY)");
  const std::vector<BYTE> whole = current();
  int accepted = 0;
  for (std::size_t index = 0; index < whole.size(); ++index) {
    for (const int byte : {0x00, 0x01, 0x0F, 0x10, 0x7F, 0xFF}) {
      std::vector<BYTE> changed = whole;
      changed[index] = static_cast<BYTE>(byte);
      accepted += isWholeDescriptor(changed) ? 1 : 0;
    }
  }
  EXPECT_GT(accepted, 0);
  EXPECT_FALSE(isWholeDescriptor({}));
  std::vector<BYTE> absolute = whole;
  absolute[3] &= 0x7F;
  EXPECT_FALSE(isWholeDescriptor(absolute));
}

TEST_F(KeySecurityTest, AListThatWasChangedComesBackOnce) {
  setAccessOfKey(key, "D:(A;CI;KA;;;BA)(A;CI;KA;;;SY)(A;CI;KR;;;WD)");
  const std::vector<BYTE> before = current();
  const auto list = accessOfKey(key);
  setAccessOfKey(key, "D:(D;CIIO;GA;;;WD)(A;CI;KA;;;BA)(A;CI;KA;;;SY)");
  EXPECT_EQ(restoreSecurity(HiveHandle::LocalMachine, place, before), SecurityRestore::Done);
  EXPECT_EQ(accessOfKey(key), list);
  EXPECT_EQ(restoreSecurity(HiveHandle::LocalMachine, place, before), SecurityRestore::WasSo);
}

TEST_F(KeySecurityTest, AKeyThatIsGoneRefuses) {
  const std::vector<BYTE> before = current();
  EXPECT_EQ(restoreSecurity(HiveHandle::LocalMachine, place + u"\\None", before),
            SecurityRestore::Refused);
}

}  // namespace
}  // namespace zelvreg
