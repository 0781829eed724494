#include "runtime/Sha256.h"

#include <gtest/gtest.h>

namespace zelvreg {
namespace {

// The examples of FIPS 180-4, and one that takes several blocks.
TEST(Sha256, IsThatOfTheStandard) {
  EXPECT_EQ(hexadecimal(sha256("")),
            "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  EXPECT_EQ(hexadecimal(sha256("abc")),
            "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  EXPECT_EQ(hexadecimal(sha256(std::string(1000000, 'a'))),
            "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

}  // namespace
}  // namespace zelvreg
