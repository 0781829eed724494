// The command bar, the tool bar that repeats it, and the menu of the results.
#include <array>

#include "form/Form42.h"
#include "runtime/FileText.h"
#include "shell/Navigation.h"
#include "shell/PressFixture.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

const std::string suite =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe";
const std::string user = "HKEY_CURRENT_USER\\Software\\CommandBarTest";
const std::string folder = "C:\\CommandBarTest";

class CommandBarTest : public PressFixture {
 protected:
  CommandBarTest() {
    emptyKey(suite);
    emptyKey(user);
    makeFolder(folder);
    form.programFolder = folder;
    form.dialogs.show = [this](const UserMessage& message) {
      asked.push_back(message.text);
      atQuestion();
      return Answer::Yes;
    };
  }
  ~CommandBarTest() override {
    DeleteFileW(Wide(pathOfCopy()).get());
    DeleteFileW(Wide(folder + "\\exregscan.txt").get());
    removeKey(user);
  }

  void add(const char* name) {
    setText(user, name, "x");
    const std::size_t row = form.View2.add(std::string("location of ") + name);
    form.View2.setText(row, 1, name);
    form.View2.setText(row, 2, "155");
    form.View2.setText(row, 3, "HKEY_CURRENT_USER");
    form.View2.setText(row, 4, "Software\\CommandBarTest");
  }

  // The list of what is to be repaired, which is written before the repair.
  static std::string pathOfCopy() {
    return folder + "\\backup\\fixreg\\" + storedText(suite + "\\regscan\\dates", "1") + ".txt";
  }
  static std::string copy() { return readFileText(pathOfCopy()).value_or("(none)"); }

  // Presses a button that repairs, and checks when it asks.
  void expectRepairAfterItsCopy(const std::function<void()>& press) {
    add("a");
    add("b");
    form.View2.setChecked(1, true);
    std::string copyAtQuestion;
    std::string valueAtQuestion;
    atQuestion = [&] {
      copyAtQuestion = copy();
      valueAtQuestion = storedText(user, "a");
    };
    press();
    EXPECT_EQ(asked, std::vector<std::string>{"Do You want to Fix selected items"});
    EXPECT_EQ(copyAtQuestion, "HKEY_CURRENT_USER,Software\\CommandBarTest,a,location of a\r\n\r\n");
    EXPECT_EQ(valueAtQuestion, "x");
    EXPECT_EQ(storedText(user, "a"), "(none)");
    EXPECT_EQ(storedText(user, "b"), "x");
  }

  std::vector<std::string> asked;
  std::function<void()> atQuestion = [] {};
};

TEST_F(CommandBarTest, SearchOpensTheOptionsAndDoesNotScan) {
  form.wizardPage = 1;
  expectAfter([this] { form.cmd_search.click(); },
              {.shown = {&form.Frame1},
               .hidden = {&form.Frame2, &form.Frame3, &form.Frame7, &form.Picture1},
               .enabled = {&form.cmd_start},
               .disabled = {&form.cmd_fix, &form.cmd_all, &form.cmd_non, &form.cmd_report}});
  EXPECT_EQ(form.wizardPage, 0);
  EXPECT_FALSE(form.Frame8.visible);
  EXPECT_EQ(form.Text2.text(), "");
  EXPECT_TRUE(asked.empty());
}

TEST_F(CommandBarTest, ExclusionsOpensItsPage) {
  expectAfter([this] { form.cmd_exclud.click(); },
              {.shown = {&form.Frame7},
               .hidden = {&form.Frame1, &form.Frame2, &form.Frame3, &form.Picture1},
               .enabled = {&form.cmd_start},
               .disabled = {&form.cmd_fix, &form.cmd_all, &form.cmd_non, &form.cmd_report}});
  EXPECT_EQ(form.wizardPage, 1);
}

TEST_F(CommandBarTest, FixSavesACopyOfItsListBeforeItRepairs) {
  expectRepairAfterItsCopy([this] { form.cmd_fix.click(); });
}

TEST_F(CommandBarTest, NothingElseCanBeStartedDuringAFix) {
  const std::array<Button*, 3> others{&form.cmd_search, &form.cmd_exclud, &form.cmd_start};
  int seen = 0;
  form.chameleonButton15.bind([&] {
    ++seen;
    for (const Button* button : others) {
      EXPECT_FALSE(button->enabled) << button->caption.get();
    }
  });
  form.cmd_fix.click();
  EXPECT_EQ(seen, 1);
  for (const Button* button : others) {
    EXPECT_TRUE(button->enabled) << button->caption.get();
  }
}

TEST_F(CommandBarTest, EachButtonOfTheToolBarPressesItsOwnButtonAndAGapNone) {
  const std::array<std::pair<Button*, const char*>, 8> commands{{{&form.cmd_search, "search"},
                                                                 {&form.cmd_exclud, "exclud"},
                                                                 {&form.cmd_start, "start"},
                                                                 {&form.cmd_fix, "fix"},
                                                                 {&form.cmd_cancel, "cancel"},
                                                                 {&form.cmd_all, "all"},
                                                                 {&form.cmd_non, "non"},
                                                                 {&form.cmd_report, "report"}}};
  std::string pressed;
  for (const auto& [button, name] : commands) {
    button->bind([&pressed, text = name] { pressed += text; });
  }
  const std::array<const char*, 14> expected{"", "search", "exclud", "", "start",  "fix", "cancel",
                                             "", "all",    "non",    "", "report", "",    ""};
  for (std::size_t index = 0; index < expected.size(); ++index) {
    pressed.clear();
    Toolbar1_ButtonClick(form, index);
    EXPECT_EQ(pressed, expected[index]) << index;
  }
}

TEST_F(CommandBarTest, TheMenuTicksAllRowsOrNone) {
  add("a");
  add("b");
  form.View2.setSelected(2, true);
  form.b.click();
  EXPECT_TRUE(form.View2.isChecked(1));
  EXPECT_TRUE(form.View2.isChecked(2));
  EXPECT_TRUE(form.View2.isSelected(2));
  form.c.click();
  EXPECT_FALSE(form.View2.isChecked(1));
  EXPECT_FALSE(form.View2.isChecked(2));
  EXPECT_FALSE(form.View2.isSelected(2));
}

TEST_F(CommandBarTest, TheMenuExcludesTheHighlightedRows) {
  add("a");
  add("b");
  form.View2.setChecked(1, true);
  form.View2.setSelected(2, true);
  form.g.click();
  ASSERT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(form.View2.text(1, 1), "a");
  EXPECT_EQ(readFileText(folder + "\\exregscan.txt"),
            "HKEY_CURRENT_USER\\Software\\CommandBarTest\r\n");
}

TEST_F(CommandBarTest, TheMenuRepairsAfterItsCopyAsWell) {
  expectRepairAfterItsCopy([this] { form.i.click(); });
}

TEST_F(CommandBarTest, TheButtonOfTheResultsRepairsAfterItsCopyAsWell) {
  expectRepairAfterItsCopy([this] { form.chameleonButton15.click(); });
}

TEST_F(CommandBarTest, TheOtherButtonOfTheResultsRepairsWithoutACopy) {
  add("a");
  form.View2.setChecked(1, true);
  form.orubutton2.click();
  EXPECT_EQ(storedText(user, "a"), "(none)");
  EXPECT_EQ(storedText(suite + "\\regscan\\dates", "1"), "(none)");
}

}  // namespace
}  // namespace zelvreg
