// A double click on a row of the categories.
#include "form/Form42.h"
#include "reports/EntryDetails.h"
#include "scan/CategoryTable.h"
#include "shell/Navigation.h"
#include "shell/PressFixture.h"

namespace zelvreg {
namespace {

const std::string folder = "C:\\CategoryRowClickTest";

class CategoryRowClickTest : public PressFixture {
 protected:
  CategoryRowClickTest() {
    form.View1.add("fonts");
    form.View1.add("dlls");
    form.View1.setText(1, problemsColumn, "2");
    form.View1.setText(2, problemsColumn, "0");
    form.View2.add("first");
    form.View2.add("second");
    form.Gif89a1.visible = false;
    form.orubutton4.click();
  }

  void doubleClick(std::size_t row) {
    View1_ItemClick(form, row);
    View1_DblClick(form);
  }
};

TEST_F(CategoryRowClickTest, ADoubleClickOnARowWithProblemsShowsTheResults) {
  expectAfter([this] { doubleClick(1); },
              {.shown = {&form.Frame2, &form.Picture1},
               .hidden = {&form.Frame1, &form.Frame3, &form.Frame7},
               .enabled = {&form.cmd_fix, &form.cmd_all, &form.cmd_non, &form.cmd_report,
                           &form.chameleonButton1, &form.chameleonButton7, &form.orubutton4,
                           &form.chameleonButton11, &form.orubutton1}});
}

TEST_F(CategoryRowClickTest, TheResultsAreWhereTheOptionsWereAndComplete) {
  form.Frame1.left = 300;
  form.Frame1.top = 400;
  doubleClick(1);
  EXPECT_EQ(form.Frame2.left, 300);
  EXPECT_EQ(form.Frame2.top, 400);
  EXPECT_EQ(form.View2.count(), 2U);
}

TEST_F(CategoryRowClickTest, TheNumberOfResultsIsShownInTheLanguageInUse) {
  form.programFolder = folder;
  form.langFileName = "zelvreg-test.lang";
  makeFile(folder + "\\lang\\zelvreg-test.lang", "[Form42]\r\nLabel10=Zahl der Eintr\xE4ge\r\n");
  doubleClick(1);
  EXPECT_EQ(form.Label10.caption.get(), "Zahl der Einträge 2");
}

TEST_F(CategoryRowClickTest, ARowWithoutProblemsShowsNothing) {
  for (const char* number : {"", "0", "-1", "none"}) {
    form.View1.setText(2, problemsColumn, number);
    form.cmd_fix.enabled = false;
    doubleClick(2);
    EXPECT_EQ(page(), "options ") << number;
    EXPECT_FALSE(form.cmd_fix.enabled) << number;
  }
}

TEST_F(CategoryRowClickTest, NoRowShowsAnythingDuringAScan) {
  form.Gif89a1.visible = true;
  form.cmd_fix.enabled = false;
  doubleClick(1);
  EXPECT_EQ(page(), "options ");
  EXPECT_FALSE(form.cmd_fix.enabled);
}

TEST_F(CategoryRowClickTest, TheRowIsTheOneLastClickedInEitherList) {
  View1_ItemClick(form, 2);
  EXPECT_EQ(form.lastClickedRow, 2U);
  View2_ItemClick(form, 1);
  EXPECT_EQ(form.lastClickedRow, 1U);
  View1_DblClick(form);
  EXPECT_EQ(page(), "results ");
  form.orubutton4.click();
  View2_ItemClick(form, 2);
  EXPECT_EQ(form.lastClickedRow, 2U);
  View1_DblClick(form);
  EXPECT_EQ(page(), "options ");
}

}  // namespace
}  // namespace zelvreg
