// Work without the rights of an administrator.
#ifndef ZELVREG_TESTS_MACHINE_ORDINARY_USER_H
#define ZELVREG_TESTS_MACHINE_ORDINARY_USER_H

#include <gtest/gtest.h>
#include <unistd.h>

namespace zelvreg::fixture {

// Runs as somebody who may not write what others own, until it is gone.
class OrdinaryUser {
 public:
  OrdinaryUser() {
    constexpr uid_t nobody = 65534;
    if (wasRoot) {
      EXPECT_EQ(seteuid(nobody), 0);
    }
  }
  ~OrdinaryUser() {
    if (wasRoot) {
      EXPECT_EQ(seteuid(0), 0);
    }
  }
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;

 private:
  const bool wasRoot = geteuid() == 0;
};

}  // namespace zelvreg::fixture

#endif
