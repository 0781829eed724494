// Only the emulated computer can be a 32-bit one, and refuses keys by their access lists.
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
