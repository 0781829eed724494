#include "undo/UndoPage.h"

#include "runtime/FileText.h"
#include "shell/StartUp.h"
#include "support/ComputerFixture.h"
#include "text/Wide.h"
#include "undo/JournalFile.h"

namespace zelvreg {
namespace {

using Texts = std::vector<std::string>;

const std::string settings =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\regscan";
const std::string dates = settings + "\\dates";
const std::string files = settings + "\\file";
const std::string target = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\UndoPageTest";

class UndoPageTest : public fixture::ComputerFixture {
 protected:
  UndoPageTest() {
    emptyKey(settings);
    removeKey(target);
    makeFolder(form.programFolder);
    bindClicks(form);
    form.dialogs.show = [this](const UserMessage& message) {
      messages.push_back(message);
      return Answer::Ok;
    };
  }
  ~UndoPageTest() override {
    removeKey(target);
    for (const std::string& stem : stems) {
      DeleteFileW(Wide(pathOf(stem)).get());
    }
  }

  [[nodiscard]] std::string pathOf(const std::string& stem) const {
    return form.programFolder + "\\" + stem + ".txt";
  }
  [[nodiscard]] std::string content(const std::string& stem) const {
    return readFileText(pathOf(stem)).value_or("(none)");
  }
  // An entry of the list, with its file unless it is to be missing.
  void addEntry(const std::string& number, const std::string& label, const std::string& stem,
                const std::string& journal, bool isThere = true) {
    setText(settings, "cnt", number);
    setText(dates, number, label);
    setText(files, label, stem);
    stems.push_back(stem);
    if (isThere) {
      makeFile(pathOf(stem), journal);
    }
  }
  // Three entries with empty journals.
  void addThree() {
    addEntry("1", "first", "stem 1", "");
    addEntry("2", "second", "stem 2", "");
    addEntry("3", "third", "stem 3", "");
  }
  [[nodiscard]] Texts labels() const {
    Texts texts;
    for (std::size_t row = 1; row <= form.View3.count(); ++row) {
      texts.push_back(form.View3.text(row, 0));
    }
    return texts;
  }

  Texts stems;
  std::vector<UserMessage> messages;
};

TEST_F(UndoPageTest, ThePageTakesThePlaceOfTheOptions) {
  form.Frame1.left = 11;
  form.Frame1.top = 22;
  form.Frame1.width = 333;
  form.Frame1.height = 444;
  form.Frame3.visible = false;
  form.chameleonButton1.click();
  EXPECT_EQ(form.Frame3.left, 11);
  EXPECT_EQ(form.Frame3.top, 22);
  EXPECT_EQ(form.Frame3.width, 333);
  EXPECT_EQ(form.Frame3.height, 444);
  EXPECT_TRUE(form.Frame3.visible);
  EXPECT_FALSE(form.Frame1.visible);
  EXPECT_FALSE(form.Frame7.visible);
}

TEST_F(UndoPageTest, FromTheResultsItTakesTheirPlaceToo) {
  form.Frame1.visible = false;
  form.Frame2.visible = true;
  form.Picture1.visible = true;
  form.chameleonButton1.click();
  EXPECT_TRUE(form.Frame3.visible);
  EXPECT_FALSE(form.Frame2.visible);
  EXPECT_FALSE(form.Picture1.visible);
}

TEST_F(UndoPageTest, TheBoxShowsTheOptionThatWasKept) {
  for (const auto& [kept, isTicked] : {std::pair("1", true), {"0", false}, {"2", true}}) {
    setText(settings, "saveundo", kept);
    form.Check1.value = !isTicked;
    form.chameleonButton1.click();
    EXPECT_EQ(form.Check1.value.get(), isTicked);
  }
  // More than on, off and grayed it does not know.
  for (const char* refused : {"3", "-1", "1e300"}) {
    setText(settings, "saveundo", refused);
    for (const bool before : {true, false}) {
      form.Check1.value = before;
      form.chameleonButton1.click();
      EXPECT_EQ(form.Check1.value.get(), before) << refused;
    }
  }
  removeKey(settings);
  form.Check1.value = true;
  form.chameleonButton1.click();
  EXPECT_FALSE(form.Check1.value);
}

TEST_F(UndoPageTest, LabelsAreInTheOrderOfTheirNumbersAndGapsAreSkipped) {
  form.View3.add("old");
  setText(settings, "cnt", "11");
  setText(dates, "10", "tenth");
  setText(dates, "2", "  second ");
  setText(dates, "3", "   ");
  setText(dates, "4", "");
  setText(dates, "12", "beyond the count");
  form.chameleonButton1.click();
  EXPECT_EQ(labels(), (Texts{"second", "tenth"}));
}

TEST_F(UndoPageTest, TheFirstNumberIsLookedAtEvenWithoutACount) {
  setText(dates, "1", "first");
  setText(dates, "2", "second");
  form.chameleonButton1.click();
  EXPECT_EQ(labels(), (Texts{"first"}));
}

TEST_F(UndoPageTest, TheQueueIsServedAtEachEntry) {
  setText(settings, "cnt", "3");
  setText(dates, "1", "first");
  setText(dates, "3", "third");
  Texts seen;
  form.messages.serveHost = [&] { seen.push_back(std::to_string(form.View3.count())); };
  form.chameleonButton1.click();
  EXPECT_EQ(seen, (Texts{"0", "1"}));
}

TEST_F(UndoPageTest, AClickedRowIsRememberedAlsoWhenTheListIsFilledAgain) {
  addThree();
  form.chameleonButton1.click();
  form.chameleonButton3.enabled = false;
  View3_ItemClick(form, 2);
  EXPECT_EQ(form.Text3.text(), "2");
  EXPECT_TRUE(form.chameleonButton3.enabled);
  form.chameleonButton1.click();
  EXPECT_EQ(form.Text3.text(), "2");
}

TEST_F(UndoPageTest, TheJournalOfTheRowIsWrittenBackAndItsEndIsTold) {
  const JournalRecord lost{"3", "1", "Software\\UndoPageTest", "a.exe", "C:\\a.exe"};
  const JournalRecord other{"3", "1", "Software\\UndoPageTest", "b.exe", "C:\\b.exe"};
  const JournalRecord not1{"3", "1", "Software\\UndoPageTest", "not.exe", "C:\\not.exe"};
  addEntry("1", "first", "stem 1", journalFile({not1}));
  addEntry("2", "second", "stem 2", journalFile({lost}) + journalFile({other}));
  form.chameleonButton1.click();
  View3_ItemClick(form, 2);
  for (int turn = 1; turn <= 2; ++turn) {
    form.chameleonButton2.click();
    EXPECT_EQ(storedText(target + "\\a.exe", ""), "C:\\a.exe");
    EXPECT_EQ(storedText(target + "\\b.exe", ""), "C:\\b.exe");
    EXPECT_FALSE(hasKey(target + "\\not.exe"));
  }
  ASSERT_EQ(messages.size(), 2U);
  EXPECT_EQ(messages[0].text, "Finished Retriving undo data");
  EXPECT_EQ(messages[0].icon, MessageIcon::Information);
  EXPECT_FALSE(messages[0].isQuestion);
  EXPECT_EQ(content("stem 2"), journalFile({lost}) + journalFile({other}));
  EXPECT_EQ(labels(), (Texts{"first", "second"}));
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(UndoPageTest, AJournalThatHasGoneIsCreatedAgainEmpty) {
  addEntry("1", "first", "stem 1", "", false);
  form.chameleonButton1.click();
  View3_ItemClick(form, 1);
  form.chameleonButton2.click();
  EXPECT_EQ(content("stem 1"), "");
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_EQ(messages[0].text, "Finished Retriving undo data");
  EXPECT_FALSE(hasKey(target));
}

TEST_F(UndoPageTest, RemovingTakesFileAndRowAndLeavesCountAndStem) {
  addThree();
  form.chameleonButton1.click();
  View3_ItemClick(form, 2);
  form.chameleonButton3.click();
  EXPECT_EQ(labels(), (Texts{"first", "third"}));
  EXPECT_EQ(content("stem 2"), "(none)");
  EXPECT_EQ(content("stem 1"), "");
  EXPECT_EQ(content("stem 3"), "");
  EXPECT_EQ(storedText(dates, "2"), "(none)");
  EXPECT_EQ(storedText(files, "second"), "stem 2");
  EXPECT_EQ(storedText(settings, "cnt"), "3");
  EXPECT_EQ(form.Text3.text(), "2");
  form.chameleonButton1.click();
  EXPECT_EQ(labels(), (Texts{"first", "third"}));
}

TEST_F(UndoPageTest, ASecondRemovalTakesTheRowThatMovedUp) {
  addThree();
  form.chameleonButton1.click();
  View3_ItemClick(form, 2);
  form.chameleonButton3.click();
  form.chameleonButton3.click();
  EXPECT_EQ(labels(), (Texts{"first"}));
  EXPECT_EQ(storedText(dates, "3"), "(none)");
  EXPECT_EQ(content("stem 3"), "(none)");
}

TEST_F(UndoPageTest, AKeptLabelIsFoundWhateverTheCaseOfItsLettersAndItsBlanks) {
  addEntry("1", "First", "stem 1", "");
  setText(dates, "1", "  First ");
  form.chameleonButton1.click();
  View3_ItemClick(form, 1);
  form.View3.setText(1, 0, "FIRST");
  form.chameleonButton3.click();
  EXPECT_EQ(storedText(dates, "1"), "(none)");
}

TEST_F(UndoPageTest, ALabelWithWildcardsTakesTheFirstEntryThatFitsIt) {
  addEntry("1", "a day", "stem 1", "");
  addEntry("2", "a*y", "stem 2", "");
  form.chameleonButton1.click();
  View3_ItemClick(form, 2);
  form.chameleonButton3.click();
  EXPECT_EQ(labels(), (Texts{"a day"}));
  EXPECT_EQ(content("stem 1"), "");
  EXPECT_EQ(content("stem 2"), "(none)");
  EXPECT_EQ(storedText(dates, "1"), "(none)");
  EXPECT_EQ(storedText(dates, "2"), "a*y");
}

TEST_F(UndoPageTest, ABracketInALabelStandsForItsListAndOneThatIsOpenFitsAll) {
  for (const auto& [label, removed] : {std::pair("day [ab]", "2"), {"day [ab", "1"}}) {
    addEntry("1", "night", "stem 1", "");
    addEntry("2", "day a", "stem 2", "");
    addEntry("3", label, "stem 3", "");
    form.chameleonButton1.click();
    View3_ItemClick(form, 3);
    form.chameleonButton3.click();
    for (const char* number : {"1", "2", "3"}) {
      EXPECT_EQ(storedText(dates, number) == "(none)", std::string(number) == removed) << label;
    }
  }
}

TEST_F(UndoPageTest, WithoutAClickedRowNothingIsRestored) {
  addThree();
  form.chameleonButton1.click();
  form.chameleonButton2.click();
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_EQ(messages[0].text,
            "Nothing was restored: the entry names no file of the program's folder.");
  EXPECT_EQ(messages[0].icon, MessageIcon::Exclamation);
  EXPECT_TRUE(form.isUndoRefused);
  EXPECT_FALSE(hasKey(target));
  EXPECT_EQ(labels(), (Texts{"first", "second", "third"}));
}

TEST_F(UndoPageTest, WithoutAClickedRowNothingIsRemoved) {
  addThree();
  form.chameleonButton1.click();
  form.chameleonButton3.click();
  EXPECT_EQ(labels(), (Texts{"first", "second", "third"}));
  form.chameleonButton1.click();
  EXPECT_EQ(labels(), (Texts{"first", "second", "third"}));
  for (const std::string& stem : stems) {
    EXPECT_EQ(content(stem), "");
  }
}

TEST_F(UndoPageTest, APolicyDecidesWhetherUndoInformationIsSaved) {
  const std::string policies = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Policies\\zelvane\\zelvreg";
  for (const char* text : {"1", "0"}) {
    setText(settings, "saveundo", text == std::string("1") ? "0" : "1");
    setText(policies, "saveundo", text);
    form.chameleonButton1.click();
    EXPECT_EQ(form.Check1.value, text == std::string("1"));
    EXPECT_TRUE(form.Check1.isLocked);
    EXPECT_FALSE(form.Check1.enabled);
  }
  removeKey(policies);
  form.chameleonButton1.click();
  EXPECT_TRUE(form.Check1.value);
  EXPECT_FALSE(form.Check1.isLocked);
  EXPECT_TRUE(form.Check1.enabled);
}

}  // namespace
}  // namespace zelvreg
