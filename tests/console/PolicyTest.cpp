// What the console refuses because a policy has decided otherwise.
#include <sstream>

#include "console/Commands.h"
#include "console/GivenComputer.h"
#include "support/ComputerFixture.h"
#include "support/ParsedJson.h"

namespace zelvreg::console {
namespace {

const std::string policies = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Policies\\zelvane\\zelvreg";
const std::string fontsKey =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Fonts";
const std::string settings =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\regscan";

class PolicyTest : public fixture::ComputerFixture {
 protected:
  PolicyTest() {
    emptyKey(fontsKey);
    emptyKey(settings);
    removeKey(policies);
    setText(fontsKey, "Gone", "C:\\gone.ttf");
    options.rows = {1, 2};
  }
  ~PolicyTest() override { removeKey(policies); }

  int run() { return runCommand(options, given, {.out = out, .error = error}); }
  // The one line that it is refused with.
  std::string refusal() {
    try {
      run();
    } catch (const UsageError& error) {
      return error.what();
    }
    return "not refused";
  }
  // Whether each of the first two rows was scanned.
  std::string scanned() {
    options.format = Format::Json;
    out.str("");
    run();
    const auto object = fixture::parsedJson(out.str());
    return object["categories"][0]["status"].get<std::string>() + "|" +
           object["categories"][1]["status"].get<std::string>();
  }

  Options options;
  GivenComputer given;
  std::ostringstream out;
  std::ostringstream error;
};

const std::string place =
    " contradicts a policy of this computer (HKLM\\Software\\Policies\\zelvane\\zelvreg); ";

TEST_F(PolicyTest, OnlyWhatItAllowsIsScannedWhereNothingIsNamed) {
  setText(policies, "categories", "fonts,app-paths");
  EXPECT_EQ(scanned(), "Finished|");
}

TEST_F(PolicyTest, LessThanItAllowsMayBeNamed) {
  setText(policies, "categories", "fonts,dlls");
  options.areRowsNamed = true;
  options.rows = {2};
  EXPECT_EQ(scanned(), "|Finished");
}

TEST_F(PolicyTest, MoreThanItAllowsMayNotBeNamed) {
  setText(policies, "categories", "fonts");
  options.areRowsNamed = true;
  for (const Command command : {Command::Scan, Command::Fix}) {
    options.command = command;
    EXPECT_EQ(refusal(), "--only dlls" + place + "name only what it allows, or change the policy");
  }
  EXPECT_EQ(out.str(), "");
}

TEST_F(PolicyTest, OneThatAllowsNothingIsNamed) {
  setText(policies, "categories", "fonds");
  EXPECT_EQ(refusal(),
            "a policy of this computer (HKLM\\Software\\Policies\\zelvane\\zelvreg) allows no "
            "category; its value categories must name some, such as fonts,dlls");
}

TEST_F(PolicyTest, ADiskIsNotBoundByWhatStandsOnIt) {
  setText(policies, "categories", "dlls");
  setText(policies + "\\Exclusions", "1", "HKEY_LOCAL_MACHINE");
  options.target.offlineRoot = "/disk";
  EXPECT_EQ(scanned(), "Finished|Finished");
  // Otherwise all of it would be excluded.
  EXPECT_GT(fixture::parsedJson(out.str())["total"], 0);
}

TEST_F(PolicyTest, ItsExclusionsCountAndAreNamedInTheListAndStay) {
  // Of the shared DLLs a real computer may have dead ones of its own.
  options.rows = {1};
  EXPECT_EQ(run(), problemsFound);
  setText(policies + "\\Exclusions", "1", "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows");
  EXPECT_EQ(run(), nothingFound);
  options.command = Command::ListExclusions;
  out.str("");
  EXPECT_EQ(run(), nothingFound);
  EXPECT_NE(out.str().find("Set by"), std::string::npos) << out.str();
  EXPECT_NE(out.str().find("a policy"), std::string::npos) << out.str();
  options.command = Command::RemoveExclusion;
  options.entry = 1;
  options.answersYes = true;
  EXPECT_EQ(refusal(), "exclude remove 1" + place + "leave it, or change the policy");
}

TEST_F(PolicyTest, UndoInformationThatItDecidesIsNotSwitched) {
  setText(policies, "saveundo", "1");
  options.command = Command::UndoOff;
  EXPECT_EQ(refusal(), "undo off" + place + "leave it as it is, or change the policy");
  options.command = Command::UndoOn;
  EXPECT_EQ(run(), nothingFound);
  setText(policies, "saveundo", "0");
  EXPECT_EQ(refusal(), "undo on" + place + "leave it as it is, or change the policy");
}

TEST_F(PolicyTest, ARepairWritesAJournalWhereItSaysSo) {
  setText(settings, "saveundo", "0");
  setText(policies, "saveundo", "1");
  options.command = Command::Fix;
  options.rows = {1};
  options.answersYes = true;
  EXPECT_EQ(run(), nothingFound) << error.str();
  EXPECT_NE(storedText(settings, "cnt"), "(none)");
  const std::string withJournal = storedText(settings, "cnt");
  setText(policies, "saveundo", "0");
  setText(settings, "saveundo", "1");
  setText(settings, "cnt", "0");
  setText(fontsKey, "Gone", "C:\\gone.ttf");
  EXPECT_EQ(run(), nothingFound) << error.str();
  EXPECT_LT(storedText(settings, "cnt"), withJournal);
}

}  // namespace
}  // namespace zelvreg::console
