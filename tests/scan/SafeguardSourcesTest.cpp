#include "scan/SafeguardSources.h"

#include "scan/Policies.h"
#include "shell/StartUp.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

const std::string settings =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\regscan";
const std::string policies = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Policies\\zelvane\\zelvreg";

class SafeguardSourcesTest : public fixture::ComputerFixture {
 protected:
  SafeguardSourcesTest() {
    emptyKey(settings);
    removeKey(policies);
  }
  ~SafeguardSourcesTest() override {
    removeKey(settings);
    removeKey(policies);
  }

  const Safeguards& decided() {
    decideSafeguards(form);
    return form.safeguards;
  }
  bool isLifted(const SafeguardRule& rule) {
    return decided().*rule.safeguard == liftedValue(rule);
  }
};

TEST_F(SafeguardSourcesTest, WhereNobodySaysAnythingAllIsSafe) {
  EXPECT_EQ(decided(), Safeguards{});
}

TEST_F(SafeguardSourcesTest, EachSettingLiftsItsOwnByItsTextAlone) {
  for (const SafeguardRule& rule : safeguardRules) {
    setText(settings, rule.setting, rule.liftingText);
    Safeguards expected;
    expected.*rule.safeguard = liftedValue(rule);
    EXPECT_EQ(decided(), expected) << rule.setting;
    for (const char* other : {"", "yes", "2"}) {
      setText(settings, rule.setting, other);
      EXPECT_EQ(decided(), Safeguards{}) << rule.setting << "=" << other;
    }
  }
}

TEST_F(SafeguardSourcesTest, OneSettingLiftsAll) {
  setText(settings, "letter", "1");
  EXPECT_EQ(decided(), asDescribed());
  setText(settings, "letter", "0");
  EXPECT_EQ(decided(), Safeguards{});
}

TEST_F(SafeguardSourcesTest, TheCommandLineComesBeforeTheSettings) {
  form.safeguardChoices = {{&Safeguards::asksService, false, "--provider direct"}};
  setText(settings, "provider", "service");
  EXPECT_FALSE(decided().asksService);
  form.safeguardChoices = choicesAsDescribed();
  EXPECT_EQ(decided(), asDescribed());
  form.safeguardChoices.insert(form.safeguardChoices.begin(),
                               {&Safeguards::asksService, false, "--provider direct"});
  EXPECT_FALSE(decided().asksService);
  EXPECT_TRUE(decided().touches);
}

TEST_F(SafeguardSourcesTest, APolicyComesBeforeTheCommandLineAndTheSettings) {
  for (const SafeguardRule& rule : safeguardRules) {
    emptyKey(settings);
    emptyKey(policies);
    form.safeguardChoices.clear();
    setText(policies, rule.setting, rule.liftingText);
    EXPECT_TRUE(isLifted(rule)) << rule.setting;
    setText(policies, rule.setting, "kept");
    setText(settings, rule.setting, rule.liftingText);
    form.safeguardChoices = {liftingChoice(rule)};
    EXPECT_FALSE(isLifted(rule)) << rule.setting;
    EXPECT_TRUE(isSetByPolicy(form, rule));
    EXPECT_NE(contradictionOf(form).find(rule.option), std::string::npos) << rule.option;
    EXPECT_NE(contradictionOf(form).find(policyKey), std::string::npos);
    EXPECT_EQ(contradictionOf(form).find('\n'), std::string::npos);
  }
}

TEST_F(SafeguardSourcesTest, APolicyMayBeANumber) {
  setNumber(policies, "protect", 0);
  setNumber(policies, "touch", 1);
  EXPECT_FALSE(decided().protects);
  EXPECT_TRUE(decided().touches);
}

TEST_F(SafeguardSourcesTest, APolicyForAllGivesWayToOneForASingleSafeguard) {
  setText(policies, "letter", "1");
  setText(policies, "protect", "1");
  Safeguards expected = asDescribed();
  expected.protects = true;
  EXPECT_EQ(decided(), expected);
}

TEST_F(SafeguardSourcesTest, APolicyAgainstTheLetterLeavesTheSwitchesOfOne) {
  setText(policies, "letter", "0");
  setText(settings, "letter", "1");
  EXPECT_EQ(decided(), Safeguards{});
  EXPECT_TRUE(isLetterSetByPolicy(form));
  form.safeguardChoices = choicesAsDescribed();
  EXPECT_NE(contradictionOf(form).find("--as-described"), std::string::npos);
  form.safeguardChoices = {liftingChoice(safeguardRules.front())};
  EXPECT_EQ(contradictionOf(form), "");
  EXPECT_FALSE(decided().protects);
}

TEST_F(SafeguardSourcesTest, AChoiceThatAPolicySharesIsNoContradiction) {
  setText(policies, "letter", "1");
  form.safeguardChoices = choicesAsDescribed();
  EXPECT_EQ(contradictionOf(form), "");
}

TEST_F(SafeguardSourcesTest, AComputerUnderRepairFromOutsideGivesNoOrders) {
  form.obeysComputer = false;
  setText(policies, "letter", "1");
  setText(settings, "protect", "0");
  EXPECT_EQ(decided(), Safeguards{});
  setText(policies, "letter", "0");
  form.safeguardChoices = choicesAsDescribed();
  EXPECT_EQ(contradictionOf(form), "");
  EXPECT_EQ(decided(), asDescribed());
}

TEST_F(SafeguardSourcesTest, ALoadedFormDecidesThemAgainAtEachScanAndRepair) {
  form.programFolder = "C:\\SafeguardSourcesTest";
  form.dialogs.show = [](const UserMessage&) { return Answer::No; };
  Form_Load(form);
  EXPECT_EQ(form.safeguards, Safeguards{});
  setText(settings, "letter", "1");
  form.cboFind.setText("no such text");
  form.cboRoot.setText("HKEY_CURRENT_CONFIG");
  form.cmdFind.click();
  EXPECT_EQ(form.safeguards, asDescribed());
  setText(settings, "letter", "0");
  form.orubutton1.click();
  EXPECT_EQ(form.safeguards, Safeguards{});
  setText(settings, "letter", "1");
  form.dialogs.show = [](const UserMessage&) { return Answer::Yes; };
  form.orubutton2.click();
  EXPECT_EQ(form.safeguards, asDescribed());
}

}  // namespace
}  // namespace zelvreg
