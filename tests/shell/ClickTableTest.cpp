#include <array>
#include <functional>

#include "scan/CategoryTable.h"
#include "shell/StartUp.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

class ClickTableTest : public fixture::ComputerFixture {
 protected:
  ClickTableTest() { bindClicks(form); }

  // Whether a scan was started: it shows a message if no row is ticked.
  bool beginsScan(const std::function<void()>& press) {
    bool hasBegun = false;
    form.dialogs.show = [&](const UserMessage& /*message*/) {
      hasBegun = true;
      return Answer::Ok;
    };
    press();
    return hasBegun;
  }
};

TEST_F(ClickTableTest, FourButtonsAndAHiddenTextStartAScan) {
  EXPECT_TRUE(beginsScan([this] { form.cmd_start.click(); }));
  EXPECT_TRUE(beginsScan([this] { form.orubutton1.click(); }));
  EXPECT_TRUE(beginsScan([this] { form.orubutton3.click(); }));
  EXPECT_TRUE(beginsScan([this] { form.Text4.setText("1"); }));
  EXPECT_TRUE(beginsScan([this] { form.Text4.setText(" 1 more"); }));
}

TEST_F(ClickTableTest, AnyOtherHiddenTextStartsNone) {
  EXPECT_FALSE(beginsScan([this] { form.Text4.setText("0"); }));
  EXPECT_FALSE(beginsScan([this] { form.Text4.setText(""); }));
  EXPECT_FALSE(beginsScan([this] { form.Text4.setText("11"); }));
  EXPECT_FALSE(beginsScan([this] { form.Text4.setText("one"); }));
}

TEST_F(ClickTableTest, BothPairsOfTickButtonsWorkOnTheResults) {
  form.View2.add("finding");
  const std::array<std::pair<Button*, bool>, 4> presses{{{&form.cmd_all, true},
                                                         {&form.cmd_non, false},
                                                         {&form.chameleonButton16, true},
                                                         {&form.chameleonButton17, false}}};
  for (const auto& [button, isTicked] : presses) {
    button->click();
    EXPECT_EQ(form.View2.isChecked(1), isTicked);
  }
}

TEST_F(ClickTableTest, TheOptionsPageHasAPairOfItsOwn) {
  form.View1.add("fonts");
  form.chameleonButton21.click();
  EXPECT_TRUE(form.View1.isChecked(1));
  form.chameleonButton22.click();
  EXPECT_FALSE(form.View1.isChecked(1));
}

TEST_F(ClickTableTest, CancelOfThePanelAsksForAStop) {
  form.chameleonButton12.click();
  EXPECT_EQ(form.Text2.text(), "2");
  EXPECT_TRUE(form.cancelRequested);
}

TEST_F(ClickTableTest, EveryScannerIsBound) {
  for (const Category& category : categories()) {
    for (const EntryPointOf routine : category.routines) {
      EXPECT_TRUE(routine == nullptr || routine(form).isBound()) << category.optionName;
    }
  }
  for (const Button* unused :
       {&form.Command14, &form.Command16, &form.Command18, &form.Command19}) {
    EXPECT_TRUE(unused->isBound());
  }
}

TEST_F(ClickTableTest, AHiddenButtonKeepsTheTicks) {
  const std::string place =
      "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\timer\\reg";
  emptyKey(place);
  form.orubutton18.click();
  EXPECT_EQ(storedText(place, "font"), "0");
}

}  // namespace
}  // namespace zelvreg
