// Only here can a process send itself the signal of Ctrl-C. The request lasts until the process
// ends, so each test has one of its own.
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <sstream>

#include "console/Commands.h"
#include "console/FixCommand.h"
#include "console/GivenComputer.h"
#include "console/Terminal.h"
#include "support/ComputerFixture.h"

namespace zelvreg::console {
namespace {

// Asks for the end as soon as the question before the repair is written.
class InterruptingBuffer : public std::stringbuf {
 protected:
  std::streamsize xsputn(const char* text, std::streamsize size) override {
    if (std::string_view(text, static_cast<std::size_t>(size)).starts_with("Do You want to Fix")) {
      std::raise(SIGINT);
    }
    return std::stringbuf::xsputn(text, size);
  }
};

class InterruptedFixTest : public fixture::ComputerFixture {
 protected:
  InterruptedFixTest() {
    setText("HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Fonts", "Gone",
            "gone.ttf");
  }

  // Ends the process with 3 after a line that says what became of the repair.
  static void fixAndEnd(bool isLive) {
    prepareTerminal();
    Options options;
    options.command = Command::Fix;
    options.rows = {1};
    options.answersYes = true;
    options.safeguardChoices = {{&Safeguards::careful, false, "--all"}};
    GivenComputer computer;
    computer.isLive = isLive;
    std::ostringstream out;
    InterruptingBuffer buffer;
    std::ostream error(&buffer);
    try {
      runCommand(options, computer, {.out = out, .error = error});
    } catch (const std::runtime_error& interruption) {
      std::cerr << interruption.what() << ", saved " << computer.saves << " times\n";
      std::_Exit(3);
    }
  }
};

using InterruptedFixDeathTest = InterruptedFixTest;

TEST_F(InterruptedFixDeathTest, BeforeTheFirstChangeNothingIsRepaired) {
  for (const bool isLive : {false, true}) {
    EXPECT_EXIT(fixAndEnd(isLive), ::testing::ExitedWithCode(3),
                "interrupted before its first change; nothing was repaired, saved 0 times");
  }
}

TEST(InterruptedFix, ALaterInterruptionSaysWhatBecameOfTheChanges) {
  GivenComputer computer;
  EXPECT_EQ(interruptionText(true, computer),
            "the repair was interrupted; nothing of it was saved");
  computer.isLive = true;
  EXPECT_EQ(interruptionText(true, computer),
            "the repair was interrupted; what it had done stays done");
}

}  // namespace
}  // namespace zelvreg::console
