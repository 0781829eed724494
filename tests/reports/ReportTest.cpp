#include "reports/Report.h"

#include "scan/Findings.h"
#include "shell/StartUp.h"
#include "support/ComputerFixture.h"
#include "support/PlantedEvidence.h"
#include "text/Pattern.h"

namespace zelvreg {
namespace {

const std::string rule = std::string(59, '-') + "\r\n";

class ReportTest : public fixture::ComputerFixture {
 protected:
  ReportTest() { bindClicks(form); }

  void add(const char* location, const char* badValue, const char* rootName = "HKEY_USERS",
           const char* subKey = "Software\\Key") {
    ScannerRun run;
    addRow(form, run, {location, badValue, "2", rootName, subKey, "a"});
  }
  // The report without its first line, which has the time, and without its last, the maker's.
  std::string middle() {
    const std::string text = reportText(form);
    const auto start = text.find("\r\n") + 2;
    const auto end = text.rfind("\r\n", text.size() - 3) + 2;
    return text.substr(start, end - start);
  }
};

TEST_F(ReportTest, TheFirstLineGivesDateAndTime) {
  add("a", "b");
  const std::string text = reportText(form);
  EXPECT_EQ(matchesPattern(text.substr(0, text.find("\r\n")),
                           "Report For registry bad entries  At   ##,##,####   ##:##:##"),
            Match::Yes);
}

TEST_F(ReportTest, AllRowsFollowInOrderWhetherTickedOrNot) {
  add("first", "C:\\a.exe");
  add("second", "", "HKEY_CLASSES_ROOT", ".x");
  form.View2.setChecked(2, true);
  EXPECT_EQ(middle(), "Total bad entries found = 2 \r\n" + rule + "\r\r\n" +
                          "first  |  HKEY_USERS  |  Software\\Key  |  C:\\a.exe\r\n"
                          "second  |  HKEY_CLASSES_ROOT  |  .x  |  \r\n" +
                          rule + "This Report Made by Zelvane Tuner\r\n");
}

TEST_F(ReportTest, FieldsLoseTheBlanksAroundThem) {
  add("  a b ", " value  ", " HKEY_USERS ", "  Software\\Key ");
  EXPECT_NE(middle().find("\r\na b  |  HKEY_USERS  |  Software\\Key  |  value\r\n"),
            std::string::npos);
}

TEST_F(ReportTest, NoNameSteersATerminalOrBeginsALine) {
  add("a\x1b[2J", "b\r\nc", "HKEY_USERS",
      "d\x07"
      "e");
  EXPECT_NE(middle().find("\r\na [2J  |  HKEY_USERS  |  d e  |  b  c\r\n"), std::string::npos);
}

TEST_F(ReportTest, AnEmptyFirstFieldKeepsItsPlace) {
  add("", "value");
  EXPECT_NE(middle().find("\r\n  |  HKEY_USERS  |  Software\\Key  |  value\r\n"),
            std::string::npos);
}

TEST_F(ReportTest, TheEvidenceIsASectionOfItsOwn) {
  add(" first ", "C:\\a.exe");
  add("second", "b");
  const std::string before = reportText(form);
  fixture::plantEvidence(form, 1,
                         {.confidence = Confidence::Likely,
                          .reasons = {Reason::Absent, Reason::BareName},
                          .tested = {"C:\\a.exe", "D:\\\x1b[2J\r\n"}});
  EXPECT_EQ(reportText(form).substr(before.find("\r\n")), before.substr(before.find("\r\n")));
  EXPECT_EQ(evidenceText(form),
            "\r\nHow Sure Each Bad Entry Is\r\n" + rule +
                "1  |  first  |  likely  |  absent bare-name\r\n"
                "    It names a file without its folder, and the file is in none of the usual "
                "folders.\r\n"
                "    C:\\a.exe\r\n"
                "    D:\\ [2J  \r\n"
                "2  |  second  |  unsure  |  not-examined\r\n"
                "    The entry was not examined a second time.\r\n" +
                rule);
}

TEST_F(ReportTest, TheTotalIsFilledToTheNextColumnOfFourteen) {
  for (int row = 0; row < 10; ++row) {
    add("a", "b");
  }
  // The text with two digits ends at a column, which takes it to the one after.
  const std::string total = "Total bad entries found = 10";
  ASSERT_EQ(total.size(), 28U);
  EXPECT_EQ(middle().substr(0, 44), total + std::string(14, ' ') + "\r\n");
}

TEST_F(ReportTest, TheLastLineHoldsTwoAddresses) {
  add("a", "b");
  const std::string text = reportText(form);
  ASSERT_TRUE(text.ends_with("\r\n"));
  const auto start = text.rfind("\r\n", text.size() - 3) + 2;
  const std::string line = text.substr(start, text.size() - 2 - start);
  const auto bars = line.find(" || ");
  ASSERT_NE(bars, std::string::npos);
  EXPECT_GT(bars, 0U);
  EXPECT_LT(bars + 4, line.size());
  EXPECT_EQ(line.find("||", bars + 4), std::string::npos);
}

TEST_F(ReportTest, WithoutRowsNoNameIsAskedFor) {
  int asked = 0;
  form.dlg1.show = [&](const CommonDialog& /*dialog*/) {
    ++asked;
    return std::string();
  };
  form.cmd_report.click();
  EXPECT_EQ(asked, 0);
  add("a", "b");
  form.cmd_report.click();
  EXPECT_EQ(asked, 1);
}

TEST_F(ReportTest, TheDialogIsForTextFiles) {
  add("a", "b");
  std::string seen;
  form.dlg1.show = [&](const CommonDialog& dialog) {
    seen = dialog.title + "/" + dialog.filter + "/" + dialog.defaultExtension;
    return std::string();
  };
  saverep(form);
  EXPECT_EQ(seen, "Save As/*.txt (text files)|*.txt/*.txt");
}

}  // namespace
}  // namespace zelvreg
