#include "machine/base/RunApart.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string_view>

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

TEST(RunApart, TellsTheSignalAndTheLastWords) {
  try {
    runApart([]() -> std::string {
      const std::string_view words = "one\ntwo\n";
      EXPECT_EQ(write(STDERR_FILENO, words.data(), words.size()), 8);
      std::raise(SIGKILL);
      return "no";
    });
    FAIL();
  } catch (const WorkStopped& end) {
    EXPECT_EQ(end.signal, SIGKILL);
    EXPECT_EQ(end.lastWords, "two");
  }
}

TEST(RunApart, WithoutASignalOrWordsItTellsNone) {
  try {
    runApart([]() -> std::string { _Exit(3); });
    FAIL();
  } catch (const WorkStopped& end) {
    EXPECT_EQ(end.signal, 0);
    EXPECT_EQ(end.lastWords, "");
  }
}

}  // namespace
}  // namespace zelvreg::machine
