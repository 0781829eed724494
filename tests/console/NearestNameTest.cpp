#include "console/NearestName.h"

#include <gtest/gtest.h>

namespace zelvreg::console {
namespace {

TEST(NearestName, IsTheOneWithTheFewestDifferences) {
  const std::vector<std::string> names{"scan", "fix", "search", "undo", "--offline", "--only", "r"};
  for (const auto& [typed, meant] : {std::pair{"scna", "scan"},
                                     {"scann", "scan"},
                                     {"fxi", "fix"},
                                     {"serch", "search"},
                                     {"undos", "undo"},
                                     {"--oflline", "--offline"},
                                     {"--onyl", "--only"}}) {
    EXPECT_EQ(nearestName(typed, names), meant) << typed;
  }
}

TEST(NearestName, IsNoneWhereTooMuchDiffers) {
  for (const char* typed : {"", "q", "delete", "--nonsense", "undo undo"}) {
    EXPECT_EQ(nearestName(typed, {"scan", "fix", "undo", "r", "--offline"}), "") << typed;
  }
  EXPECT_EQ(nearestName("scan", {}), "");
}

}  // namespace
}  // namespace zelvreg::console
