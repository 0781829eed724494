// Only the clock of the emulated computer stands still between two runs, and only its reads fail.
#include "machine/Machine.h"
#include "machine/base/FaultPlan.h"
#include "machine/computer/Clock.h"
#include "runtime/FileText.h"
#include "scan/Findings.h"
#include "support/ComputerFixture.h"
#include "undo/Journal.h"
#include "undo/JournalFile.h"
#include "undo/UndoContent.h"
#include "undo/UndoPage.h"
#include "undo/UndoRestore.h"
#include "undo/UndoStores.h"

namespace zelvreg {
namespace {

using Texts = std::vector<std::string>;

const std::string settings =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\regscan";

class JournalsOfASecondTest : public fixture::ComputerFixture {
 protected:
  JournalsOfASecondTest() { makeFolder(form.programFolder); }

  // A journal of these rows, named by their locations.
  void journal(const std::vector<const char*>& locations) {
    form.View2.clear();
    for (const char* location : locations) {
      ScannerRun run;
      addRow(form, run, {location, "bad", "2", "HKEY_LOCAL_MACHINE", "Software\\Key", "a"});
      form.View2.setChecked(form.View2.count(), true);
    }
    writeJournal(form);
  }
  // The locations in the journal of that stem.
  [[nodiscard]] Texts records(const std::string& stem) const {
    const std::string file = readFileText(form.programFolder + "\\" + stem + ".txt").value_or("");
    Texts texts;
    for (std::size_t number = 1; number <= journalRecordCount(file); ++number) {
      texts.push_back(journalRecordAt(file, number).text);
    }
    return texts;
  }
  Texts listed() {
    chameleonButton1_Click(form);
    Texts texts;
    for (std::size_t row = 1; row <= form.View3.count(); ++row) {
      texts.push_back(form.View3.text(row, 0));
    }
    return texts;
  }
};

const std::string stem = "31.01.2026 t 13.45.06";
const std::string label = stem + " 13:45:06";

TEST_F(JournalsOfASecondTest, DateAndTimeNameTheFileAndTheEntry) {
  journal({"first"});
  EXPECT_EQ(storedText(settings + "\\dates", "1"), label);
  EXPECT_EQ(storedText(settings + "\\file", label), stem);
  EXPECT_EQ(records(stem), (Texts{"first"}));
}

TEST_F(JournalsOfASecondTest, TheTimeIsReadAgainForTheLabel) {
  machine::Machine::current()->clock().advanceAtEachLook(1000);
  journal({"first"});
  const std::string later = stem + " 13:45:07";
  EXPECT_EQ(storedText(settings + "\\dates", "1"), later);
  EXPECT_EQ(storedText(settings + "\\file", later), stem);
  EXPECT_EQ(records(stem), (Texts{"first"}));
}

TEST_F(JournalsOfASecondTest, TheLaterIsWrittenOverTheBeginningOfTheEarlier) {
  journal({"first", "second"});
  journal({"third"});
  EXPECT_EQ(records(stem), (Texts{"third", "second"}));
  journal({"fourth", "fifth", "sixth"});
  EXPECT_EQ(records(stem), (Texts{"fourth", "fifth", "sixth"}));
  EXPECT_EQ(storedText(settings, "cnt"), "3");
  EXPECT_EQ(storedText(settings + "\\file", label), stem);
  EXPECT_EQ(listed(), (Texts{label, label, label}));
}

TEST_F(JournalsOfASecondTest, TheEarlierStaysIfItCannotBeRead) {
  journal({"first", "second"});
  auto& faults = machine::Machine::current()->faults();
  faults.clear();
  faults.fail(machine::ApiCall::ReadFile, 1, ERROR_ACCESS_DENIED);
  journal({"third"});
  faults.clear();
  EXPECT_EQ(records(stem), (Texts{"first", "second"}));
  EXPECT_EQ(storedText(settings, "cnt"), "2");
}

TEST_F(JournalsOfASecondTest, NoEntryIsReplacedWhenTheHighestNumberCannotBeRead) {
  journal({"first"});
  machine::Machine::current()->clock().advance(1000);
  auto& faults = machine::Machine::current()->faults();
  faults.failFrom(machine::ApiCall::RegQueryValue, 1, ERROR_NOT_ENOUGH_MEMORY);
  journal({"second"});
  EXPECT_FALSE(form.isJournalKept);
  faults.clear();
  EXPECT_EQ(listed(), (Texts{label}));
}

TEST_F(JournalsOfASecondTest, AListThatCannotBeReadAsAWholeSaysSo) {
  journal({"first"});
  auto& faults = machine::Machine::current()->faults();
  for (const auto call : {machine::ApiCall::RegOpenKey, machine::ApiCall::RegQueryValue,
                          machine::ApiCall::RegEnumValue}) {
    faults.failFrom(call, 1, ERROR_NOT_ENOUGH_MEMORY);
    listed();
    EXPECT_TRUE(isUndoListUnread());
    faults.clear();
    EXPECT_EQ(listed(), (Texts{label}));
    EXPECT_FALSE(isUndoListUnread());
  }
}

TEST_F(JournalsOfASecondTest, WhatTheRegistryRefusesIsCounted) {
  const std::string file = journalFile({{"13", "1", "Software\\Key", "name", "text"}});
  EXPECT_EQ(restoreJournal(form, file), 0U);
  machine::Machine::current()->faults().failFrom(machine::ApiCall::RegSetValue, 1,
                                                 ERROR_ACCESS_DENIED);
  EXPECT_EQ(restoreJournal(form, file), 1U);
}

TEST_F(JournalsOfASecondTest, ASecondLaterThereIsANewFile) {
  journal({"first"});
  machine::Machine::current()->clock().advance(1000);
  journal({"second"});
  EXPECT_EQ(records(stem), (Texts{"first"}));
  EXPECT_EQ(records("31.01.2026 t 13.45.07"), (Texts{"second"}));
}

TEST_F(JournalsOfASecondTest, RowsWithoutATickGiveAnEmptyFileAndAnEntry) {
  form.View2.add("unticked");
  writeJournal(form);
  EXPECT_EQ(readFileText(form.programFolder + "\\" + stem + ".txt"), "");
  EXPECT_EQ(listed(), (Texts{label}));
}

TEST_F(JournalsOfASecondTest, EachRowServesTheMessageQueue) {
  int turns = 0;
  form.messages.serveHost = [&turns] { ++turns; };
  form.View2.add("unticked");
  form.View2.add("unticked");
  writeJournal(form);
  EXPECT_EQ(turns, 2);
}

TEST_F(JournalsOfASecondTest, OneThatCannotBeReadIsRefusedAndStays) {
  journal({"first"});
  for (const auto call : {machine::ApiCall::CreateFile, machine::ApiCall::ReadFile}) {
    listed();
    View3_ItemClick(form, 1);
    auto& faults = machine::Machine::current()->faults();
    faults.clear();
    undoContent(form, label);
    const std::uint64_t whenLookedAt = faults.calls(call);
    faults.clear();
    faults.fail(call, whenLookedAt + 1, ERROR_ACCESS_DENIED);
    chameleonButton2_Click(form);
    faults.clear();
    EXPECT_TRUE(form.isUndoRefused);
    EXPECT_EQ(records(stem), (Texts{"first"}));
  }
}

TEST_F(JournalsOfASecondTest, OneThatCannotBeReadIsStillListed) {
  journal({"first"});
  machine::Machine::current()->faults().failFrom(machine::ApiCall::ReadFile, 1,
                                                 ERROR_ACCESS_DENIED);
  EXPECT_EQ(listed(), (Texts{label}));
}

}  // namespace
}  // namespace zelvreg
