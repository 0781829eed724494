#include "shell/SafeguardPage.h"

#include "scan/SafeguardSources.h"
#include "shell/StartUp.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

const std::string settings =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\regscan";
const std::string policies = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Policies\\zelvane\\zelvreg";
constexpr std::size_t letterBox = safeguardBoxCount;

class SafeguardPageTest : public fixture::ComputerFixture {
 protected:
  SafeguardPageTest() {
    emptyKey(settings);
    removeKey(policies);
    bindClicks(form);
  }
  ~SafeguardPageTest() override {
    removeKey(settings);
    removeKey(policies);
  }

  void press(std::size_t index) {
    form.SafeguardBoxes[index].value = !form.SafeguardBoxes[index].value;
    form.SafeguardBoxes[index].click();
  }
};

TEST_F(SafeguardPageTest, ItOpensWithAllSafeguardsTicked) {
  form.chameleonButton1.click();
  EXPECT_TRUE(form.Frame3.visible);
  for (std::size_t index = 0; index < letterBox; ++index) {
    EXPECT_TRUE(form.SafeguardBoxes[index].value) << index;
    EXPECT_TRUE(form.SafeguardBoxes[index].enabled) << index;
  }
  EXPECT_FALSE(form.SafeguardBoxes[letterBox].value);
}

TEST_F(SafeguardPageTest, EachBoxStoresItsOwnSetting) {
  form.chameleonButton1.click();
  for (std::size_t index = 0; index < letterBox; ++index) {
    const SafeguardRule& rule = safeguardRules[index];
    press(index);
    EXPECT_EQ(storedText(settings, rule.setting), rule.liftingText);
    EXPECT_FALSE(form.SafeguardBoxes[index].value);
    EXPECT_EQ(safeguardsNow(form).*rule.safeguard, liftedValue(rule));
    press(index);
    EXPECT_EQ(storedText(settings, rule.setting), rule.keepingText);
    EXPECT_TRUE(form.SafeguardBoxes[index].value);
  }
  EXPECT_EQ(safeguardsNow(form), Safeguards{});
}

TEST_F(SafeguardPageTest, TheLastBoxLiftsAllAndTheOthersShowIt) {
  form.chameleonButton1.click();
  press(letterBox);
  EXPECT_EQ(storedText(settings, "letter"), "1");
  EXPECT_EQ(safeguardsNow(form), asDescribed());
  for (std::size_t index = 0; index < letterBox; ++index) {
    EXPECT_FALSE(form.SafeguardBoxes[index].value) << index;
    EXPECT_FALSE(form.SafeguardBoxes[index].enabled) << index;
  }
  press(letterBox);
  EXPECT_EQ(storedText(settings, "letter"), "0");
  EXPECT_TRUE(form.SafeguardBoxes[0].value);
  EXPECT_TRUE(form.SafeguardBoxes[0].enabled);
}

TEST_F(SafeguardPageTest, WhatAPolicyHasDecidedCannotBeChanged) {
  setText(policies, "protect", "0");
  setText(policies, "letter", "0");
  form.chameleonButton1.click();
  EXPECT_FALSE(form.SafeguardBoxes[0].value);
  EXPECT_FALSE(form.SafeguardBoxes[0].enabled);
  EXPECT_TRUE(form.SafeguardBoxes[1].enabled);
  EXPECT_FALSE(form.SafeguardBoxes[letterBox].enabled);
}

TEST_F(SafeguardPageTest, ABoxDoesNotChangeWhatIsAlreadyRunning) {
  form.safeguards = {};
  form.chameleonButton1.click();
  press(letterBox);
  EXPECT_EQ(form.safeguards, Safeguards{});
}

}  // namespace
}  // namespace zelvreg
