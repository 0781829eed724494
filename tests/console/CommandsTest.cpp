#include "console/Commands.h"

#include <sstream>

#include "console/GivenComputer.h"
#include "support/ComputerFixture.h"
#include "support/ParsedJson.h"

namespace zelvreg::console {
namespace {

const std::string fontsKey =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Fonts";

class CommandsTest : public fixture::ComputerFixture {
 protected:
  CommandsTest() {
    emptyKey(fontsKey);
    options.rows = {1};
    options.safeguardChoices = {{&Safeguards::careful, false, "--all"}};
  }

  int run() { return runCommand(options, given, {.out = out, .error = error}); }

  Options options;
  GivenComputer given;
  std::ostringstream out;
  std::ostringstream error;
};

TEST_F(CommandsTest, AScanWithoutFindingsEndsWithZero) {
  EXPECT_EQ(run(), nothingFound);
  EXPECT_NE(out.str().find("0 problems found."), std::string::npos);
  EXPECT_EQ(given.saves, 0);
}

TEST_F(CommandsTest, AScanWithFindingsEndsWithOneUnlessTheCallerWantsZero) {
  setText(fontsKey, "Gone", "gone.ttf");
  EXPECT_EQ(run(), problemsFound);
  options.exitsZero = true;
  EXPECT_EQ(run(), nothingFound);
}

TEST_F(CommandsTest, OnlyJsonIsOnTheOutputWithAllRowsOfTheResults) {
  setText(fontsKey, "Grün", "gone.ttf");
  options.format = Format::Json;
  EXPECT_EQ(run(), problemsFound);
  const auto object = fixture::parsedJson(out.str());
  EXPECT_EQ(object["findings"][0]["location"], "Gr\xC3\xBCn");
  EXPECT_EQ(object["findings"][0]["checked"], true);
  EXPECT_EQ(object["categories"].size(), 16U);
  EXPECT_EQ(object["categories"][0]["problems"], "1");
  EXPECT_EQ(object["categories"][0]["status"], "Finished");
  EXPECT_EQ(object["categories"][1]["checked"], false);
  EXPECT_EQ(error.str(), "");
}

TEST_F(CommandsTest, QuietPrintsNothing) {
  setText(fontsKey, "Gone", "gone.ttf");
  options.isQuiet = true;
  EXPECT_EQ(run(), problemsFound);
  EXPECT_EQ(out.str(), "");
}

TEST_F(CommandsTest, ADamagedPartIsNamedAndTheScanEndsWithTwo) {
  given.damaged = {"SOFTWARE is damaged"};
  EXPECT_EQ(run(), failed);
  EXPECT_EQ(error.str(), "zelvreg: SOFTWARE is damaged\n");
  EXPECT_NE(out.str(), "");
}

TEST_F(CommandsTest, WithADamagedPartOrOneThatWasNotClosedNothingIsRepaired) {
  setText(fontsKey, "Gone", "gone.ttf");
  options.command = Command::Fix;
  options.answersYes = true;
  for (auto* lines : {&given.damaged, &given.notClosed}) {
    *lines = {"SOFTWARE is not whole", "SYSTEM is not whole"};
    try {
      run();
      ADD_FAILURE();
    } catch (const std::runtime_error& refusal) {
      EXPECT_STREQ(refusal.what(), "SOFTWARE is not whole; nothing was repaired");
    }
    lines->clear();
  }
  EXPECT_EQ(storedText(fontsKey, "Gone"), "gone.ttf");
  EXPECT_EQ(given.saves, 0);
}

TEST_F(CommandsTest, WithoutAFindingOfTheKindsThatAreWantedNothingIsAsked) {
  setText(fontsKey, "Gone", "gone.ttf");
  options.command = Command::Fix;
  options.kinds = {2, 10};
  EXPECT_EQ(run(), nothingFound);
  EXPECT_EQ(error.str(), "");
  EXPECT_EQ(given.saves, 0);
}

TEST_F(CommandsTest, NoTickedRowIsAMessageOnTheErrorStream) {
  options.rows.clear();
  EXPECT_EQ(run(), nothingFound);
  EXPECT_EQ(error.str(),
            "zelvreg: Please select any item from the list first to perform the test\n");
}

TEST_F(CommandsTest, WhatCannotBeSavedIsTold) {
  given.homeless = {"HKEY_USERS\\New: is not kept"};
  for (const Command command : {Command::UndoOn, Command::UndoOff}) {
    options.command = command;
    error.str("");
    EXPECT_EQ(run(), nothingFound);
    EXPECT_EQ(error.str(), "zelvreg: HKEY_USERS\\New: is not kept\n");
  }
  EXPECT_EQ(given.saves, 2);
}

TEST_F(CommandsTest, ATimeThatIsOverEndsAScanAndAFixWithoutARepair) {
  setText(fontsKey, "Gone", "gone.ttf");
  options.answersYes = true;
  options.deadline = std::chrono::steady_clock::time_point::min();
  for (const auto& [command, end] : {std::pair{Command::Scan, "what was found so far is listed"},
                                     std::pair{Command::Fix, "nothing was repaired"}}) {
    options.command = command;
    try {
      run();
      ADD_FAILURE();
    } catch (const std::runtime_error& reason) {
      EXPECT_EQ(reason.what(), std::string("the scan was ended by --timeout; ") + end);
    }
  }
  EXPECT_EQ(storedText(fontsKey, "Gone"), "gone.ttf");
  EXPECT_EQ(given.saves, 0);
  options.deadline = std::chrono::steady_clock::time_point::max();
  options.command = Command::Scan;
  EXPECT_EQ(run(), problemsFound);
}

TEST_F(CommandsTest, ASwitchThatAPolicyContradictsIsRefusedBeforeAnythingIsDone) {
  const std::string policies = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Policies\\zelvane\\zelvreg";
  setText(policies, "touch", "0");
  options.safeguardChoices = {{&Safeguards::touches, true, "--touch"}};
  EXPECT_THROW(run(), UsageError);
  EXPECT_EQ(out.str(), "");
  removeKey(policies);
  EXPECT_EQ(run(), nothingFound);
}

TEST_F(CommandsTest, NamesOnTheErrorStreamCannotSteerATerminal) {
  given.damaged = {"/mnt/\x1b[2J\u202e\u009b/SOFTWARE is damaged"};
  EXPECT_EQ(run(), failed);
  EXPECT_EQ(error.str(), "zelvreg: /mnt/ [2J  /SOFTWARE is damaged\n");
}

TEST_F(CommandsTest, AnUnknownLanguageIsRefused) {
  options.command = Command::UseLanguage;
  options.language = "klingon";
  EXPECT_THROW(run(), std::runtime_error);
  EXPECT_EQ(given.saves, 0);
}

}  // namespace
}  // namespace zelvreg::console
