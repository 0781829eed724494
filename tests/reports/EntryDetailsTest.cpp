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

}  // namespace
}  // namespace zelvreg
