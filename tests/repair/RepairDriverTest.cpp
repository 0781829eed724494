#include "repair/RepairDriver.h"

#include "languages/Texts.h"
#include "runtime/Directory.h"
#include "runtime/FileText.h"
#include "scan/Findings.h"
#include "scan/OwnPaths.h"
#include "shell/StartUp.h"
#include "support/ComputerFixture.h"
#include "support/PlantedEvidence.h"
#include "text/Wide.h"
#include "undo/JournalFile.h"
#include "undo/UndoStores.h"

namespace zelvreg {
namespace {

const std::string suite =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe";
const std::string settings = suite + "\\regscan";
const std::string user = "HKEY_CURRENT_USER\\Software\\RepairDriverTest";

class RepairDriverTest : public fixture::ComputerFixture {
 protected:
  RepairDriverTest() {
    emptyKey(suite);
    emptyKey(user);
    bindClicks(form);
    form.dialogs.show = [this](const UserMessage& message) {
      messages.push_back(message);
      return answer;
    };
  }
  ~RepairDriverTest() override { removeKey(user); }

  void add(const char* name, const char* kind = "155") {
    setText(user, name, "x");
    ScannerRun run;
    addRow(form, run, {"x", name, kind, "HKEY_CURRENT_USER", "Software\\RepairDriverTest", "mr"});
    form.View2.setChecked(form.View2.count(), true);
  }

  Answer answer = Answer::Yes;
  std::vector<UserMessage> messages;
};

TEST_F(RepairDriverTest, AsksOnceWithAQuestion) {
  add("a");
  runRepair(form);
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_EQ(messages[0].text, "Do You want to Fix selected items");
  EXPECT_TRUE(messages[0].isQuestion);
  EXPECT_EQ(messages[0].icon, MessageIcon::Question);
}

TEST_F(RepairDriverTest, TheQuestionSaysHowSureTheRowsAreUnlessThatIsLifted) {
  form.safeguards.careful = true;
  add("a");
  fixture::plantEvidence(form, 1, {.confidence = Confidence::Likely, .reasons = {}, .tested = {}});
  add("b");
  form.View2.setChecked(2, false);
  answer = Answer::No;
  runRepair(form);
  form.safeguards.careful = false;
  runRepair(form);
  ASSERT_EQ(messages.size(), 2U);
  EXPECT_EQ(messages[0].text,
            "Do You want to Fix selected items\n\n"
            "none surely dead, 1 likely, 1 unsure and left alone");
  EXPECT_EQ(messages[1].text, "Do You want to Fix selected items");
}

TEST_F(RepairDriverTest, TheQuestionCountsTickedRowsThatTheFilterHides) {
  add("a");
  add("b");
  add("c");
  form.View2.setChecked(3, false);
  form.View2.setHidden(2, true);
  form.View2.setHidden(3, true);
  answer = Answer::No;
  runRepair(form);
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_EQ(messages[0].text,
            "Do You want to Fix selected items\n\n" + textOf(form, "fix-hidden", {"1"}));
}

TEST_F(RepairDriverTest, ANoLeavesEverythingAsItWas) {
  setText(settings, "saveundo", "1");
  add("a");
  form.Label3.caption = "before";
  answer = Answer::No;
  runRepair(form);
  EXPECT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(storedText(user, "a"), "x");
  EXPECT_EQ(storedText(settings, "cnt"), "(none)");
  EXPECT_EQ(storedText(suite + "\\statics\\regscan", "count"), "(none)");
  EXPECT_EQ(storedText(suite + "\\wizard\\finish", "1"), "(none)");
  EXPECT_FALSE(hasKey(settings + "\\dates"));
  EXPECT_EQ(form.Label3.caption.get(), "before");
}

TEST_F(RepairDriverTest, AllRowsRepairedClearTheStatusLine) {
  add("a");
  add("b");
  form.Label3.caption = "before";
  runRepair(form);
  EXPECT_EQ(form.View2.count(), 0U);
  EXPECT_EQ(form.Label3.caption.get(), "");
  EXPECT_EQ(storedText(suite + "\\statics\\regscan", "count"), "2");
  EXPECT_EQ(storedText(suite + "\\wizard\\finish", "1"), "1");
}

TEST_F(RepairDriverTest, RowsThatAreLeftAreCounted) {
  setText(suite + "\\statics\\regscan", "count", "40");
  add("a");
  add("b", "4711");
  add("c");
  form.View2.setChecked(3, false);
  runRepair(form);
  EXPECT_EQ(form.View2.count(), 2U);
  EXPECT_EQ(form.Label3.caption.get(), "2 Problem(s) Still There ");
  EXPECT_EQ(storedText(suite + "\\statics\\regscan", "count"), "41");
}

// Notes what a label is given, and what it shows each time that it is painted.
class WatchedLabel : public ControlPeer {
 public:
  explicit WatchedLabel(Label& watched) : label(watched) { label.attach(this); }
  WatchedLabel(const WatchedLabel&) = delete;
  WatchedLabel& operator=(const WatchedLabel&) = delete;
  ~WatchedLabel() override { label.attach(nullptr); }
  void changed(const Control& /*control*/, Change what, std::size_t /*row*/) override {
    (what == Change::Repaint ? painted : given).push_back(label.caption);
  }

  Label& label;
  std::vector<std::string> given;
  std::vector<std::string> painted;
};

TEST_F(RepairDriverTest, AListThatIsEmptyBeforeTheLastRoutineIsNeverCounted) {
  add("a");
  const WatchedLabel watched(form.Label3);
  runRepair(form);
  EXPECT_EQ(watched.given, (std::vector<std::string>{""}));
  EXPECT_TRUE(watched.painted.empty());
}

TEST_F(RepairDriverTest, AListThatTheLastRoutineEmptiesIsCountedFirst) {
  add("a", "166");
  const WatchedLabel watched(form.Label3);
  runRepair(form);
  EXPECT_EQ(watched.given, (std::vector<std::string>{"0 Problem(s) Still There ", ""}));
  EXPECT_EQ(watched.painted, (std::vector<std::string>{"0 Problem(s) Still There "}));
}

// Notes the rows that are taken off a list.
class RemovedRows : public ControlPeer {
 public:
  void changed(const Control& /*control*/, Change what, std::size_t row) override {
    if (what == Change::Rows) {
      rows.push_back(row);
    }
  }

  std::vector<std::size_t> rows;
};

TEST_F(RepairDriverTest, KindsGoInAFixedOrder) {
  const std::vector<const char*> kinds{"11", "10", "9",   "8",   "71",  "72", "122", "7",
                                       "6",  "5",  "4",   "55",  "56",  "3",  "2",   "1",
                                       "12", "13", "133", "144", "155", "166"};
  for (const char* kind : kinds) {
    add("a", kind);
  }
  RemovedRows removed;
  form.View2.attach(&removed);
  runRepair(form);
  form.View2.attach(nullptr);
  // Listed in that order, it is the top row each time.
  EXPECT_EQ(removed.rows, std::vector<std::size_t>(kinds.size(), 1));
}

TEST_F(RepairDriverTest, AFractionInTheCounterIsCountedOn) {
  setText(suite + "\\statics\\regscan", "count", "40.5");
  form.orubutton2.click();
  EXPECT_EQ(storedText(suite + "\\statics\\regscan", "count"), "40.5");
}

TEST_F(RepairDriverTest, NoTickRepairsNothingAndCountsAllRows) {
  add("a");
  form.View2.setChecked(1, false);
  runRepair(form);
  EXPECT_EQ(form.Label3.caption.get(), "1 Problem(s) Still There ");
  EXPECT_EQ(storedText(user, "a"), "x");
  EXPECT_EQ(storedText(suite + "\\statics\\regscan", "count"), "0");
}

TEST_F(RepairDriverTest, AnEmptyListStillJournalsAndKeepsItsCounters) {
  setText(settings, "saveundo", "1");
  setText(suite + "\\statics\\regscan", "count", "7");
  form.Label3.caption = "before";
  runRepair(form);
  EXPECT_EQ(storedText(settings, "cnt"), "1");
  EXPECT_EQ(storedText(suite + "\\statics\\regscan", "count"), "7");
  EXPECT_EQ(storedText(suite + "\\wizard\\finish", "1"), "1");
  EXPECT_EQ(form.Label3.caption.get(), "");
}

TEST_F(RepairDriverTest, NothingIsAskedWhereNobodyCanAnswer) {
  for (const auto& [mode, value] : {std::pair{&form.autoMode, 1},
                                    {&form.autoMode, 2},
                                    {&form.recheckMode, 1},
                                    {&form.recheckFix, 1}}) {
    *mode = value;
    add("a");
    runRepair(form);
    EXPECT_EQ(form.View2.count(), 0U);
    *mode = 0;
  }
  EXPECT_TRUE(messages.empty());
}

TEST_F(RepairDriverTest, NothingGoesWhileItIsNotKnownWhatIsExcluded) {
  form.programFolder = "C:\\RepairDriverTestExcluded";
  form.safeguards.protects = true;
  // What is there and cannot be read: a folder in the place of the file.
  makeFolder(exclusionPath(form));
  add("a");
  form.Command29.click();
  runRepair(form);
  EXPECT_TRUE(form.isRepairStopped);
  EXPECT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(storedText(user, "a"), "x");
  ASSERT_EQ(messages.size(), 2U);
  EXPECT_NE(messages[1].text.find(exclusionPath(form)), std::string::npos) << messages[1].text;
  form.safeguards.protects = false;
  runRepair(form);
  EXPECT_EQ(storedText(user, "a"), "(none)");
}

TEST_F(RepairDriverTest, WithoutTheOptionNoJournalIsWritten) {
  form.programFolder = "C:\\RepairDriverTest";
  makeFolder(form.programFolder);
  for (const char* option : {"", "0", "11", "on"}) {
    setText(settings, "saveundo", option);
    add("a");
    runRepair(form);
    EXPECT_EQ(form.View2.count(), 0U);
  }
  EXPECT_EQ(storedText(settings, "cnt"), "(none)");
  EXPECT_FALSE(hasKey(settings + "\\dates"));
  EXPECT_FALSE(hasKey(settings + "\\file"));
  EXPECT_EQ(Dir(form.programFolder + "\\*"), "");
}

TEST_F(RepairDriverTest, TheOptionIsReadAsANumber) {
  for (const char* option : {"1", " 1.0", "1 for on"}) {
    setText(settings, "saveundo", option);
    runRepair(form);
    DeleteFileW(Wide(journalPath(form, undoStem(undoLabel(highestUndoNumber())))).get());
  }
  EXPECT_EQ(storedText(settings, "cnt"), "3");
}

TEST_F(RepairDriverTest, TheJournalHoldsAllTickedRowsWhateverTheirKind) {
  makeFolder(form.programFolder);
  setText(settings, "saveundo", "1");
  add("a");
  add("b", "4711");
  add("c");
  form.View2.setChecked(3, false);
  runRepair(form);
  const std::string path = journalPath(form, undoStem(undoLabel(1)));
  const std::string file = readFileText(path).value_or("");
  DeleteFileW(Wide(path).get());
  ASSERT_EQ(file.size(), 2 * journalRecordSize);
  EXPECT_EQ(journalRecordAt(file, 1).value, "a");
  EXPECT_EQ(journalRecordAt(file, 2).value, "b");
  EXPECT_EQ(journalRecordAt(file, 2).kind, "47");
}

TEST_F(RepairDriverTest, TheUsersFixCopiesTheListFirstAndGuardsThreeButtons) {
  add("a");
  bool wereDisabled = false;
  form.dialogs.show = [&](const UserMessage&) {
    wereDisabled = !form.cmd_search.enabled && !form.cmd_exclud.enabled && !form.cmd_start.enabled;
    return Answer::No;
  };
  form.cmd_fix.click();
  EXPECT_TRUE(wereDisabled);
  EXPECT_TRUE(form.cmd_search.enabled);
  EXPECT_TRUE(form.cmd_exclud.enabled);
  EXPECT_TRUE(form.cmd_start.enabled);
  EXPECT_EQ(storedText(settings, "cnt"), "1");
}

TEST_F(RepairDriverTest, TheSharedKindGoesToTheFirewallBeforeTheUsersClasses) {
  add("class", "11");
  runRepair(form);
  EXPECT_EQ(form.View2.count(), 0U);
  EXPECT_EQ(storedText(user, "class"), "x");
}

}  // namespace
}  // namespace zelvreg
