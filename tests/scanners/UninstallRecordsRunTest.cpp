// The runs over the lists: the other spelling, what is counted, shown and saved, and a stop.
#include "form/Form42.h"
#include "scanners/UninstallRecordsFixture.h"

namespace zelvreg {
namespace {

using fixture::Rows;
using fixture::Texts;

// Appends what differs from the last one.
void note(Texts& seen, const std::string& text) {
  if (seen.empty() || seen.back() != text) {
    seen.push_back(text);
  }
}

class UninstallRunTest : public fixture::UninstallRecordsFixture {
 protected:
  Texts countsShownBy(void (*scan)(Form42&)) {
    Texts shown;
    form.messages.serveHost = [&] { note(shown, shownCount()); };
    scan(form);
    note(shown, shownCount());
    return shown;
  }
  Texts totalsSavedBy(void (*scan)(Form42&)) {
    Texts saved;
    form.messages.serveHost = [&] { note(saved, storedText(countKey, "reg-count")); };
    scan(form);
    note(saved, storedText(countKey, "reg-count"));
    return saved;
  }
};

TEST_F(UninstallRunTest, ASystemFolderUnderTheUsualSpellingClearsTheOtherOne) {
  for (const auto scan : {uninstall, uninstall32}) {
    form.ntSpelling = 2;
    scan(form);
    EXPECT_EQ(form.ntSpelling, 0);
  }
}

TEST_F(UninstallRunTest, OneOfBlanksOrOfTheOtherViewSetsIt) {
  setText(machine + "\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion", "SystemRoot", "C:\\Windows");
  setText(probe32, "SystemRoot", "  ");
  for (const auto scan : {uninstall, uninstall32}) {
    form.ntSpelling = 0;
    scan(form);
    EXPECT_EQ(form.ntSpelling, 2);
  }
}

TEST_F(UninstallRunTest, RecordsOfTheOtherSpellingAreAlsoListedButReadUnderTheUsualOne) {
  setText(probe32, "SystemRoot", "");
  setText(ntOfMachine + "\\Nt", "", "text");
  setText(ntOfMachine32 + "\\Nt32", "", "text");
  makeKey(ntOfUser + "\\NtOfUser");
  makeKey(ofMachine + "\\Record");
  makeKey(ofMachine32 + "\\Record32");
  uninstall(form);
  EXPECT_EQ(findings(), (Rows{shellOfMachine("Record"), shellOfMachine("Nt")}));
  form.View2.clear();
  uninstall32(form);
  EXPECT_EQ(findings(), (Rows{shellOfMachine32("Record32"), shellOfMachine32("Nt32")}));
}

TEST_F(UninstallRunTest, UnderTheUsualSpellingTheyAreNot) {
  makeKey(ntOfMachine + "\\Nt");
  makeKey(ntOfMachine32 + "\\Nt");
  uninstall(form);
  uninstall32(form);
  EXPECT_EQ(findings(), Rows{});
}

TEST_F(UninstallRunTest, NamesOfOneWalkAreNotWalkedInTheNext) {
  makeKey(ofMachine + "\\OfMachine");
  makeKey(ofUser + "\\OfUser");
  makeKey(ofMachine32 + "\\OfMachine32");
  form.List1.add("left over");
  uninstall(form);
  EXPECT_EQ(findings(), (Rows{shellOfMachine("OfMachine"), shellOfUser("OfUser")}));
  uninstall32(form);
  EXPECT_EQ(fixture::findingOf(form, 3), shellOfMachine32("OfMachine32"));
  EXPECT_EQ(form.View2.count(), 3U);
}

TEST_F(UninstallRunTest, TheListsHoldWhatTheLastWalkPutThere) {
  makeKey(ofMachine + "\\OfMachine");
  makeKey(ofUser + "\\OfUser");
  uninstall(form);
  EXPECT_EQ(fixture::entriesOf(form.List1), (Texts{"Kept", "OfUser"}));
  EXPECT_EQ(fixture::entriesOf(form.List2), Texts{"OfUser"});
  uninstall32(form);
  EXPECT_EQ(fixture::entriesOf(form.List1), Texts{"Kept"});
  EXPECT_EQ(fixture::entriesOf(form.List2), Texts{});
}

TEST_F(UninstallRunTest, TheCountContinuesFromTheMachinesListToTheUsers) {
  makeKey(ofMachine + "\\A");
  makeKey(ofMachine + "\\B");
  makeKey(ofUser + "\\C");
  EXPECT_EQ(countsShownBy(uninstall), (Texts{"", "1", "2", "3"}));
}

TEST_F(UninstallRunTest, FindingsOfTheMachineAloneStayShown) {
  makeKey(ofMachine + "\\A");
  EXPECT_EQ(countsShownBy(uninstall), (Texts{"", "1"}));
}

TEST_F(UninstallRunTest, ZeroIsShownAfterEachWalkThatHasFoundNothing) {
  Texts shown;
  form.messages.serveHost = [&] {
    shown.push_back(shownCount());
    form.View1.setText(13, problemsColumn, "");
  };
  uninstall(form);
  // The names of one record are asked for twice, and it has one turn.
  EXPECT_EQ(shown, (Texts{"", "", "", "0", "", ""}));
  EXPECT_EQ(shownCount(), "0");
  form.View1.setText(13, problemsColumn, "");
  uninstall32(form);
  EXPECT_EQ(shownCount(), "0");
}

TEST_F(UninstallRunTest, TheRowShowsInTheEndWhatThe32BitListGave) {
  for (const char* name : {"\\A", "\\B", "\\C"}) {
    makeKey(ofMachine + name);
  }
  makeKey(ofUser + "\\D");
  makeKey(ofUser + "\\E");
  uninstall(form);
  EXPECT_EQ(shownCount(), "5");
  uninstall32(form);
  EXPECT_EQ(shownCount(), "0");
  EXPECT_EQ(form.View2.count(), 5U);
  EXPECT_EQ(form.Text1.text(), "5");
  EXPECT_EQ(form.totalFound, 5);
}

TEST_F(UninstallRunTest, The32BitListCountsFromTheStart) {
  makeKey(ofMachine + "\\A");
  makeKey(ofMachine32 + "\\B");
  makeKey(ofMachine32 + "\\C");
  uninstall(form);
  EXPECT_EQ(countsShownBy(uninstall32), (Texts{"1", "2"}));
  EXPECT_EQ(form.totalFound, 3);
  EXPECT_EQ(form.totalFoundText, "3");
}

TEST_F(UninstallRunTest, TheTotalIsSavedOnceAfterTheUsersList) {
  makeKey(ofMachine + "\\A");
  setText(ofUser + "\\B", "Program", gone);
  makeKey(ofUser + "\\C");
  form.totalFound = 40;
  EXPECT_EQ(totalsSavedBy(uninstall), (Texts{"(none)", "43"}));
}

TEST_F(UninstallRunTest, ItIsSavedEvenIfNothingWasFound) {
  form.totalFoundText = "12";
  EXPECT_EQ(totalsSavedBy(uninstall), (Texts{"(none)", "12"}));
}

TEST_F(UninstallRunTest, BeforeAnyFindingTheTotalThatIsSavedIsZero) {
  EXPECT_EQ(totalsSavedBy(uninstall), (Texts{"(none)", "0"}));
}

TEST_F(UninstallRunTest, The32BitListSavesTheTotalWithEachFinding) {
  makeKey(ofMachine32 + "\\A");
  setText(ofMachine32 + "\\B", "Program", gone);
  form.totalFound = 40;
  EXPECT_EQ(totalsSavedBy(uninstall32), (Texts{"(none)", "41", "42"}));
}

TEST_F(UninstallRunTest, The32BitListSavesNothingWithoutAFinding) {
  EXPECT_EQ(totalsSavedBy(uninstall32), Texts{"(none)"});
}

TEST_F(UninstallRunTest, AStopBeforeTheStartLeavesOneRecordWithoutANameInEachList) {
  form.Text2.setText("2");
  uninstall(form);
  uninstall32(form);
  EXPECT_EQ(findings(), (Rows{shellOfMachine(""), shellOfUser(""), shellOfMachine32("")}));
}

TEST_F(UninstallRunTest, AStopLetsTheListUnderWalkRunOut) {
  makeKey(ofMachine + "\\A");
  makeKey(ofMachine + "\\B");
  makeKey(ofUser + "\\C");
  form.messages.serveHost = [&] {
    if (form.View2.count() == 1) {
      form.Text2.setText("2");
    }
  };
  uninstall(form);
  EXPECT_EQ(findings(), (Rows{shellOfMachine("A"), shellOfMachine("B"), shellOfUser("")}));
}

}  // namespace
}  // namespace zelvreg
