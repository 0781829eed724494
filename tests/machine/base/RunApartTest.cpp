#include "machine/base/RunApart.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>

#include "machine/base/MachineError.h"

namespace zelvreg::machine {
namespace {

std::string refusalOf(const std::function<std::string()>& work) {
  try {
    runApart(work);
  } catch (const MachineError& error) {
    return error.what();
  }
  return "";
}

TEST(RunApart, GivesTheAnswerAndLeavesThisProcessAsItWas) {
  int here = 1;
  const std::string answer(100'000, 'x');
  EXPECT_TRUE(runApart([&] {
                here = 2;
                return std::string(answer);
              }) == answer);
  EXPECT_EQ(here, 1);
  EXPECT_EQ(runApart([] { return std::string(); }), "");
}

TEST(RunApart, PassesARefusalOn) {
  EXPECT_EQ(refusalOf([]() -> std::string { throw MachineError("no room"); }), "no room");
}

TEST(RunApart, MakesARefusalOfAnyOtherEnd) {
  const std::string stopped = refusalOf([]() -> std::string { std::abort(); });
  EXPECT_NE(stopped.find("the library"), std::string::npos) << stopped;
  EXPECT_EQ(stopped.find('\n'), std::string::npos);
  EXPECT_EQ(refusalOf([]() -> std::string { _Exit(0); }), stopped);
  EXPECT_EQ(refusalOf([] {
              std::raise(SIGKILL);
              return std::string("no");
            }),
            stopped);
}

}  // namespace
}  // namespace zelvreg::machine
