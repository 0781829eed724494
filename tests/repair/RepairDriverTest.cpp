#include "repair/RepairDriver.h"

#include "scan/Findings.h"
#include "shell/StartUp.h"
#include "support/ComputerFixture.h"

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
    form.repairsWithoutExport = true;
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

TEST_F(RepairDriverTest, ANoLeavesEverythingAsItWas) {
  setText(settings, "saveundo", "1");
  add("a");
  answer = Answer::No;
  runRepair(form);
  EXPECT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(storedText(user, "a"), "x");
  EXPECT_EQ(storedText(settings, "cnt"), "(none)");
  EXPECT_EQ(storedText(suite + "\\statics\\regscan", "count"), "(none)");
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

TEST_F(RepairDriverTest, NothingIsAskedWhereNobodySits) {
  for (int* mode : {&form.autoMode, &form.recheckMode, &form.recheckFix}) {
    *mode = 1;
    add("a");
    runRepair(form);
    EXPECT_EQ(form.View2.count(), 0U);
    *mode = 0;
  }
  EXPECT_TRUE(messages.empty());
}

TEST_F(RepairDriverTest, WithoutTheOptionNoJournalIsWritten) {
  add("a");
  runRepair(form);
  EXPECT_EQ(storedText(settings, "cnt"), "(none)");
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
