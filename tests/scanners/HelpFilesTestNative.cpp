// Only the emulated computer can be a 32-bit one, and refuses keys by their access lists.
#include "form/Form42.h"
#include "machine/Machine.h"
#include "scanners/HelpFilesFixture.h"

namespace zelvreg::helpFiles {
namespace {

constexpr const char* readOnlyList = "D:(A;CI;KR;;;WD)";

class HelpFiles32Test : public HelpFilesFixture {
 protected:
  HelpFiles32Test() : HelpFilesFixture(32) {}
};

TEST_F(HelpFiles32Test, NothingOfTheSystemFolderIsEverReported) {
  setText(helpKey, "gone.hlp", "C:\\Windows\\System32");
  setText(htmlKey, "gone.chm", "C:\\Windows\\System32");
  setText(snapInsKey + "\\FX:A", "HelpTopic", "C:\\Windows\\System32\\gone.chm");
  Command7(form);
  EXPECT_EQ(form.View2.count(), 0U);
  EXPECT_EQ(cell(), "0");
}

TEST_F(HelpFiles32Test, FilesOfOtherFoldersAre) {
  setText(helpKey, "gone.hlp", "C:\\Windows");
  setText(snapInsKey + "\\FX:A", "HelpTopic", "C:\\Windows\\gone.chm");
  Command7(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{helpFinding("C:\\Windows", "gone.hlp"),
                                            snapInFinding("C:\\Windows\\gone.chm", "FX:A")}));
}

class HelpFilesQuestionsTest : public HelpFilesFixture {
 protected:
  static machine::FaultPlan& faults() { return machine::Machine::current()->faults(); }
  // Scans with the answer to one question about a file replaced by "not there", counted from the
  // last one, which is 0.
  std::size_t findingsWithout(std::uint64_t fromTheLast) {
    constexpr machine::ApiCall question = machine::ApiCall::GetFileAttributes;
    faults().clear();
    Command7(form);
    const std::uint64_t last = faults().calls(question);
    EXPECT_EQ(form.View2.count(), 0U);
    faults().clear();
    faults().fail(question, last - fromTheLast, ERROR_FILE_NOT_FOUND);
    Command7(form);
    faults().clear();
    const std::size_t found = form.View2.count();
    form.View2.clear();
    return found;
  }
};

TEST_F(HelpFilesQuestionsTest, TheSecondPassAsksTwiceAndTheSecondAnswerCounts) {
  setText(htmlKey, "there.chm", folder + "\\");
  EXPECT_EQ(findingsWithout(0), 1U);
  EXPECT_EQ(findingsWithout(1), 0U);
  // The first pass asks once.
  EXPECT_EQ(findingsWithout(2), 1U);
}

class HelpFilesAccessTest : public HelpFilesFixture {};

TEST_F(HelpFilesAccessTest, AListThatCannotBeOpenedForWritingIsLeftOut) {
  setText(helpKey, "gone.hlp", folder);
  setAccessOfKey(helpKey, readOnlyList);
  removeKey(helpNtKey);
  Command7(form);
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(HelpFilesAccessTest, UnlessTheOtherSpellingCan) {
  setText(helpKey, "gone.hlp", folder);
  setAccessOfKey(helpKey, readOnlyList);
  Command7(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{helpFinding(folder, "gone.hlp")}));
}

TEST_F(HelpFilesAccessTest, SnapInsThatCannotBeListedStillTakeOneTurn) {
  setText(snapInsKey, "HelpTopic", folder + "\\gone.chm");
  setText(snapInsKey + "\\FX:A", "HelpTopic", folder + "\\gone too.chm");
  setAccessOfKey(snapInsKey, readOnlyList);
  Command7(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{snapInFinding(folder + "\\gone.chm", "")}));
}

}  // namespace
}  // namespace zelvreg::helpFiles
