#include "scan/OutcomeLine.h"

#include <gtest/gtest.h>

#include "form/Form42.h"

namespace zelvreg {
namespace {

class OutcomeLineTest : public ::testing::Test {
 protected:
  OutcomeLineTest() {
    form.View2.add("left");
    form.exportStem = "20260131-134506";
    form.repairOutcome = {
        .gone = 42, .leftAlone = 1, .noEffect = 4, .hasBegun = true, .failed = 0, .refused = {}};
  }

  Form42 form;
};

TEST_F(OutcomeLineTest, TheSentenceStandsInPlaceOfTheNumber) {
  EXPECT_TRUE(form.Label10.visible);
  EXPECT_FALSE(form.OutcomeText.visible);
  showOutcome(form);
  EXPECT_FALSE(form.Label10.visible);
  EXPECT_TRUE(form.OutcomeText.visible);
  EXPECT_EQ(form.OutcomeText.caption.get(), "42 repaired, 4 left, 1 spared");
  dropOutcome(form);
  EXPECT_TRUE(form.Label10.visible);
  EXPECT_FALSE(form.OutcomeText.visible);
  EXPECT_FALSE(form.UndoRepair.visible);
}

TEST_F(OutcomeLineTest, TheSentenceIsToldAgainOnlyWhereItStands) {
  retellOutcome(form);
  EXPECT_EQ(form.OutcomeText.caption.get(), "");
  showOutcome(form);
  form.OutcomeText.caption = "in another language";
  retellOutcome(form);
  EXPECT_EQ(form.OutcomeText.caption.get(), "42 repaired, 4 left, 1 spared");
}

TEST_F(OutcomeLineTest, TheUndoIsOfferedOnlyWhereTheExportIsWhatAnUndoRestores) {
  EXPECT_FALSE(form.UndoRepair.visible);
  showOutcome(form);
  EXPECT_TRUE(form.UndoRepair.visible);
  form.safeguards.undoesByExport = false;
  showOutcome(form);
  EXPECT_FALSE(form.UndoRepair.visible);
  form.safeguards.undoesByExport = true;
  form.repairOutcome.hasBegun = false;
  showOutcome(form);
  EXPECT_FALSE(form.UndoRepair.visible);
  form.repairOutcome.hasBegun = true;
  form.exportStem.clear();
  showOutcome(form);
  EXPECT_FALSE(form.UndoRepair.visible);
}

TEST_F(OutcomeLineTest, ItGoesWhenTheListChanges) {
  showOutcome(form);
  form.View2.setChecked(1, true);
  dropOldOutcome(form);
  EXPECT_TRUE(form.OutcomeText.visible);
  form.View2.add("new");
  dropOldOutcome(form);
  EXPECT_FALSE(form.OutcomeText.visible);
  EXPECT_FALSE(form.UndoRepair.visible);
}

TEST_F(OutcomeLineTest, WithAllSafeguardsLiftedTheNumberStays) {
  form.safeguards = asDescribed();
  showOutcome(form);
  EXPECT_TRUE(form.Label10.visible);
  EXPECT_FALSE(form.OutcomeText.visible);
  EXPECT_FALSE(form.UndoRepair.visible);
}

}  // namespace
}  // namespace zelvreg
