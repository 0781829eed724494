#include "undo/Journal.h"

#include "runtime/FileText.h"
#include "scan/Findings.h"
#include "support/ComputerFixture.h"
#include "text/Wide.h"
#include "undo/JournalFile.h"
#include "undo/UndoStores.h"

namespace zelvreg {
namespace {

const std::string settings =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\regscan";

class JournalTest : public fixture::ComputerFixture {
 protected:
  JournalTest() {
    emptyKey(settings);
    makeFolder(form.programFolder);
  }

  void addRow(const char* rootName, const char* kind = "2", const char* location = "location") {
    ScannerRun run;
    zelvreg::addRow(form, run, {location, "bad value", kind, rootName, "Software\\Key", "a"});
    form.View2.setChecked(form.View2.count(), true);
  }

  // The file of the newest entry.
  std::string newestJournal() {
    const std::string stem = undoStem(undoLabel(highestUndoNumber()));
    const std::string path = journalPath(form, stem);
    std::string text = readFileText(path).value_or("(none)");
    DeleteFileW(Wide(path).get());
    return text;
  }
};

TEST_F(JournalTest, TheTickedRowsAreJournalledInTheOrderOfTheList) {
  addRow("HKEY_LOCAL_MACHINE", "2", "first");
  addRow("HKEY_LOCAL_MACHINE", "2", "left out");
  form.View2.setChecked(2, false);
  addRow("HKEY_CLASSES_ROOT", "166", "last");
  writeJournal(form);
  const std::string file = newestJournal();
  ASSERT_EQ(file.size(), 604U);
  EXPECT_EQ(file.substr(0, 302), journalFile({{"2", "1", "Software\\Key", "bad value", "first"}}));
  EXPECT_EQ(file.substr(302), journalFile({{"16", "2", "Software\\Key", "bad value", "last"}}));
}

TEST_F(JournalTest, ARootIsADigitAndAnUnknownOneTheDigitOfTheRowBefore) {
  for (const char* root : {"no root", "HKEY_USERS", "no root", "hkey_current_user "}) {
    addRow(root);
  }
  writeJournal(form);
  const std::string file = newestJournal();
  ASSERT_EQ(file.size(), 4 * journalRecordSize);
  EXPECT_EQ(journalRecordAt(file, 1).hive, "");
  EXPECT_EQ(journalRecordAt(file, 2).hive, "4");
  EXPECT_EQ(journalRecordAt(file, 3).hive, "4");
  EXPECT_EQ(journalRecordAt(file, 4).hive, "3");
}

TEST_F(JournalTest, EachRunTakesTheNextNumberAndNotesLabelAndStem) {
  setText(settings, "cnt", "41");
  writeJournal(form);
  EXPECT_EQ(storedText(settings, "cnt"), "42");
  const std::string label = storedText(settings + "\\dates", "42");
  const std::string stem = storedText(settings + "\\file", label);
  ASSERT_EQ(stem.size(), 21U);
  EXPECT_EQ(stem.substr(10, 3), " t ");
  EXPECT_EQ(label.substr(0, 22), stem + " ");
  EXPECT_EQ(newestJournal(), "");
}

TEST_F(JournalTest, ANumberWithoutMeasureEndsAtTheLargestOneAndTheNextFollowsIt) {
  setText(settings, "cnt", "1e300");
  EXPECT_EQ(highestUndoNumber(), 2'147'483'647);
  writeJournal(form);
  EXPECT_EQ(storedText(settings, "cnt"), "2147483648");
}

TEST_F(JournalTest, AFolderThatCannotBeWrittenKeepsTheEntry) {
  form.programFolder = "C:\\JournalTest does not exist";
  addRow("HKEY_LOCAL_MACHINE");
  writeJournal(form);
  EXPECT_EQ(highestUndoNumber(), 1);
  EXPECT_EQ(newestJournal(), "(none)");
}

TEST_F(JournalTest, TheOptionIsKeptAsANumber) {
  form.Check1.value = true;
  Check1_Click(form);
  EXPECT_EQ(storedText(settings, "saveundo"), "1");
  form.Check1.value = false;
  Check1_Click(form);
  EXPECT_EQ(storedText(settings, "saveundo"), "0");
}

}  // namespace
}  // namespace zelvreg
