// Undo as it is with its safeguard in force.
#include <algorithm>

#include "repair/RepairDriver.h"
#include "runtime/FileText.h"
#include "runtime/PrivateFiles.h"
#include "scan/Findings.h"
#include "scan/OwnPaths.h"
#include "shell/StartUp.h"
#include "support/ComputerFixture.h"
#include "text/Wide.h"
#include "undo/JournalFile.h"
#include "undo/UndoPage.h"
#include "undo/UndoStores.h"

namespace zelvreg {
namespace {

const std::string settings =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\regscan";
const std::string target = "HKEY_LOCAL_MACHINE\\SOFTWARE\\UndoExportTest";

class UndoExportTest : public fixture::ComputerFixture {
 protected:
  UndoExportTest() {
    emptyKey(settings);
    emptyKey(target);
    form.programFolder = "C:\\UndoExportTest";
    form.safeguards = {};
    makeFolder(form.programFolder);
    bindClicks(form);
    form.dialogs.show = [this](const UserMessage& message) {
      messages.push_back(message.text);
      return Answer::Yes;
    };
  }
  ~UndoExportTest() override { removeKey(target); }

  // A value that is gone after its repair.
  void repair() {
    setText(target, "x", "data");
    form.View2.clear();
    form.View2.add("location");
    form.View2.setText(1, badValueColumn, "x");
    form.View2.setText(1, kindCodeColumn, "13");
    form.View2.setText(1, subKeyColumn, "SOFTWARE\\UndoExportTest");
    form.View2.setChecked(1, true);
    runRepair(form);
  }

  // The outcome of the repair offers to undo it.
  void undoFromResults() {
    messages.clear();
    form.UndoRepair.click();
  }

  void addEntry(const std::string& label, const std::string& stem) {
    setText(settings, "cnt", "1");
    setText(settings + "\\dates", "1", label);
    setText(settings + "\\file", label, stem);
  }

  void restoreFirst() {
    form.chameleonButton1.click();
    View3_ItemClick(form, 1);
    messages.clear();
    form.chameleonButton2.click();
  }

  std::vector<std::string> messages;
};

TEST_F(UndoExportTest, ARepairWithUndoOnIsLinkedToItsExportAndUndoneByIt) {
  setText(settings, "saveundo", "1");
  form.safeguards.protects = false;
  repair();
  ASSERT_FALSE(form.isRepairStopped);
  EXPECT_EQ(storedText(target, "x"), "(none)");
  EXPECT_EQ(storedText(settings + "\\export", undoLabel(1)), form.exportStem);
  EXPECT_NE(form.exportStem, "");
  for (int turn = 1; turn <= 2; ++turn) {
    restoreFirst();
    EXPECT_FALSE(form.isUndoRefused);
    EXPECT_EQ(messages, (std::vector<std::string>{"Finished Retriving undo data"}));
    EXPECT_EQ(storedText(target, "x"), "data");
  }
}

TEST_F(UndoExportTest, TheOutcomeOfARepairOffersToUndoItWithoutAJournal) {
  form.safeguards.protects = false;
  repair();
  ASSERT_TRUE(form.UndoRepair.visible);
  EXPECT_EQ(storedText(target, "x"), "(none)");
  undoFromResults();
  EXPECT_EQ(messages, (std::vector<std::string>{"Finished Retriving undo data"}));
  EXPECT_EQ(storedText(target, "x"), "data");
  EXPECT_FALSE(form.UndoRepair.visible);
  EXPECT_FALSE(form.OutcomeText.visible);
}

TEST_F(UndoExportTest, AnOfferThatCannotBeKeptSaysWhyAndStays) {
  form.safeguards.protects = false;
  repair();
  const std::string path = exportPath(form, form.exportStem);
  makeFile(path, "no registry file");
  undoFromResults();
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_NE(messages.front().find(path), std::string::npos) << messages.front();
  EXPECT_TRUE(form.isUndoRefused);
  EXPECT_TRUE(form.UndoRepair.visible);
  EXPECT_EQ(storedText(target, "x"), "(none)");
}

TEST_F(UndoExportTest, ExportJournalAndCopyAreClosedToOthers) {
  setText(settings, "saveundo", "1");
  form.safeguards.protects = false;
  form.Command30.click();
  repair();
  for (const std::string& path :
       {exportPath(form, form.exportStem), journalPath(form, undoStem(undoLabel(2))),
        form.programFolder + "\\backup\\fixreg\\" + undoStem(undoLabel(1)) + ".txt"}) {
    EXPECT_NE(readFileText(path), std::nullopt) << path;
    EXPECT_FALSE(couldOthersWrite(path)) << path;
    for (const fixture::AccessRecord& record : accessOfFile(path)) {
      // Everyone and Users
      EXPECT_NE(record.sid, (std::vector<BYTE>{1, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0})) << path;
      EXPECT_NE(record.sid, (std::vector<BYTE>{1, 2, 0, 0, 0, 0, 0, 5, 32, 0, 0, 0, 33, 2, 0, 0}))
          << path;
    }
  }
}

TEST_F(UndoExportTest, WithoutTheJournalNothingIsRepaired) {
  setText(settings, "saveundo", "1");
  form.safeguards.protects = false;
  std::string exported;
  form.Command21.bind([&] {
    exported = exportPath(form, form.exportStem);
    EXPECT_NE(readFileText(exported), std::nullopt);
    form.isJournalKept = false;
  });
  repair();
  EXPECT_TRUE(form.isRepairStopped);
  // Its export is of no use either.
  EXPECT_NE(exported, "");
  EXPECT_EQ(readFileText(exported), std::nullopt);
  EXPECT_EQ(storedText(target, "x"), "data");
  EXPECT_TRUE(std::ranges::any_of(messages, [](const std::string& text) {
    return text.starts_with("Nothing was repaired: the undo journal");
  }));
}

TEST_F(UndoExportTest, OnlyEntriesThatSomethingCanBeRestoredFromAreOffered) {
  addEntry("a journal", "journal");
  const std::string path = journalPath(form, "journal");
  for (const auto& [content, isOffered] :
       {std::pair<std::string, bool>{"", false},
        {journalFile({{"1", "3", "key", "value", "text"}}), false},
        {journalFile({{"1", "1", "key", "value", "text"}}), true}}) {
    makeFile(path, content);
    form.chameleonButton1.click();
    EXPECT_EQ(form.View3.count(), isOffered ? 1U : 0U) << content;
  }
  DeleteFileW(Wide(path).get());
  form.chameleonButton1.click();
  EXPECT_EQ(form.View3.count(), 0U);
  form.safeguards = asDescribed();
  form.chameleonButton1.click();
  EXPECT_EQ(form.View3.count(), 1U);
}

TEST_F(UndoExportTest, AStemIsAPlainName) {
  for (const char* stem :
       {"a", "31.01.2026 t 13.45.06", "20260131-134506-2", "comma", "con1", "журнал", "comб1"}) {
    EXPECT_TRUE(isPlainStem(stem)) << stem;
  }
  for (const char* stem : {"", " ", "..\\a", "a/b", "C:a", "a:b", "a*", "a\nb", "nul", "CON.x",
                           "Com1", "lpt9.y", "COM¹", "lptя", "a\"b", "a|b", "a<", "a>", "a?"}) {
    EXPECT_FALSE(isPlainStem(stem)) << stem;
  }
}

TEST_F(UndoExportTest, AStemThatLeadsElsewhereIsNeitherReadNorCreatedNorDeleted) {
  const std::string notes = "C:\\UndoExportTestNotes\\notes.txt";
  const std::string record = journalFile({{"13", "1", "SOFTWARE\\UndoExportTest", "y", "z"}});
  for (const bool isAsDescribed : {false, true}) {
    form.safeguards = isAsDescribed ? asDescribed() : Safeguards();
    makeFile(notes, record);
    addEntry("leads elsewhere", "..\\UndoExportTestNotes\\notes");
    form.chameleonButton1.click();
    EXPECT_EQ(form.View3.count(), isAsDescribed ? 1U : 0U);
    form.View3.clear();
    form.View3.add("leads elsewhere");
    View3_ItemClick(form, 1);
    messages.clear();
    form.chameleonButton2.click();
    EXPECT_TRUE(form.isUndoRefused);
    EXPECT_EQ(messages.size(), 1U);
    EXPECT_FALSE(hasKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\UndoExportTest"));
    form.chameleonButton3.click();
    EXPECT_EQ(readFileText(notes), record);
    EXPECT_EQ(storedText(settings + "\\dates", "1"), "(none)");
    DeleteFileW(Wide(notes).get());
    form.View3.add("leads elsewhere");
    View3_ItemClick(form, 1);
    form.chameleonButton2.click();
    EXPECT_EQ(readFileText(notes), std::nullopt);
  }
}

TEST_F(UndoExportTest, AHighCountCostsNoMoreThanItsEntries) {
  setText(settings, "cnt", "2147483647");
  setText(settings + "\\dates", "7", "seventh");
  setText(settings + "\\dates", "2000000000", "late");
  setText(settings + "\\dates", "07", "spelled otherwise");
  setText(settings + "\\dates", "x", "no number");
  setText(settings + "\\dates", std::string(100, '1'), "too long");
  int turns = 0;
  form.messages.serveHost = [&turns] { ++turns; };
  form.safeguards = asDescribed();
  form.chameleonButton1.click();
  EXPECT_EQ(turns, 2);
  ASSERT_EQ(form.View3.count(), 2U);
  EXPECT_EQ(form.View3.text(2, 0), "late");
  View3_ItemClick(form, 2);
  form.chameleonButton3.click();
  EXPECT_EQ(storedText(settings + "\\dates", "2000000000"), "(none)");
  EXPECT_EQ(storedText(settings + "\\dates", "7"), "seventh");
}

}  // namespace
}  // namespace zelvreg
