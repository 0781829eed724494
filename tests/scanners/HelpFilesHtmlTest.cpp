#include "form/Form42.h"
#include "scanners/HelpFilesFixture.h"
#include "text/Wide.h"

namespace zelvreg::helpFiles {
namespace {

class HelpFilesHtmlTest : public HelpFilesFixture {};

TEST_F(HelpFilesHtmlTest, AMissingFileIsReportedWithItsFolder) {
  listHtmlFinding("gone.chm");
  Command7(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{htmlFinding(prefixFolder, "gone.chm")}));
  EXPECT_EQ(form.View2.rowInView(), 1U);
  EXPECT_EQ(cell(), "1");
}

TEST_F(HelpFilesHtmlTest, AFolderKeptUnderTheOtherSpellingIsReportedThereAndTestedOnce) {
  setText(htmlKey, "gone.chm", "");
  setText(htmlNtKey, "gone.chm", folder);
  Command7(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{{folder, "gone.chm", "5", "HKEY_LOCAL_MACHINE",
                                             "SOFTWARE\\Microsoft\\Windows nt\\HTML Help", "d"}}));
}

TEST_F(HelpFilesHtmlTest, TheListsOwnFolderComesFirst) {
  setText(htmlKey, "there.chm", folder + "\\");
  setText(htmlNtKey, "there.chm", folder + "\\gone\\");
  Command7(form);
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(HelpFilesHtmlTest, AFolderIsJoinedOnceWithABackslashAndOnceWithout) {
  struct Case {
    const char* folder;
    bool isThere;
    bool isJoinedNameThere;
    Texts kinds;
  };
  const std::vector<Case> cases{
      {"C:\\HelpFilesTest\\0\\", true, true, {}},
      {"C:\\HelpFilesTest\\1\\", false, false, {"5", "56"}},
      {"C:\\HelpFilesTest\\2", true, false, {"56"}},
      {"C:\\HelpFilesTest\\3", false, true, {"5"}},
      {"C:\\HelpFilesTest\\4", false, false, {"5", "56"}},
      {"C:\\HelpFilesTest\\5", true, true, {}},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.folder);
    form.View2.clear();
    emptyKey(htmlKey);
    setText(htmlKey, "a.chm", each.folder);
    if (each.isThere) {
      makeFile(std::string(each.folder) + "\\a.chm");
    }
    if (each.isJoinedNameThere) {
      makeFile(std::string(each.folder) + "a.chm");
    }
    Texts kinds;
    const auto noteKind = [&] {
      const std::string& kind = form.View2.text(1, kindCodeColumn);
      if (!kind.empty() && (kinds.empty() || kinds.back() != kind)) {
        kinds.push_back(kind);
      }
    };
    form.Text1.setText("0");
    form.messages.serveHost = noteKind;
    Command7(form);
    noteKind();
    EXPECT_EQ(kinds, each.kinds);
    EXPECT_EQ(form.View2.count(), each.kinds.size());
  }
}

TEST_F(HelpFilesHtmlTest, AFindingOfTheSecondPassNamesTheFolderAsItIs) {
  listJoinedFinding("There.chm");
  setText(htmlKey, "There.chm", "C:\\HelpFilesTest\\WHOLE");
  Command7(form);
  EXPECT_EQ(findings(),
            (std::vector<Texts>{joinedFinding("C:\\HelpFilesTest\\WHOLE", "There.chm")}));
  EXPECT_EQ(form.View2.rowInView(), 1U);
  EXPECT_EQ(cell(), "1");
}

TEST_F(HelpFilesHtmlTest, VariablesAreResolvedForTheTestOfBothPasses) {
  makeFile("C:\\Program Files\\HelpFilesTest\\there.chm");
  setText(htmlKey, "there.chm", "%ProgramFiles%\\HelpFilesTest\\", REG_EXPAND_SZ);
  Command7(form);
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(HelpFilesHtmlTest, OnlyTheLastOfSeveralEntriesIsNeverLookedAt) {
  const Texts names{"a.chm", "b.chm", "c.chm"};
  const std::vector<std::size_t> found{1, 1, 2};
  const auto check = [&](const auto& list, const auto& finding, const std::string& location) {
    emptyKey(htmlKey);
    for (std::size_t count = 1; count <= names.size(); ++count) {
      SCOPED_TRACE(location + " " + std::to_string(count));
      list(names[count - 1]);
      form.View2.clear();
      form.Text1.setText("0");
      Command7(form);
      ASSERT_EQ(form.View2.count(), found[count - 1]);
      for (std::size_t row = 1; row <= found[count - 1]; ++row) {
        EXPECT_EQ(fixture::findingOf(form, row), finding(location, names[row - 1]));
      }
    }
  };
  check(listHtmlFinding, htmlFinding, prefixFolder);
  check(listJoinedFinding, joinedFinding, wholeFolder);
}

TEST_F(HelpFilesHtmlTest, AnEmptyListReadsTheDefaultValue) {
  setText(htmlKey, "", folder + "\\gone");
  Command7(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{joinedFinding(folder + "\\gone", ""),
                                            locationAlone(folder + "\\gone")}));
  EXPECT_EQ(cell(), "2");
}

TEST_F(HelpFilesHtmlTest, AnEmptyListWithoutADefaultValueEndsAfterOneTurn) {
  setText(htmlKey, "", "  ");
  EXPECT_EQ(noteWhileScanning([this] { return cell(); }), (Texts{"", "0", "0", "0"}));
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(HelpFilesHtmlTest, AnOnlyEntryThatIsBlankEndsTheList) {
  setText(htmlKey, "a.chm", " ");
  Command7(form);
  EXPECT_EQ(form.View2.count(), 0U);
  EXPECT_EQ(cell(), "0");
}

TEST_F(HelpFilesHtmlTest, ABlankLastEntryIsNotReached) {
  setText(htmlKey, "a.chm", folder + "\\");
  setText(htmlKey, "b.chm", " ");
  Command7(form);
  EXPECT_EQ(form.View2.count(), 2U);
}

TEST_F(HelpFilesHtmlTest, ABlankEntryIsSkipped) {
  setText(htmlKey, "a.chm", " ");
  listHtmlFinding("b.chm");
  setText(htmlKey, "c.chm", " ");
  listHtmlFinding("d.chm");
  setText(htmlKey, "e.chm", folder);
  Command7(form);
  EXPECT_EQ(form.View2.text(1, badValueColumn), "b.chm");
  EXPECT_EQ(form.View2.text(2, badValueColumn), "d.chm");
  EXPECT_EQ(form.View2.count(), 2U);
}

TEST_F(HelpFilesHtmlTest, APressOfCancelEndsTheWalk) {
  listHtmlFinding("a.chm");
  listHtmlFinding("b.chm");
  listHtmlFinding("c.chm");
  setText(htmlKey, "d.chm", folder);
  form.messages.serveHost = [this] {
    if (form.View2.count() == 1) {
      form.Text2.setText("2");
    }
  };
  Command7(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{htmlFinding(prefixFolder, "a.chm"),
                                            htmlFinding(prefixFolder, "b.chm")}));
}

TEST_F(HelpFilesHtmlTest, TheSecondPassContinuesAfterABlankEntry) {
  setText(htmlKey, "a.chm", " ");
  setText(htmlNtKey, "a.chm", folder + "\\gone");
  listJoinedFinding("b.chm");
  setText(htmlKey, "c.chm", folder);
  const Texts cells = noteWhileScanning([this] { return cell(); });
  EXPECT_EQ(findings(), (std::vector<Texts>{joinedFinding(folder + "\\gone", "b.chm"),
                                            locationAlone(wholeFolder)}));
  EXPECT_EQ(cells, (Texts{"", "1", "1", "1", "1", "1"}));
}

TEST_F(HelpFilesHtmlTest, ANameIsReadAndReportedWithoutTheBlanksAroundIt) {
  setText(htmlKey, " a.chm ", folder + "\\unread");
  setText(htmlKey, "a.chm", folder + "\\gone");
  Command7(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{joinedFinding(folder + "\\gone", "a.chm"),
                                            locationAlone(folder + "\\gone")}));
  EXPECT_EQ(fixture::entriesOf(form.List1), (Texts{" a.chm ", "a.chm"}));
  EXPECT_EQ(fixture::entriesOf(form.List2), (Texts{"a.chm"}));
}

TEST_F(HelpFilesHtmlTest, AFileThatIsThereLosesAllAttributesButArchive) {
  const std::string file = folder + "\\there.chm";
  SetFileAttributesW(Wide(file).get(),
                     FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
  setText(htmlKey, "there.chm", folder + "\\");
  Command7(form);
  EXPECT_EQ(form.View2.count(), 0U);
  EXPECT_EQ(GetFileAttributesW(Wide(file).get()), FILE_ATTRIBUTE_ARCHIVE);
}

TEST_F(HelpFilesHtmlTest, AttributesAreSetByThePathAsItIsOnly) {
  makeReadOnly("C:\\Program Files\\HelpFilesTest\\locked.chm");
  makeReadOnly(folder + "\\prelocked.chm");
  setText(htmlKey, "locked.chm", "%ProgramFiles%\\HelpFilesTest\\", REG_EXPAND_SZ);
  Command7(form);
  EXPECT_TRUE(isReadOnly("C:\\Program Files\\HelpFilesTest\\locked.chm"));
  setText(htmlKey, "locked.chm", prefixFolder);
  Command7(form);
  EXPECT_TRUE(isReadOnly(folder + "\\prelocked.chm"));
}

}  // namespace
}  // namespace zelvreg::helpFiles
