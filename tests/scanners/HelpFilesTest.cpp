#include "scanners/HelpFilesFixture.h"

#include "form/Form42.h"

namespace zelvreg::helpFiles {
namespace {

class HelpFilesTest : public HelpFilesFixture {};

TEST_F(HelpFilesTest, AMissingFileIsReportedWithItsFolderAndWithoutAnIcon) {
  setText(helpKey, "Gone.hlp", folder);
  Command7(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{helpFinding(folder, "Gone.hlp")}));
  EXPECT_FALSE(form.View2.isChecked(1));
  EXPECT_EQ(cell(), "1");
  EXPECT_EQ(form.Text1.text(), "1");
  EXPECT_EQ(storedText(countKey, "reg-count"), "1");
}

TEST_F(HelpFilesTest, TheListOfOldHelpFilesDoesNotScrollToItsFindings) {
  setText(helpKey, "gone.hlp", folder);
  Command7(form);
  EXPECT_EQ(form.View2.rowInView(), 0U);
}

TEST_F(HelpFilesTest, AFileThatExistsIsNoFindingAndTheCellShowsZero) {
  setText(helpKey, "there.chm", folder);
  form.View2.add("font");
  Command7(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{locationAlone("font")}));
  EXPECT_EQ(cell(), "0");
  EXPECT_EQ(form.Text1.text(), "1");
}

TEST_F(HelpFilesTest, VariablesAreResolvedForTheTestAndKeptInTheReport) {
  makeFile("C:\\Program Files\\HelpFilesTest\\there.hlp");
  setText(helpKey, "Gone.hlp", "%ProgramFiles%\\HelpFilesTest ", REG_EXPAND_SZ);
  setText(helpKey, "There.hlp", "%ProgramFiles%\\HelpFilesTest", REG_EXPAND_SZ);
  setText(helpKey, "unseen.hlp", "C:\\");
  Command7(form);
  EXPECT_EQ(findings(),
            (std::vector<Texts>{helpFinding("%ProgramFiles%\\HelpFilesTest ", "Gone.hlp")}));
}

TEST_F(HelpFilesTest, OnlyTheLastOfSeveralEntriesIsNeverLookedAt) {
  const Texts names{"a.hlp", "b.hlp", "c.hlp"};
  const Texts folders{folder + "\\1", folder + "\\2", folder + "\\3"};
  const std::vector<std::size_t> found{1, 1, 2};
  for (std::size_t count = 1; count <= names.size(); ++count) {
    SCOPED_TRACE(count);
    setText(helpKey, names[count - 1], folders[count - 1]);
    form.View2.clear();
    form.Text1.setText("0");
    Command7(form);
    ASSERT_EQ(form.View2.count(), found[count - 1]);
    for (std::size_t row = 1; row <= found[count - 1]; ++row) {
      EXPECT_EQ(fixture::findingOf(form, row), helpFinding(folders[row - 1], names[row - 1]));
    }
  }
}

TEST_F(HelpFilesTest, AFolderKeptUnderTheOtherSpellingIsStillReportedUnderTheList) {
  setText(helpKey, "gone.hlp", " ");
  setText(helpNtKey, "gone.hlp", folder);
  Command7(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{helpFinding(folder, "gone.hlp")}));
}

TEST_F(HelpFilesTest, TheListsOwnFolderComesFirst) {
  setText(helpKey, "there.chm", folder);
  setText(helpNtKey, "there.chm", folder + "\\gone");
  Command7(form);
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(HelpFilesTest, NamesOfTheOtherSpellingAreNotListed) {
  setText(helpNtKey, "gone.hlp", folder);
  Command7(form);
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(HelpFilesTest, TheListAloneIsEnough) {
  removeKey(helpNtKey);
  setText(helpKey, "gone.hlp", folder);
  Command7(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{helpFinding(folder, "gone.hlp")}));
}

TEST_F(HelpFilesTest, AnEntryWithoutAFolderIsSkipped) {
  setText(helpKey, "a.hlp", " ");
  setNumber(helpKey, "b.hlp", 1);
  setText(helpKey, "c.hlp", folder);
  setText(helpKey, "d.hlp", folder);
  const Texts cells = noteWhileScanning([this] { return cell(); });
  EXPECT_EQ(findings(), (std::vector<Texts>{helpFinding(folder, "c.hlp")}));
  // Three turns of this list, the enumeration of no snap-in, one turn of each other list. A turn
  // that ends early leaves the cell alone.
  EXPECT_EQ(cells, (Texts{"", "", "", "1", "1", "1", "1"}));
}

TEST_F(HelpFilesTest, TheCellShowsZeroFromTheFirstFileThatIsThereOn) {
  setText(helpKey, "there.chm", folder);
  EXPECT_EQ(noteWhileScanning([this] { return cell(); }), (Texts{"", "0", "0", "0", "0"}));
}

TEST_F(HelpFilesTest, ANameIsReadAndReportedWithoutTheBlanksAroundIt) {
  setText(helpKey, " gone.hlp ", folder + "\\unread");
  setText(helpKey, "gone.hlp", folder);
  Command7(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{helpFinding(folder, "gone.hlp")}));
}

TEST_F(HelpFilesTest, ListsOfThe32BitViewAreNotLookedAt) {
  const std::string windows32 = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\Microsoft\\Windows\\";
  setText(windows32 + "Help", "gone.hlp", folder);
  setText(windows32 + "HTML Help", "gone.chm", folder);
  setText("HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\Microsoft\\MMC\\SnapIns\\FX:A", "HelpTopic",
          folder + "\\gone.chm");
  Command7(form);
  EXPECT_EQ(form.View2.count(), 0U);
  removeKey(windows32 + "Help");
  removeKey(windows32 + "HTML Help");
  removeKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\Microsoft\\MMC\\SnapIns");
}

TEST_F(HelpFilesTest, AnOldHelpFileKeepsItsAttributes) {
  makeReadOnly(folder + "\\locked.hlp");
  setText(helpKey, "locked.hlp", folder);
  Command7(form);
  EXPECT_EQ(form.View2.count(), 0U);
  EXPECT_TRUE(isReadOnly(folder + "\\locked.hlp"));
}

TEST_F(HelpFilesTest, FieldsGoToTheNumberedRowAndARowThatHadAnIconKeepsIt) {
  form.View2.add("font");
  form.View2.setSmallIcon(1, "a");
  setText(helpKey, "gone.hlp", folder);
  Command7(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{{"font", "gone.hlp", "4", "HKEY_LOCAL_MACHINE",
                                             "SOFTWARE\\Microsoft\\Windows\\Help", "a"},
                                            locationAlone(folder)}));
}

TEST_F(HelpFilesTest, RowsAreNumberedFromWhereTheScannerBeforeEnded) {
  form.View2.add("font");
  form.Text1.setText("1");
  setText(helpKey, "gone.hlp", folder);
  Command7(form);
  EXPECT_EQ(findings(),
            (std::vector<Texts>{locationAlone("font"), helpFinding(folder, "gone.hlp")}));
}

TEST_F(HelpFilesTest, FieldsOfANumberAfterTheLastRowAreLost) {
  form.Text1.setText("3");
  setText(helpKey, "gone.hlp", folder);
  Command7(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{locationAlone(folder)}));
}

TEST_F(HelpFilesTest, OnlyTheFirstListCountsTheRowsBeforeTheNextOneNumbersIts) {
  const auto numbered = [this](const char* expected) {
    form.View2.clear();
    form.View2.add("font");
    form.Text1.setText("5 rows");
    EXPECT_EQ(noteWhileScanning([this] { return form.Text1.text(); }).back(), expected);
    EXPECT_EQ(form.Text1.text(), "1");
  };
  setText(helpKey, "there.chm", folder);
  numbered("1");
  emptyKey(helpKey);
  numbered("5 rows");
  removeKey(helpKey);
  numbered("5 rows");
  removeKey(helpNtKey);
  numbered("5 rows");
}

TEST_F(HelpFilesTest, TheLaterSectionsAllNumberTheirRowsFromTheSameOneOn) {
  setText(helpKey, "a.hlp", folder + "\\a");
  listHtmlFinding("a.chm");
  listJoinedFinding("b.chm");
  setText(htmlKey, "c.chm", folder);
  setText(snapInsKey + "\\FX:A", "HelpTopic", folder + "\\snap a.chm");
  setText(snapInsKey + "\\FX:B", "HelpTopic", folder + "\\snap b.chm");
  makeKey(snapInsKey + "\\FX:C");
  Command7(form);
  const Texts second = joinedFinding(prefixFolder, "b.chm");
  const Texts third = snapInFinding(folder + "\\snap a.chm", "FX:B");
  EXPECT_EQ(findings(), (std::vector<Texts>{helpFinding(folder + "\\a", "a.hlp"), second, third,
                                            locationAlone(folder + "\\snap b.chm"),
                                            locationAlone(wholeFolder)}));
  EXPECT_EQ(form.View2.rowInView(), 2U);
  EXPECT_EQ(cell(), "5");
  EXPECT_EQ(form.Text1.text(), "5");
}

TEST_F(HelpFilesTest, EachFindingIsKeptInTheRunningTotal) {
  form.totalFound = 40;
  setText(helpKey, "a.hlp", folder);
  listHtmlFinding("a.chm");
  setText(snapInsKey + "\\FX:A", "HelpTopic", folder + "\\A.chm");
  const Texts kept = noteWhileScanning([] { return storedText(countKey, "reg-count"); });
  // One turn of each list, and the snap-in's name and the end of their enumeration before theirs.
  EXPECT_EQ(kept, (Texts{"(none)", "41", "42", "42", "42", "43"}));
  EXPECT_EQ(form.totalFound, 43);
  EXPECT_EQ(form.totalFoundText, "43");
}

TEST_F(HelpFilesTest, TheWorkListsBeginEmptyInEachSection) {
  form.List1.add("stale");
  form.List2.add("stale");
  setText(helpKey, "a.hlp", folder);
  setText(htmlKey, "b.chm", folder + "\\");
  setText(snapInsKey + "\\FX:C", "HelpTopic", folder + "\\c.chm");
  const auto join = [](const ListBox& list) {
    std::string text;
    for (const std::string& entry : fixture::entriesOf(list)) {
      text += entry + " ";
    }
    return text;
  };
  const Texts lists = noteWhileScanning([&] { return join(form.List1) + "/ " + join(form.List2); });
  EXPECT_EQ(lists, (Texts{"a.hlp / ", "b.chm / ", "/ ", "FX:C / ", "FX:C / ", "b.chm / "}));
  EXPECT_EQ(fixture::entriesOf(form.List2), (Texts{"b.chm"}));
}

TEST_F(HelpFilesTest, EachSectionListsTheNamesOfItsOwnFindings) {
  setText(helpKey, "a.hlp", folder);
  setText(helpKey, "b.hlp", folder);
  setText(helpKey, "c.hlp", folder);
  Texts listed;
  form.messages.serveHost = [&] {
    if (listed.empty()) {
      listed = fixture::entriesOf(form.List2);
    }
  };
  Command7(form);
  EXPECT_EQ(listed, (Texts{"a.hlp"}));
  EXPECT_EQ(form.List2.count(), 0);
}

TEST_F(HelpFilesTest, ACancelLeavesOutTheSnapInsAlone) {
  setText(helpKey, "a.hlp", folder);
  setText(htmlKey, "b.chm", folder + "\\");
  setText(snapInsKey + "\\FX:C", "HelpTopic", folder + "\\c.chm");
  form.Text2.setText("2");
  form.cancelRequested = true;
  Command7(form);
  EXPECT_EQ(findings(),
            (std::vector<Texts>{helpFinding(folder, "a.hlp"), joinedFinding(folder + "\\", "b.chm"),
                                locationAlone(folder + "\\")}));
}

TEST_F(HelpFilesTest, EachLaterSectionEndsByShowingZeroWhereNothingIsFound) {
  Texts cells;
  form.messages.serveHost = [&] {
    cells.push_back(cell());
    form.View1.setText(4, problemsColumn, "");
  };
  Command7(form);
  cells.push_back(cell());
  // Before the only turn of each section; the snap-ins are enumerated in between.
  EXPECT_EQ(cells, (Texts{"", "0", "", "0", "0"}));
}

TEST_F(HelpFilesTest, MissingKeysFindNothing) {
  for (const std::string& key : {helpKey, helpNtKey, htmlKey, htmlNtKey, snapInsKey}) {
    removeKey(key);
  }
  // Without a list no snap-in is asked for.
  EXPECT_EQ(noteWhileScanning([this] { return cell(); }), (Texts{"", "0"}));
  EXPECT_EQ(form.View2.count(), 0U);
  EXPECT_EQ(storedText(countKey, "reg-count"), "(none)");
}

TEST_F(HelpFilesTest, TheStatusLineNamesTheCategory) {
  Command7(form);
  EXPECT_EQ(form.Label4.caption.get(), "Invalid Help files");
}

}  // namespace
}  // namespace zelvreg::helpFiles
