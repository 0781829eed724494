// Only the emulated computer tells what was reported to its event log.
#include "scan/EventLog.h"

#include "machine/Machine.h"
#include "machine/computer/Requests.h"
#include "repair/RepairDriver.h"
#include "repair/SafetyExportFixture.h"
#include "runtime/Environment.h"
#include "scan/OwnPaths.h"
#include "scan/ScanDriver.h"
#include "shell/Languages.h"
#include "shell/StartUp.h"
#include "text/Text.h"
#include "undo/UndoPage.h"

namespace zelvreg {
namespace {

const std::string source = std::string("HKEY_LOCAL_MACHINE\\") + eventSourceKey;
const std::string user = "HKEY_CURRENT_USER\\Software\\EventLogTest";
const std::string fonts =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Fonts";

class EventLogTest : public fixture::SafetyExportFixture {
 protected:
  EventLogTest() {
    form.safeguards = {};
    bindClicks(form);
    createCategoryRows(form);
    registerSource(programFolder() + "\\ZelvReg-Console.exe");
    setText(user, "a", "x");
    form.dialogs.show = [](const UserMessage& message) {
      return message.isQuestion ? Answer::Yes : Answer::Ok;
    };
  }

  static void registerSource(const std::string& program) {
    setText(source, eventMessageFile, program, REG_EXPAND_SZ);
  }

  void repair() {
    addTickedRow({"", "a", "155", "HKEY_CURRENT_USER", "Software\\EventLogTest", ""});
    runRepair(form);
  }

  void scanFonts() {
    form.View1.setChecked(1, true);
    runScan(form);
  }

  static const std::vector<machine::EventReport>& events() {
    return machine::Machine::current()->requests().events;
  }

  static void expectOnly(LoggedEvent event, WORD type, const std::vector<std::string>& texts) {
    ASSERT_EQ(events().size(), 1U);
    EXPECT_EQ(events()[0].number, eventNumber(event));
    EXPECT_EQ(events()[0].type, type);
    EXPECT_TRUE(events()[0].hasUser);
    EXPECT_EQ(events()[0].texts, texts);
  }
};

TEST_F(EventLogTest, TheNumberHoldsTheSeverity) {
  EXPECT_EQ(eventNumber(LoggedEvent::ScanEnded), 0x40000001U);
  EXPECT_EQ(eventNumber(LoggedEvent::ScanStopped), 0x40000002U);
  EXPECT_EQ(eventNumber(LoggedEvent::RepairRefused), 0x80000004U);
  EXPECT_EQ(eventNumber(LoggedEvent::CommandFailed), 0xC0000007U);
}

TEST_F(EventLogTest, AScanSaysHowManyItFound) {
  emptyKey(fonts);
  setText(fonts, "Gone", "C:\\gone.ttf");
  scanFonts();
  expectOnly(LoggedEvent::ScanEnded, EVENTLOG_INFORMATION_TYPE, {"1"});
  EXPECT_EQ(machine::Machine::current()->requests().eventSource, "zelvreg");
}

TEST_F(EventLogTest, AScanThatIsStoppedSaysSo) {
  emptyKey(fonts);
  form.Command1.bind([this] { form.cmd_cancel.click(); });
  scanFonts();
  expectOnly(LoggedEvent::ScanStopped, EVENTLOG_INFORMATION_TYPE, {"0"});
}

TEST_F(EventLogTest, ARepairSaysWhatBecameOfItsRowsAndWhereTheExportIs) {
  repair();
  expectOnly(LoggedEvent::RepairEnded, EVENTLOG_INFORMATION_TYPE,
             {"1", "0", "0", exportPath(form, form.exportStem)});
}

TEST_F(EventLogTest, ARepairThatExportsNothingNamesNoExport) {
  form.safeguards.exportsFirst = false;
  repair();
  expectOnly(LoggedEvent::RepairEnded, EVENTLOG_INFORMATION_TYPE, {"1", "0", "0", ""});
}

TEST_F(EventLogTest, ARepairWhoseExportCannotBeWrittenIsAWarning) {
  form.programFolder += " refused";
  makeFile(form.programFolder + "\\backup");
  repair();
  ASSERT_EQ(events().size(), 1U);
  EXPECT_EQ(events()[0].number, eventNumber(LoggedEvent::RepairRefused));
  EXPECT_EQ(events()[0].type, EVENTLOG_WARNING_TYPE);
  ASSERT_EQ(events()[0].texts.size(), 1U);
  EXPECT_TRUE(events()[0].texts[0].starts_with("Nothing was repaired: the safety export"));
}

TEST_F(EventLogTest, AnUndoSaysFromWhatOrWhyNot) {
  form.safeguards.protects = false;
  repair();
  const std::string path = exportPath(form, form.exportStem);
  undoLastRepair(form);
  makeFile(path, "no registry file");
  undoLastRepair(form);
  ASSERT_EQ(events().size(), 3U);
  EXPECT_EQ(events()[1].number, eventNumber(LoggedEvent::RepairUndone));
  EXPECT_EQ(events()[1].texts, std::vector<std::string>{path});
  EXPECT_EQ(events()[2].number, eventNumber(LoggedEvent::UndoRefused));
  EXPECT_TRUE(contains(events()[2].texts.at(0), path));
}

TEST_F(EventLogTest, AFailureIsAnError) {
  reportEvent(LoggedEvent::CommandFailed, {"why"});
  expectOnly(LoggedEvent::CommandFailed, EVENTLOG_ERROR_TYPE, {"why"});
}

// A portable copy, or a program that is no longer the one that was set up.
TEST_F(EventLogTest, NothingIsReportedInTheNameOfAnotherProgram) {
  registerSource("C:\\Elsewhere\\zelvreg-console.exe");
  repair();
  removeKey(source);
  reportEvent(LoggedEvent::CommandFailed, {"why"});
  EXPECT_TRUE(events().empty());
}

TEST_F(EventLogTest, NothingIsReportedOfAComputerThatIsRepairedFromOutside) {
  form.obeysComputer = false;
  repair();
  EXPECT_TRUE(events().empty());
}

TEST_F(EventLogTest, NothingIsReportedToTheLetter) {
  form.safeguards = asDescribed();
  scanFonts();
  EXPECT_TRUE(events().empty());
}

}  // namespace
}  // namespace zelvreg
