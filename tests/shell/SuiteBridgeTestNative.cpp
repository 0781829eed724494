// Only the emulated computer has a window of the suite that a test can look into.
#include "shell/SuiteBridge.h"

#include <gtest/gtest.h>

#include "form/ProcessEnd.h"
#include "machine/Machine.h"
#include "machine/files/OpenFiles.h"
#include "support/MachineFixture.h"

namespace zelvreg {
namespace {

class SuiteBridgeTest : public fixture::MachineFixture {
 protected:
  Form42 form;
};

TEST_F(SuiteBridgeTest, TheWindowIsToldTheNumberOfFindings) {
  setting("suite", "1");
  machine::Machine& machine = start();
  form.View2.add("a");
  Timer2_Timer(form);
  form.View2.add("b");
  Timer2_Timer(form);
  EXPECT_EQ(machine.suiteTexts(), (std::vector<std::string>{"r|1", "r|2"}));
  EXPECT_EQ(machine.openFiles().count(), 0U);
}

TEST_F(SuiteBridgeTest, WithoutTheWindowTheProcessEnds) {
  machine::Machine& machine = start();
  EXPECT_THROW(Timer2_Timer(form), ProcessEnd);
  EXPECT_TRUE(machine.suiteTexts().empty());
  EXPECT_EQ(machine.openFiles().count(), 0U);
}

TEST_F(SuiteBridgeTest, ATextThatIsLongerThanTheBlockIsCut) {
  setting("suite", "1");
  machine::Machine& machine = start();
  reportToSuite(form, std::string(300, 'x'));
  ASSERT_EQ(machine.suiteTexts().size(), 1U);
  EXPECT_EQ(machine.suiteTexts()[0], std::string(256, 'x'));
}

TEST_F(SuiteBridgeTest, TheTextIsInTheCodePageAndTheNumberCountsItsBytes) {
  setting("suite", "1");
  setting("codepage", "932");
  machine::Machine& machine = start();
  reportToSuite(form, "r|ソ\U0001F600");
  EXPECT_EQ(machine.suiteTexts(), std::vector<std::string>{"r|\x83\x5C??"});
}

class FailingBlockTest : public SuiteBridgeTest,
                         public ::testing::WithParamInterface<machine::ApiCall> {};

TEST_P(FailingBlockTest, LosesOneReportAndTheScanRunsOn) {
  setting("suite", "1");
  machine::Machine& machine = start();
  machine.faults().fail(GetParam(), 1, ERROR_NOT_ENOUGH_MEMORY);
  Timer2_Timer(form);
  EXPECT_TRUE(machine.suiteTexts().empty());
  EXPECT_EQ(machine.openFiles().count(), 0U);
  Timer2_Timer(form);
  EXPECT_EQ(machine.suiteTexts(), std::vector<std::string>{"r|0"});
}

TEST_P(FailingBlockTest, EndsTheScanWithoutTheWindowAllTheSame) {
  machine::Machine& machine = start();
  machine.faults().fail(GetParam(), 1, ERROR_NOT_ENOUGH_MEMORY);
  EXPECT_THROW(Timer2_Timer(form), ProcessEnd);
  EXPECT_EQ(machine.openFiles().count(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Calls, FailingBlockTest,
                         ::testing::Values(machine::ApiCall::CreateFileMapping,
                                           machine::ApiCall::MapViewOfFile));

}  // namespace
}  // namespace zelvreg
