#include "shell/ToolbarChoice.h"

#include "scan/Settings.h"
#include "shell/StartUp.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

class ToolbarChoiceTest : public fixture::ComputerFixture {
 protected:
  ToolbarChoiceTest() {
    emptyKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\regscan");
    bindClicks(form);
  }
};

TEST_F(ToolbarChoiceTest, TheCommandsHaveCaptionsUntilSomebodyWantsSmallButtons) {
  loadToolbarChoice(form);
  EXPECT_FALSE(form.ToolbarBox.value);
}

TEST_F(ToolbarChoiceTest, APressIsKeptForTheNextStart) {
  for (const bool wanted : {true, false}) {
    form.ToolbarBox.value = wanted;
    form.ToolbarBox.click();
    EXPECT_EQ(readSetting(settings::regscan, "toolbar"), wanted ? "1" : "0");
    form.ToolbarBox.value = !wanted;
    loadToolbarChoice(form);
    EXPECT_EQ(form.ToolbarBox.value, wanted);
  }
}

}  // namespace
}  // namespace zelvreg
