#include "scanners/HelpFilesFixture.h"

#include "form/Form42.h"

namespace zelvreg::helpFiles {
namespace {

const std::string gone = "C:\\HelpFilesTest\\Gone.chm";
const std::string there = "C:\\HelpFilesTest\\there.chm";

class HelpFilesSnapInsTest : public HelpFilesFixture {
 protected:
  static void setTopic(const std::string& snapIn, const std::string& path,
                       const std::string& valueName = "HelpTopic") {
    setText(snapInsKey + "\\" + snapIn, valueName, path);
  }
};

TEST_F(HelpFilesSnapInsTest, AMissingTopicIsReportedWithItsSnapIn) {
  setTopic("FX:{A}", gone);
  Command7(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{snapInFinding(gone, "FX:{A}")}));
  EXPECT_EQ(form.View2.rowInView(), 1U);
  EXPECT_EQ(cell(), "1");
  EXPECT_EQ(form.Text1.text(), "1");
}

TEST_F(HelpFilesSnapInsTest, ATopicThatExistsIsNoFinding) {
  setTopic("FX:{A}", there);
  Command7(form);
  EXPECT_EQ(form.View2.count(), 0U);
  EXPECT_EQ(cell(), "0");
}

TEST_F(HelpFilesSnapInsTest, VariablesAreResolvedForTheTest) {
  makeFile("C:\\Program Files\\HelpFilesTest\\there.chm");
  setTopic("FX:{A}", "%ProgramFiles%\\HelpFilesTest\\there.chm");
  Command7(form);
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(HelpFilesSnapInsTest, OnlyNumbersOfZeroOrMoreAreSkipped) {
  struct Case {
    const char* name;
    bool isLookedAt;
  };
  const std::vector<Case> cases{
      {"0", false},       {"42", false},   {"1.5", false},  {"1e3", false}, {"&H1F", false},
      {"-1", true},       {"12abc", true}, {"FX:1", true},  {"FX", true},   {"fx:1", true},
      {"{0-0-C0}", true}, {"Other", true}, {"1.2.3", true},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    emptyKey(snapInsKey);
    setTopic(each.name, gone);
    form.View2.clear();
    form.Text1.setText("0");
    Command7(form);
    ASSERT_EQ(form.View2.count(), each.isLookedAt ? 1U : 0U);
    if (each.isLookedAt) {
      EXPECT_EQ(fixture::findingOf(form, 1), snapInFinding(gone, each.name));
    }
  }
}

TEST_F(HelpFilesSnapInsTest, LinkedTopicsAreReadInThePlaceOfAnEmptyTopic) {
  setTopic("FX:A", "");
  setTopic("FX:A", gone, "LinkedHelpTopics");
  setTopic("FX:B", gone, "LinkedHelpTopics");
  makeKey(snapInsKey + "\\FX:C");
  Command7(form);
  EXPECT_EQ(findings(),
            (std::vector<Texts>{snapInFinding(gone, "FX:A"), snapInFinding(gone, "FX:B")}));
}

TEST_F(HelpFilesSnapInsTest, ATopicComesBeforeLinkedTopics) {
  setTopic("FX:A", there);
  setTopic("FX:A", gone, "LinkedHelpTopics");
  Command7(form);
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(HelpFilesSnapInsTest, ATopicOfBlanksIsNotEmptyAndGivesNothing) {
  setTopic("FX:A", " ");
  setTopic("FX:A", gone, "LinkedHelpTopics");
  Command7(form);
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(HelpFilesSnapInsTest, SeveralLinkedTopicsAreTestedAsOneText) {
  setTopic("FX:A", there + ";" + there, "LinkedHelpTopics");
  Command7(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{snapInFinding(there + ";" + there, "FX:A")}));
}

TEST_F(HelpFilesSnapInsTest, TheWalkContinuesAfterASnapInThatGivesNothing) {
  setTopic("1", gone);
  makeKey(snapInsKey + "\\FX:A");
  setTopic("FX:B", there);
  setTopic("FX:C", gone);
  makeKey(snapInsKey + "\\FX:D");
  Texts cells = noteWhileScanning([this] { return cell(); });
  EXPECT_EQ(findings(), (std::vector<Texts>{snapInFinding(gone, "FX:C")}));
  EXPECT_EQ(cell(), "1");
  // The turn of the HTML help, six of the enumeration, four of the walk, the second pass.
  EXPECT_EQ(cells, (Texts{"", "0", "0", "0", "0", "0", "0", "0", "0", "0", "0", "1"}));
}

TEST_F(HelpFilesSnapInsTest, TheCountOfTheSectionsBeforeIsGoneOnWith) {
  setText(helpKey, "gone.hlp", folder);
  setTopic("FX:A", gone);
  Command7(form);
  EXPECT_EQ(findings(),
            (std::vector<Texts>{helpFinding(folder, "gone.hlp"), snapInFinding(gone, "FX:A")}));
  EXPECT_EQ(cell(), "2");
}

TEST_F(HelpFilesSnapInsTest, OnlyTheLastOfSeveralSnapInsIsNeverLookedAt) {
  const Texts names{"FX:A", "FX:B", "FX:C"};
  const std::vector<std::size_t> found{1, 1, 2};
  for (std::size_t count = 1; count <= names.size(); ++count) {
    SCOPED_TRACE(count);
    setTopic(names[count - 1], gone);
    form.View2.clear();
    form.Text1.setText("0");
    Command7(form);
    ASSERT_EQ(form.View2.count(), found[count - 1]);
    for (std::size_t row = 1; row <= found[count - 1]; ++row) {
      EXPECT_EQ(fixture::findingOf(form, row), snapInFinding(gone, names[row - 1]));
    }
  }
}

TEST_F(HelpFilesSnapInsTest, AnEmptyListReadsTheTopicOfTheListItself) {
  setText(snapInsKey, "HelpTopic", gone);
  Command7(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{snapInFinding(gone, "")}));
}

TEST_F(HelpFilesSnapInsTest, ANameIsReadWithoutTheBlanksAroundIt) {
  setTopic("FX:A ", gone);
  Command7(form);
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(HelpFilesSnapInsTest, ACancelShortensTheList) {
  setTopic("FX:A", gone);
  setTopic("FX:B", gone);
  setTopic("FX:C", gone);
  form.messages.serveHost = [this] {
    if (form.List1.text(form.List1.count() - 1) == "FX:B") {
      form.Text2.setText("2");
    }
  };
  Command7(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{snapInFinding(gone, "FX:A")}));
}

TEST_F(HelpFilesSnapInsTest, ATopicKeepsItsAttributes) {
  makeReadOnly(folder + "\\locked.chm");
  setTopic("FX:A", folder + "\\locked.chm");
  Command7(form);
  EXPECT_EQ(form.View2.count(), 0U);
  EXPECT_TRUE(isReadOnly(folder + "\\locked.chm"));
}

}  // namespace
}  // namespace zelvreg::helpFiles
