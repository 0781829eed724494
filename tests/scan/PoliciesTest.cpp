#include "scan/Policies.h"

#include <algorithm>

#include "repair/RepairDriver.h"
#include "scan/CategoryTable.h"
#include "scan/SafeguardSources.h"
#include "scan/ScanDriver.h"
#include "shell/Languages.h"
#include "shell/StartUp.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

const std::string policies = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Policies\\zelvane\\zelvreg";
const std::string exclusions = policies + "\\Exclusions";
const std::string ticks =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\timer\\reg";

class PoliciesTest : public fixture::ComputerFixture {
 protected:
  PoliciesTest() {
    emptyKey(ticks);
    removeKey(policies);
    bindClicks(form);
    createCategoryRows(form);
  }
  ~PoliciesTest() override {
    removeKey(policies);
    removeKey(ticks);
  }

  [[nodiscard]] std::set<std::size_t> tickedRows() const {
    std::set<std::size_t> rows;
    for (std::size_t row = 1; row <= form.View1.count(); ++row) {
      if (form.View1.isChecked(row)) {
        rows.insert(row);
      }
    }
    return rows;
  }
};

using Rows = std::set<std::size_t>;
using Texts = std::vector<std::string>;

TEST_F(PoliciesTest, WithoutAPolicyNothingIsDecided) {
  EXPECT_EQ(undoByPolicy(form), std::nullopt);
  EXPECT_EQ(categoriesByPolicy(form), std::nullopt);
  EXPECT_EQ(exclusionsByPolicy(form), Texts());
}

TEST_F(PoliciesTest, EachValueIsThereOnceInTheListOfAll) {
  Texts names = policyValueNames();
  std::ranges::sort(names);
  EXPECT_EQ(std::ranges::adjacent_find(names), names.end());
  EXPECT_EQ(names.size(), safeguardRules.size() + 3);
}

TEST_F(PoliciesTest, UndoInformationIsSwitchedOffByZeroAlone) {
  for (const char* text : {"1", "", "no", "00"}) {
    setText(policies, "saveundo", text);
    EXPECT_EQ(undoByPolicy(form), true) << text;
  }
  setText(policies, "saveundo", "0");
  EXPECT_EQ(undoByPolicy(form), false);
  setNumber(policies, "saveundo", 0);
  EXPECT_EQ(undoByPolicy(form), false);
  setBytes(policies, "saveundo", REG_BINARY, "0");
  EXPECT_EQ(undoByPolicy(form), true);
}

TEST_F(PoliciesTest, CategoriesAreNamedAsOnTheCommandLine) {
  setText(policies, "categories", " Fonts , dll,16");
  EXPECT_EQ(categoriesByPolicy(form), (Rows{1, 2, 16}));
  std::string all;
  for (const Category& category : categories()) {
    all.append(category.optionName).append(",");
  }
  setText(policies, "categories", all);
  EXPECT_EQ(categoriesByPolicy(form)->size(), categories().size());
}

TEST_F(PoliciesTest, CategoriesThatAreNotKnownAllowNothing) {
  setText(policies, "categories", "fonts,of-a-later-version");
  EXPECT_EQ(categoriesByPolicy(form), Rows{1});
  for (const char* text : {"", "everything", ","}) {
    setText(policies, "categories", text);
    EXPECT_EQ(categoriesByPolicy(form), Rows()) << text;
  }
}

TEST_F(PoliciesTest, ExclusionsAreTheDataOfAllValues) {
  setText(exclusions, "1", "HKEY_LOCAL_MACHINE\\SOFTWARE\\Acme");
  setText(exclusions, "2", "  ");
  setNumber(exclusions, "3", 4);
  setText(exclusions, "HKEY_CURRENT_USER\\x", " HKEY_CURRENT_USER\\x ");
  EXPECT_EQ(exclusionsByPolicy(form),
            (Texts{"HKEY_LOCAL_MACHINE\\SOFTWARE\\Acme", "HKEY_CURRENT_USER\\x"}));
}

TEST_F(PoliciesTest, AComputerUnderRepairFromOutsideGivesNoOrders) {
  form.obeysComputer = false;
  setText(policies, "saveundo", "0");
  setText(policies, "categories", "fonts");
  setText(exclusions, "1", "HKEY_LOCAL_MACHINE");
  EXPECT_EQ(undoByPolicy(form), std::nullopt);
  EXPECT_EQ(categoriesByPolicy(form), std::nullopt);
  EXPECT_EQ(exclusionsByPolicy(form), Texts());
}

TEST_F(PoliciesTest, RowsThatItDecidesAreLockedAndTheirTicksAreNotStored) {
  setText(ticks, "dll", "1");
  setText(ticks, "app", "1");
  setText(policies, "categories", "fonts,dlls");
  restoreSelection(form);
  EXPECT_EQ(tickedRows(), (Rows{1, 2}));
  form.chameleonButton21.click();
  EXPECT_EQ(tickedRows(), (Rows{1, 2}));
  form.chameleonButton22.click();
  EXPECT_EQ(tickedRows(), (Rows{1, 2}));
  form.View1.setChecked(3, true);
  EXPECT_EQ(tickedRows(), (Rows{1, 2}));
  for (std::size_t row = 1; row <= form.View1.count(); ++row) {
    EXPECT_TRUE(form.View1.isLocked(row)) << row;
  }
  saveSelection(form);
  EXPECT_EQ(storedText(ticks, "font"), "(none)");
  EXPECT_EQ(storedText(ticks, "app"), "1");
  removeKey(policies);
  restoreSelection(form);
  EXPECT_EQ(tickedRows(), (Rows{2, 3}));
  EXPECT_FALSE(form.View1.isLocked(1));
}

TEST_F(PoliciesTest, AScanLeavesOutWhatItDoesNotAllow) {
  form.dialogs.show = [](const UserMessage&) { return Answer::Ok; };
  for (std::size_t row = 1; row <= form.View1.count(); ++row) {
    form.View1.setChecked(row, row == 1 || row == 2);
  }
  setText(policies, "categories", "dlls,app-paths");
  setText(policies, "letter", "1");
  runScan(form);
  EXPECT_EQ(tickedRows(), Rows{2});
  EXPECT_TRUE(form.View1.isLocked(1));
}

TEST_F(PoliciesTest, AScanLeavesOutTheFirstAndTheLastRowToo) {
  form.dialogs.show = [](const UserMessage&) { return Answer::Ok; };
  setText(policies, "categories", "dlls");
  for (std::size_t row = 1; row <= form.View1.count(); ++row) {
    form.View1.setLocked(row, false);
    form.View1.setChecked(row, row != 2);
  }
  runScan(form);
  EXPECT_EQ(tickedRows(), Rows());
  EXPECT_TRUE(form.View1.isLocked(1));
  EXPECT_TRUE(form.View1.isLocked(form.View1.count()));
}

}  // namespace
}  // namespace zelvreg
