// Only the emulated computer can have every code page.
#include "form/Form42.h"
#include "form/ProcessEnd.h"
#include "registry/Hives.h"
#include "reports/Report.h"
#include "runtime/OwnText.h"
#include "scan/AutomaticEnd.h"
#include "scan/Findings.h"
#include "support/MachineFixture.h"
#include "undo/FixListBackup.h"

namespace zelvreg {
namespace {

const std::string mark = "\xEF\xBB\xBF";

struct Page {
  const char* number;
  const char* text;  // that the page has
  const char* bytes;
};

constexpr Page pages[] = {
    {"932", "ソ表ポ", "\x83\x5C\x95\x5C\x83\x7C"}, {"936", "會服", "\x95\xFE\xB7\xFE"},
    {"949", "서버", "\xBC\xAD\xB9\xF6"},           {"950", "育服", "\xA8\x7C\xAA\x41"},
    {"1251", "Иван", "\xC8\xE2\xE0\xED"},          {"1252", "Füße", "F\xFC\xDF\x65"},
    {"1255", "שלום", "\xF9\xEC\xE5\xED"},          {"65001", "サ\U0001F600", "サ\U0001F600"},
};

// A form with one finding after another, in a program's folder of its own.
class OwnFilesOfPage : public fixture::MachineFixture, public ::testing::WithParamInterface<Page> {
 protected:
  OwnFilesOfPage() {
    setting("codepage", GetParam().number);
    folder("C:\\Own");
    start();
    form.programFolder = "C:\\Own";
    form.dlg1.show = [](const CommonDialog& /*dialog*/) { return "C:\\Own\\report.txt"; };
  }

  void add(const std::string& location) {
    ScannerRun run;
    addRow(form, run, {location, "bad", "2", "HKEY_USERS", "Key", "a"});
    form.View2.setChecked(form.View2.count(), true);
  }

  // What each of the files holds once it was written.
  std::string copyOfFixList() {
    Command30_Click(form);
    return content("C:\\Own\\backup\\fixreg\\31_01_2026_13.45.06.txt");
  }
  std::string locations() {
    form.autoMode = 1;
    EXPECT_THROW(endAutomaticScan(form), ProcessEnd);
    return content("C:\\Own\\regtmp.txt");
  }
  std::string report() {
    saverep(form);
    return content("C:\\Own\\report.txt");
  }

  const std::string half = "\xED\xA0\x80";
  Form42 form;
};

TEST_P(OwnFilesOfPage, AreInTheCodePageIfItHoldsAll) {
  add(GetParam().text);
  const std::string bytes = GetParam().bytes;
  EXPECT_EQ(copyOfFixList(), "HKEY_USERS,Key,bad," + bytes + "\r\n\r\n");
  EXPECT_EQ(locations(), bytes + "\r\n");
  EXPECT_NE(report().find("\n" + bytes + "  |  HKEY_USERS  |  Key  |  bad\r\n"), std::string::npos);
}

TEST_P(OwnFilesOfPage, AreUtf8IfOneTextNeedsIt) {
  add(GetParam().text);
  add("C:\\" + half);
  const std::string text = GetParam().text;
  EXPECT_EQ(copyOfFixList(), mark + "HKEY_USERS,Key,bad," + text +
                                 "\r\n\r\nHKEY_USERS,Key,bad,C:\\" + half + "\r\n\r\n");
  EXPECT_EQ(locations(), mark + text + "\r\nC:\\" + half + "\r\n");
  EXPECT_EQ(report(), mark + reportText(form));
}

TEST_P(OwnFilesOfPage, ACopyOfTheFixListIsReadInEither) {
  const std::string text = GetParam().text;
  for (const std::string& value : {text, text + half}) {
    file("C:\\Own\\backup\\fixreg\\23_03_2005_13.04.13.txt",
         ownBytes("HKEY_CURRENT_USER,Software\\" + value + "," + value + "," + value + "\r\n\r\n"));
    SaveRegString(HiveHandle::CurrentUser, "Software\\" + value, value, "before");
    Command31_Click(form);
    std::string kept;
    GetRegString(HiveHandle::CurrentUser, "Software\\" + value, value, kept);
    EXPECT_EQ(kept, value);
  }
}

TEST_P(OwnFilesOfPage, AReportHoldsNothingThatControlsATerminal) {
  add(std::string("a\x1b\u009b\u0085z") + GetParam().text);
  EXPECT_NE(ownText(report()).find(std::string("\na   z") + GetParam().text), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(Pages, OwnFilesOfPage, ::testing::ValuesIn(pages),
                         [](const auto& page) { return std::string(page.param.number); });

}  // namespace
}  // namespace zelvreg
