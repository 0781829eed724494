// Only the emulated computer records what the suite's window was told.
#include "shell/SuiteBridge.h"

#include <gtest/gtest.h>

#include "form/Form42.h"
#include "form/ProcessEnd.h"
#include "machine/Machine.h"
#include "machine/computer/Requests.h"
#include "machine/files/OpenFiles.h"
#include "support/MachineFixture.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

using Texts = std::vector<std::string>;

class SuiteBridgeTest : public fixture::MachineFixture {
 protected:
  // What the suite's window was told, in order.
  Texts told() {
    Texts texts;
    for (const machine::SuiteMessage& message : computer().requests().suiteMessages) {
      texts.push_back(message.text);
    }
    return texts;
  }

  Form42 form;
};

TEST_F(SuiteBridgeTest, TheWindowIsToldTheNumberOfFindings) {
  setting("suite", "1");
  machine::Machine& machine = start();
  form.View2.add("a");
  Timer2_Timer(form);
  form.View2.add("b");
  Timer2_Timer(form);
  EXPECT_EQ(told(), (Texts{"r|1", "r|2"}));
  EXPECT_EQ(machine.openFiles().count(), 0U);
}

TEST_F(SuiteBridgeTest, TheBlockIsFlushedBeforeTheMessageThatPointsToTheWindowsHandle) {
  setting("suite", "1");
  const machine::Machine& machine = start();
  form.View2.add("a");
  Timer2_Timer(form);
  ASSERT_EQ(machine.requests().suiteMessages.size(), 1U);
  const machine::SuiteMessage& message = machine.requests().suiteMessages[0];
  EXPECT_EQ(message.number, 1025U);
  EXPECT_EQ(message.flushed, 3U);
  EXPECT_EQ(message.parameter, FindWindowW(nullptr, Wide("Zelvane Tuner").get()));
}

TEST_F(SuiteBridgeTest, WithoutTheWindowTheProcessEnds) {
  machine::Machine& machine = start();
  EXPECT_THROW(Timer2_Timer(form), ProcessEnd);
  EXPECT_TRUE(told().empty());
  EXPECT_EQ(machine.openFiles().count(), 0U);
}

TEST_F(SuiteBridgeTest, ATextThatIsLongerThanTheBlockIsCut) {
  setting("suite", "1");
  start();
  parentBridge(form, std::string(300, 'x'));
  ASSERT_EQ(told().size(), 1U);
  EXPECT_EQ(told()[0], std::string(256, 'x'));
}

TEST_F(SuiteBridgeTest, TheTextIsInTheCodePageAndTheNumberCountsItsBytes) {
  setting("suite", "1");
  setting("codepage", "932");
  start();
  parentBridge(form, "r|ソ\U0001F600");
  EXPECT_EQ(told(), Texts{"r|\x83\x5C??"});
}

class FailingBlockTest : public SuiteBridgeTest,
                         public ::testing::WithParamInterface<machine::ApiCall> {};

TEST_P(FailingBlockTest, LosesOneReportAndTheScanContinues) {
  setting("suite", "1");
  machine::Machine& machine = start();
  machine.faults().fail(GetParam(), 1, ERROR_NOT_ENOUGH_MEMORY);
  Timer2_Timer(form);
  EXPECT_TRUE(told().empty());
  EXPECT_EQ(machine.openFiles().count(), 0U);
  Timer2_Timer(form);
  EXPECT_EQ(told(), Texts{"r|0"});
}

TEST_P(FailingBlockTest, EndsTheScanWithoutTheWindowToo) {
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
