// The viewer is only started on the emulated computer, which notes it and runs nothing. Its clock
// stands at 2026-01-31 13:45:06.
#include "machine/Machine.h"
#include "machine/computer/Processes.h"
#include "machine/computer/Requests.h"
#include "reports/Report.h"
#include "runtime/FileText.h"
#include "scan/Findings.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

using Texts = std::vector<std::string>;

const std::string path = "C:\\Reports\\my report.txt";

class ReportNativeTest : public fixture::ComputerFixture {
 protected:
  ReportNativeTest() {
    makeFolder("C:\\Reports");
    ScannerRun run;
    addRow(form, run, {"location", "bad value", "2", "HKEY_USERS", "Software\\Key", "a"});
  }

  void saveAs(const std::string& name) {
    form.dlg1.show = [name](const CommonDialog& /*dialog*/) { return name; };
    saverep(form);
  }
  static const machine::OpenRequest& opened() {
    return machine::Machine::current()->requests().opened.back();
  }
  static const Texts& started() { return machine::Machine::current()->processes().started; }
};

TEST_F(ReportNativeTest, TheReportIsWrittenAndOpened) {
  saveAs(path);
  const std::string rule = std::string(59, '-') + "\r\n";
  const std::string start =
      "Report For registry bad entries  At   31,01,2026   13:45:06\r\n"
      "Total bad entries found = 1 \r\n" +
      rule + "\r\r\n" + "location  |  HKEY_USERS  |  Software\\Key  |  bad value\r\n" + rule +
      "This Report Made by Zelvane Tuner\r\n";
  EXPECT_EQ(readFileText(path).value_or("(none)").substr(0, start.size()), start);
  EXPECT_EQ(readFileText(path), reportText(form));
  EXPECT_EQ(started(), (Texts{path}));
}

TEST_F(ReportNativeTest, TheReportIsOpenedTheUsualWayAndForNoWindow) {
  saveAs(path);
  ASSERT_EQ(started().size(), 1U);
  EXPECT_EQ(opened().owner, nullptr);
  EXPECT_EQ(opened().verb, std::nullopt);
  EXPECT_EQ(opened().file, path);
  EXPECT_EQ(opened().parameters, std::nullopt);
  EXPECT_EQ(opened().folder, std::nullopt);
  EXPECT_EQ(opened().showStyle, 1);
}

TEST_F(ReportNativeTest, AFileOfThatNameIsReplacedWithoutAQuestion) {
  makeFile(path, std::string(5000, 'x'));
  int asked = 0;
  form.dialogs.show = [&](const UserMessage& /*message*/) {
    ++asked;
    return Answer::No;
  };
  saveAs(path);
  EXPECT_EQ(readFileText(path), reportText(form));
  EXPECT_EQ(asked, 0);
}

TEST_F(ReportNativeTest, WithoutANameNothingIsWrittenOrOpened) {
  makeFile(path, "old");
  for (const char* name : {"", "   "}) {
    saveAs(name);
    EXPECT_EQ(started(), Texts());
  }
  EXPECT_EQ(readFileText(path), "old");
}

TEST_F(ReportNativeTest, AFileThatCannotBeCreatedIsOpenedAnyway) {
  saveAs("C:\\No such folder\\report.txt");
  EXPECT_EQ(started(), (Texts{"C:\\No such folder\\report.txt"}));
  EXPECT_EQ(readFileText("C:\\No such folder\\report.txt"), std::nullopt);
}

TEST_F(ReportNativeTest, ADocumentIsOpenedWithTheSystemsAnswer) {
  long answer = 0;
  StartDoc(path, answer);
  EXPECT_EQ(started(), (Texts{path}));
  EXPECT_GT(answer, 32);
  EXPECT_EQ(opened().owner, GetDesktopWindow());
  EXPECT_EQ(opened().verb, "Open");
  EXPECT_EQ(opened().file, path);
  EXPECT_EQ(opened().parameters, "");
  EXPECT_EQ(opened().folder, "C:\\");
  EXPECT_EQ(opened().showStyle, 1);
}

}  // namespace
}  // namespace zelvreg
