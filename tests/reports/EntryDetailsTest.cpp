#include "reports/EntryDetails.h"

#include "scan/Findings.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

class EntryDetailsTest : public fixture::ComputerFixture {
 protected:
  void add(const char* location, const char* badValue, const char* kind) {
    ScannerRun run;
    addRow(form, run, {location, badValue, kind, "HKEY_USERS", "Software\\Key", "a"});
  }
};

TEST_F(EntryDetailsTest, BeforeAClickThePanelAsksForOne) {
  EXPECT_EQ(form.Label5.caption.get(), "No Entry Selected");
  EXPECT_EQ(form.Label7.caption.get(), "Please Select entry from the list to show details");
  EXPECT_EQ(form.selectedRow, 0U);
}

TEST_F(EntryDetailsTest, AClickDescribesTheRowInASentence) {
  add("other", "other", "2");
  add("C:\\a.exe", "gone", "2");
  View2_ItemClick(form, 2);
  EXPECT_EQ(form.selectedRow, 2U);
  EXPECT_EQ(form.Label5.caption.get(), "gone");
  EXPECT_EQ(form.Label7.caption.get(),
            "The registration key \"HKEY_USERS\\Software\\Key\\gone\" contains the application "
            "path to \"gone\". The path points to the missing target \"C:\\a.exe\" and can "
            "therefore be deleted.");
}

TEST_F(EntryDetailsTest, ARowWithoutBadValueGivesAnEmptyQuotation) {
  add("C:\\a.exe", "", "2");
  View2_ItemClick(form, 1);
  EXPECT_EQ(form.Label5.caption.get(), "");
  EXPECT_EQ(form.Label7.caption.get(),
            "The registration key \"HKEY_USERS\\Software\\Key\\\" contains the application path "
            "to \"\". The path points to the missing target \"C:\\a.exe\" and can therefore be "
            "deleted.");
}

TEST_F(EntryDetailsTest, TheSentenceIsTheSameForEachKind) {
  add("C:\\a.exe", "gone", "2");
  add("C:\\a.exe", "gone", "771");
  View2_ItemClick(form, 1);
  const std::string first = form.Label7.caption.get();
  form.Label7.caption = "";
  View2_ItemClick(form, 2);
  EXPECT_EQ(form.Label7.caption.get(), first);
}

TEST_F(EntryDetailsTest, ASecondSentenceSaysHowSureItIsAndWhy) {
  add("C:\\a.exe", "gone", "2");
  add("\\\\server\\a.exe", "far", "2");
  form.evidence = {
      {.confidence = Confidence::Unsure, .reasons = {Reason::Absent, Reason::Share}, .tested = {}},
      {.confidence = Confidence::Sure, .reasons = {Reason::Absent}, .tested = {}}};
  form.View2.setItemData(1, 2);
  form.View2.setItemData(2, 1);
  View2_ItemClick(form, 1);
  EXPECT_EQ(form.EvidenceText.caption.get(), "Sure. What it names does not exist.");
  View2_ItemClick(form, 2);
  EXPECT_EQ(form.EvidenceText.caption.get(),
            "Unsure. It names a file on another computer, which is not asked.");
}

TEST_F(EntryDetailsTest, TheSecondSentenceIsInTheLanguageInUse) {
  form.programFolder = "C:\\EntryDetailsTest";
  form.langFileName = "own.lang";
  makeFile("C:\\EntryDetailsTest\\lang\\own.lang",
           "[Evidence]\nlikely=Fast\nshared-count=Viele.\n");
  form.evidence = {
      {.confidence = Confidence::Likely, .reasons = {Reason::SharedCount}, .tested = {}}};
  add("C:\\a.exe", "gone", "2");
  form.View2.setItemData(1, 1);
  EXPECT_EQ(evidenceText(form, 1), "Fast. Viele.");
}

TEST_F(EntryDetailsTest, WithoutASecondLookThereIsNoSecondSentence) {
  form.evidence = {{.confidence = Confidence::Sure, .reasons = {Reason::Absent}, .tested = {}}};
  add("C:\\a.exe", "gone", "2");
  form.EvidenceText.caption = "of another row";
  View2_ItemClick(form, 1);
  EXPECT_EQ(form.EvidenceText.caption.get(), "");
  EXPECT_EQ(evidenceText(form, 2), "");
}

}  // namespace
}  // namespace zelvreg
