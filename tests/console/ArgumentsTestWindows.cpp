// Only Windows keeps the command line as it was typed.
#include "console/Arguments.h"

#include <gtest/gtest.h>

namespace zelvreg::console {
namespace {

TEST(Arguments, AreThoseOfTheCommandLineThatWasTyped) {
  const char* narrow = "not this";
  const auto typed = typedArguments(1, &narrow);
  ASSERT_FALSE(typed.empty());
  EXPECT_NE(typed.front().find("zelvreg-tests"), std::string::npos);
}

}  // namespace
}  // namespace zelvreg::console
