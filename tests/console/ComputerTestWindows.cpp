// Only on Windows is it the running computer, which others may be at work on.
#include "console/Computer.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>

#include "runtime/SingleInstance.h"

namespace zelvreg::console {
namespace {

TEST(RunningComputer, IsRefusedAsLongAsTheWindowIsOpen) {
  std::optional<SingleInstance> window(std::in_place);
  EXPECT_THROW(Computer::open({}, Access::Alone), std::runtime_error);
  window.reset();
  EXPECT_NE(Computer::open({}, Access::Alone), nullptr);
}

TEST(RunningComputer, KeepsOthersOutUntilItIsClosed) {
  {
    const auto computer = Computer::open({}, Access::Alone);
    EXPECT_FALSE(SingleInstance().isFirst());
    EXPECT_THROW(Computer::open({}, Access::Alone), std::runtime_error);
  }
  EXPECT_TRUE(SingleInstance().isFirst());
}

TEST(RunningComputer, ListsWhileAnotherIsAtWork) {
  const SingleInstance window;
  EXPECT_NE(Computer::open({}, Access::Shared), nullptr);
  EXPECT_TRUE(window.isFirst());
}

TEST(RunningComputer, KeepsEachChangeAtOnce) {
  EXPECT_TRUE(Computer::open({}, Access::Shared)->keepsAtOnce());
}

}  // namespace
}  // namespace zelvreg::console
