#include "scan/AutomaticEnd.h"

#include "form/ProcessEnd.h"
#include "scan/SafeguardSources.h"
#include "shell/StartUp.h"
#include "support/ComputerFixture.h"
#include "support/PlantedEvidence.h"

namespace zelvreg {
namespace {

const std::string policies = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Policies\\zelvane\\zelvreg";
const std::string settings =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\regscan";

// A scan that has ended in a mode of the suite, with a row that is sure and one that is not.
class SuiteTicksTest : public fixture::ComputerFixture {
 protected:
  SuiteTicksTest() {
    removeKey(policies);
    emptyKey(settings);
    bindClicks(form);
    makeFolder("C:\\SuiteTicksTest");
    form.programFolder = "C:\\SuiteTicksTest";
    form.lookAgain.bind([this] {
      fixture::plantEvidence(form, 1,
                             {.confidence = Confidence::Sure, .reasons = {}, .tested = {}});
    });
    form.orubutton2.bind([this] { ticked = {form.View2.isChecked(1), form.View2.isChecked(2)}; });
    ScannerRun run;
    addRow(form, run, {"x", "y", "1", "HKEY_USERS", "Key", "a"});
    addRow(form, run, {"x", "y", "1", "HKEY_USERS", "Key", "a"});
  }
  ~SuiteTicksTest() override {
    removeKey(policies);
    emptyKey(settings);
  }

  // The ticks that a repair in this mode finds.
  std::vector<bool> ticksOf(int Form42::*mode, int value) {
    form.evidence.clear();
    form.recheckFix = mode == &Form42::recheckMode ? 1 : 0;
    form.*mode = value;
    decideSafeguards(form);
    EXPECT_THROW(endAutomaticScan(form), ProcessEnd);
    form.*mode = 0;
    return ticked;
  }
  void expectInBothModes(const std::vector<bool>& expected) {
    EXPECT_EQ(ticksOf(&Form42::autoMode, 2), expected);
    EXPECT_EQ(ticksOf(&Form42::recheckMode, 1), expected);
  }

  std::vector<bool> ticked;
};

TEST_F(SuiteTicksTest, ASuiteHasEveryRowRepaired) { expectInBothModes({true, true}); }

TEST_F(SuiteTicksTest, UnlessAPolicyKeepsTheProgramCareful) {
  setText(policies, "careful", "1");
  expectInBothModes({true, false});
  setText(policies, "careful", "0");
  expectInBothModes({true, true});
}

TEST_F(SuiteTicksTest, ASettingDoesNotDecideForASuite) {
  setText(settings, "careful", "1");
  expectInBothModes({true, true});
}

}  // namespace
}  // namespace zelvreg
