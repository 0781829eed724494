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

  static void press(CheckBox& box) {
    box.value = !box.value;
    box.click();
  }
  void press(std::size_t index) { press(form.SafeguardBoxes[index]); }

  // A row of the results with a tick.
  void addRow(Confidence confidence) {
    const std::size_t row = form.View2.add("row");
    form.evidence.push_back({.confidence = confidence, .reasons = {Reason::Absent}, .tested = {}});
    form.View2.setItemData(row, form.evidence.size());
    form.View2.setChecked(row, true);
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
  EXPECT_TRUE(form.SafeguardBoxes[0].isLocked);
  EXPECT_TRUE(form.SafeguardBoxes[1].enabled);
  EXPECT_FALSE(form.SafeguardBoxes[1].isLocked);
  EXPECT_FALSE(form.SafeguardBoxes[letterBox].enabled);
  EXPECT_TRUE(form.SafeguardBoxes[letterBox].isLocked);
}

TEST_F(SafeguardPageTest, ABoxDoesNotChangeWhatIsAlreadyRunning) {
  form.safeguards = {};
  form.chameleonButton1.click();
  press(letterBox);
  EXPECT_EQ(form.safeguards, Safeguards{});
}

TEST_F(SafeguardPageTest, CarefulIsOnAtFirstAndKeptInTheSettings) {
  EXPECT_FALSE(form.CarefulBox.value);
  form.orubutton4.click();
  EXPECT_TRUE(form.Frame1.visible);
  EXPECT_TRUE(form.CarefulBox.value);
  EXPECT_TRUE(form.CarefulBox.enabled);
  press(form.CarefulBox);
  EXPECT_EQ(storedText(settings, "careful"), "0");
  EXPECT_FALSE(form.CarefulBox.value);
  EXPECT_FALSE(safeguardsNow(form).careful);
  press(form.CarefulBox);
  EXPECT_EQ(storedText(settings, "careful"), "1");
  EXPECT_TRUE(safeguardsNow(form).careful);
}

TEST_F(SafeguardPageTest, CarefulIsReadWhenTheProgramStarts) {
  setText(settings, "careful", "0");
  Form_Load(form);
  EXPECT_FALSE(form.CarefulBox.value);
  setText(settings, "careful", "1");
  Form42 next;
  Form_Load(next);
  EXPECT_TRUE(next.CarefulBox.value);
}

TEST_F(SafeguardPageTest, CarefulCannotBeChangedAgainstAPolicyOrWithAllLifted) {
  setText(policies, "careful", "0");
  form.orubutton4.click();
  EXPECT_FALSE(form.CarefulBox.value);
  EXPECT_FALSE(form.CarefulBox.enabled);
  removeKey(policies);
  form.orubutton4.click();
  EXPECT_TRUE(form.CarefulBox.value);
  EXPECT_TRUE(form.CarefulBox.enabled);
  press(letterBox);
  EXPECT_FALSE(form.CarefulBox.value);
  EXPECT_FALSE(form.CarefulBox.enabled);
}

TEST_F(SafeguardPageTest, CarefulTakesTheTicksOfUnsureRowsAndNeverGivesOne) {
  setText(settings, "careful", "0");
  form.orubutton4.click();
  for (const Confidence confidence :
       {Confidence::Sure, Confidence::Sure, Confidence::Likely, Confidence::Unsure}) {
    addRow(confidence);
  }
  form.View2.setChecked(1, false);
  press(form.CarefulBox);
  EXPECT_FALSE(form.View2.isChecked(1));
  EXPECT_TRUE(form.View2.isChecked(2));
  EXPECT_TRUE(form.View2.isChecked(3));
  EXPECT_FALSE(form.View2.isChecked(4));
  press(form.CarefulBox);
  EXPECT_FALSE(form.View2.isChecked(1));
  EXPECT_FALSE(form.View2.isChecked(4));
}

TEST_F(SafeguardPageTest, CarefulHoldsForTheScanThatRuns) {
  form.safeguards = {};
  form.orubutton4.click();
  press(form.CarefulBox);
  EXPECT_EQ(form.safeguards, (Safeguards{.careful = false}));
  press(form.CarefulBox);
  EXPECT_EQ(form.safeguards, Safeguards{});
}

}  // namespace
}  // namespace zelvreg
