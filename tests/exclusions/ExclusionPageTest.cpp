// The exclusions page and its dialog.
#include "exclusions/ExclusionFixture.h"
#include "form/Form42.h"

namespace zelvreg {
namespace {

class ExclusionPageTest : public ExclusionFixture {
 protected:
  ExclusionPageTest() {
    form.dialogs.show = [this](const UserMessage& message) {
      messages.push_back(message);
      return answer;
    };
  }

  // Three entries, in the file and on the page.
  void fill() {
    write(threeLines);
    form.chameleonButton7.click();
  }
  // What the user types into the dialog before OK.
  void typeAndPressOk(const std::string& text) {
    form.Form1.show = [this, text](ExclusionDialog& dialog) {
      wasOpen = dialog.isOpen;
      offered = dialog.Text1.text();
      editedRow = dialog.Text2.text();
      dialog.Text1.setText(text);
      dialog.orubutton1.click();
    };
  }

  const std::string threeLines = "HKEY_USERS\\a\r\nHKEY_USERS\\b\r\nHKEY_USERS\\c\r\n";
  const Texts threeEntries{"HKEY_USERS\\a", "HKEY_USERS\\b", "HKEY_USERS\\c"};
  Answer answer = Answer::Yes;
  std::vector<UserMessage> messages;
  bool wasOpen = false;
  std::string offered = "(not asked)";
  std::string editedRow = "(not asked)";
};

TEST_F(ExclusionPageTest, OpeningThePageFillsIt) {
  form.Frame7.visible = false;
  form.View4.add("old");
  fill();
  EXPECT_EQ(entries(), threeEntries);
  EXPECT_TRUE(form.Frame7.visible);
  EXPECT_EQ(form.wizardPage, 1);
}

TEST_F(ExclusionPageTest, TheCommandBarOpensThePageAndClosesFourOfItsButtons) {
  write(threeLines);
  form.cmd_exclud.click();
  EXPECT_EQ(entries(), threeEntries);
  for (const Button* button : {&form.cmd_fix, &form.cmd_all, &form.cmd_non, &form.cmd_report}) {
    EXPECT_FALSE(button->enabled);
  }
}

TEST_F(ExclusionPageTest, AClickedRowIsRememberedAndAllowsToEditAndRemove) {
  fill();
  form.chameleonButton6.enabled = false;
  form.chameleonButton8.enabled = false;
  View4_ItemClick(form, 2);
  EXPECT_EQ(form.Text3.text(), "2");
  EXPECT_TRUE(form.chameleonButton6.enabled);
  EXPECT_TRUE(form.chameleonButton8.enabled);
}

TEST_F(ExclusionPageTest, ANewEntryGoesToTheEndOfListAndFile) {
  fill();
  form.Form1.Text2.setText("3");
  typeAndPressOk("HKEY_USERS\\d");
  form.chameleonButton5.click();
  EXPECT_TRUE(wasOpen);
  EXPECT_EQ(editedRow, "");
  EXPECT_EQ(form.View4.text(4, 0), "HKEY_USERS\\d");
  EXPECT_EQ(content(), threeLines + "HKEY_USERS\\d\r\n");
  EXPECT_FALSE(form.Form1.isOpen);
}

TEST_F(ExclusionPageTest, BlanksAroundANewEntryReachTheFileOnly) {
  typeAndPressOk("  HKEY_USERS\\d ");
  form.chameleonButton5.click();
  EXPECT_EQ(entries(), (Texts{"HKEY_USERS\\d"}));
  EXPECT_EQ(content(), "  HKEY_USERS\\d \r\n");
}

TEST_F(ExclusionPageTest, AnEmptyEntryReachesTheListOnly) {
  fill();
  typeAndPressOk("  ");
  form.chameleonButton5.click();
  ASSERT_EQ(form.View4.count(), 4U);
  EXPECT_EQ(form.View4.text(4, 0), "");
  EXPECT_EQ(content(), threeLines);
}

TEST_F(ExclusionPageTest, ARowNumberOfZeroIsANewEntry) {
  fill();
  form.Form1.Text1.setText("HKEY_USERS\\d");
  form.Form1.Text2.setText("0");
  form.Form1.orubutton1.click();
  EXPECT_EQ(form.View4.count(), 4U);
  EXPECT_EQ(content(), threeLines + "HKEY_USERS\\d\r\n");
}

TEST_F(ExclusionPageTest, AnEditChangesItsRowAndRewritesTheFile) {
  fill();
  View4_ItemClick(form, 2);
  typeAndPressOk("  HKEY_USERS\\new ");
  form.chameleonButton8.click();
  EXPECT_EQ(offered, "HKEY_USERS\\b");
  EXPECT_EQ(editedRow, "2");
  EXPECT_EQ(entries(), (Texts{"HKEY_USERS\\a", "HKEY_USERS\\new", "HKEY_USERS\\c"}));
  EXPECT_EQ(content(), "HKEY_USERS\\a\r\nHKEY_USERS\\new\r\nHKEY_USERS\\c\r\n");
  EXPECT_EQ(form.Text6.text(), "");
  EXPECT_FALSE(form.Form1.isOpen);
}

TEST_F(ExclusionPageTest, AnEditToNothingStaysAsABlankRowAndLeavesTheFile) {
  fill();
  View4_ItemClick(form, 1);
  typeAndPressOk(" ");
  form.chameleonButton8.click();
  EXPECT_EQ(entries(), (Texts{"", "HKEY_USERS\\b", "HKEY_USERS\\c"}));
  EXPECT_EQ(content(), "HKEY_USERS\\b\r\nHKEY_USERS\\c\r\n");
}

TEST_F(ExclusionPageTest, BothOtherButtonsOnlyCloseTheDialog) {
  fill();
  for (Button* button : {&form.Form1.orubutton10, &form.Form1.chameleonButton3}) {
    form.Form1.show = [button](ExclusionDialog& dialog) {
      dialog.Text1.setText("HKEY_USERS\\d");
      button->click();
    };
    form.chameleonButton5.click();
    EXPECT_FALSE(form.Form1.isOpen);
    EXPECT_EQ(entries(), threeEntries);
    EXPECT_EQ(content(), threeLines);
  }
}

TEST_F(ExclusionPageTest, OnlyAOneInTheHiddenTextWritesTheFile) {
  write(threeLines);
  form.View4.add("one");
  for (const char* text : {"", "0", "2", "x"}) {
    form.Text6.setText(text);
    EXPECT_EQ(content(), threeLines);
  }
  form.Text6.setText("1");
  EXPECT_EQ(content(), "one\r\n");
  EXPECT_EQ(form.Text6.text(), "");
}

TEST_F(ExclusionPageTest, AListOfBlankRowsLeavesNoFileAfterTheHiddenText) {
  write(threeLines);
  form.View4.add("  ");
  form.Text6.setText("1");
  EXPECT_EQ(content(), "(none)");
}

TEST_F(ExclusionPageTest, RemovingAsksWithAnExclamation) {
  fill();
  form.chameleonButton6.click();
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_EQ(messages[0].title, "Remove");
  EXPECT_EQ(messages[0].text,
            "Are you sure you would like to remove the selected Exclusion text from the list?");
  EXPECT_EQ(messages[0].icon, MessageIcon::Exclamation);
  EXPECT_TRUE(messages[0].isQuestion);
}

TEST_F(ExclusionPageTest, YesRemovesAllHighlightedEntries) {
  fill();
  form.View4.setSelected(1, true);
  form.View4.setSelected(2, true);
  form.chameleonButton6.click();
  EXPECT_EQ(entries(), (Texts{"HKEY_USERS\\c"}));
  EXPECT_EQ(content(), "HKEY_USERS\\c\r\n");
}

TEST_F(ExclusionPageTest, NoRemovesNothing) {
  fill();
  form.View4.setSelected(1, true);
  answer = Answer::No;
  form.chameleonButton6.click();
  EXPECT_EQ(entries(), threeEntries);
  EXPECT_EQ(content(), threeLines);
}

TEST_F(ExclusionPageTest, BlankRowsSurviveARemovalAsEmptyLines) {
  fill();
  form.View4.add("");
  form.View4.setSelected(2, true);
  form.chameleonButton6.click();
  EXPECT_EQ(content(), "HKEY_USERS\\a\r\nHKEY_USERS\\c\r\n\r\n");
}

TEST_F(ExclusionPageTest, RemovingTheLastEntryLeavesOneEmptyLineThatDoesNoHarm) {
  fill();
  for (std::size_t row = 1; row <= 3; ++row) {
    form.View4.setSelected(row, true);
  }
  form.chameleonButton6.click();
  EXPECT_EQ(entries(), Texts());
  EXPECT_EQ(content(), "\r\n");
  addResult("HKEY_USERS", "a");
  Command29(form);
  EXPECT_EQ(results(), (Texts{"a"}));
}

}  // namespace
}  // namespace zelvreg
