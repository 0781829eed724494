// Only the emulated computer records what it was asked to open.
#include "machine/Machine.h"
#include "machine/computer/Requests.h"
#include "shell/Help.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

class HelpPageTest : public fixture::ComputerFixture {
 protected:
  HelpPageTest() {
    form.safeguards = {};
    form.programFolder = "C:\\HelpTest";
    makeFile("C:\\HelpTest\\manual\\en\\results.html");
  }

  static const std::vector<machine::OpenRequest>& opened() {
    return machine::Machine::current()->requests().opened;
  }
};

TEST_F(HelpPageTest, IsOpenedWhereTheSystemCannotShowTheBook) {
  openHelpPage(form, HelpTopic("results").page().context);
  ASSERT_EQ(opened().size(), 1U);
  EXPECT_EQ(opened()[0].file, "C:\\HelpTest\\manual\\en\\results.html");
  EXPECT_EQ(opened()[0].parameters, std::nullopt);
}

TEST_F(HelpPageTest, IsNotOpenedToTheLetter) {
  form.safeguards = asDescribed();
  openHelpPage(form, HelpTopic("results").page().context);
  EXPECT_TRUE(opened().empty());
}

}  // namespace
}  // namespace zelvreg
