// Names that code pages have no characters for, or whose second bytes there are separators, on a
// computer of each code page. The Windows program has the code page of the system it runs on.
#include <gtest/gtest.h>

#include <algorithm>

#include "console/CommandRun.h"
#include "json/JsonText.h"
#include "support/MachineFixture.h"

namespace zelvreg::console {
namespace {

using nlohmann::json;

class AnyCodePageTest : public ::testing::TestWithParam<const char*>,
                        protected fixture::MachineBuilder,
                        protected CommandRun {
 protected:
  AnyCodePageTest() { setting("codepage", GetParam()); }

  int run(std::vector<std::string> arguments) {
    start();
    stop();
    return runAgain(std::move(arguments));
  }

  // On the folder as the run before left it.
  int runAgain(std::vector<std::string> arguments) {
    return onMachine(machineFolder().path().string(), std::move(arguments));
  }

  [[nodiscard]] json findings() const { return jsonOfText(out.str())["findings"]; }

  bool finds(const char* row, std::string_view badValue) {
    runAgain({"scan", "--only", row, "--json"});
    const json found = findings();
    return std::ranges::any_of(
        found, [&](const json& finding) { return finding["badValue"] == badValue; });
  }
};

TEST_P(AnyCodePageTest, ARuleOfTheFirewallWhoseProgramIsThereStays) {
  file(R"(C:\ポケット\x.exe)");
  key(R"(HKEY_LOCAL_MACHINE\SYSTEM\CurrentControlSet\Services\SharedAccess\Parameters\)"
      R"(FirewallPolicy\FirewallRules)",
      R"("There"="v2.30|Action=Allow|App=C:\\ポケット\\x.exe|Name=x|")"
      "\n"
      R"("Gone"="v2.30|Action=Allow|App=C:\\ポケット\\gone.exe|Name=x|")");
  EXPECT_EQ(run({"scan", "--only", "firewall", "--json"}), problemsFound);
  ASSERT_EQ(findings().size(), 1U);
  EXPECT_EQ(findings()[0]["badValue"], "Gone");
}

TEST_P(AnyCodePageTest, AnExclusionHidesWhatItNamesAndNothingElse) {
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\サーバー)", R"("Path"="C:\\gone\\x.exe")");
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Other)", R"("Path"="C:\\gone\\x.exe")");
  run({"exclude", "add", R"(HKEY_LOCAL_MACHINE\SOFTWARE\サーバー)"});
  runAgain({"exclude", "list"});
  EXPECT_NE(out.str().find("サーバー"), std::string::npos);
  EXPECT_EQ(runAgain({"scan", "--only", "app-paths", "--json"}), problemsFound);
  ASSERT_EQ(findings().size(), 1U);
  EXPECT_EQ(findings()[0]["subKey"], R"(Software\Other)");
}

TEST_P(AnyCodePageTest, AnEmptyRecordOfAnInstalledProgramGoesAndReturns) {
  const std::string records =
      R"(HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall\)";
  key(records + "表計算");
  run({"undo", "on"});
  EXPECT_TRUE(finds("uninstall", "表計算"));
  EXPECT_EQ(runAgain({"fix", "--all", "--only", "uninstall", "--yes"}), nothingFound);
  EXPECT_FALSE(finds("uninstall", "表計算"));
  EXPECT_EQ(runAgain({"undo", "restore", "1"}), nothingFound);
  EXPECT_TRUE(finds("uninstall", "表計算"));
}

TEST_P(AnyCodePageTest, ASearchFindsEveryPath) {
  key(R"(HKEY_CURRENT_USER\Software\Searched)", R"("Path"="C:\\App\\マイ\\gone.exe")");
  run({"search", R"(:\)", "--in", "HKCU", "--data", "--json"});
  ASSERT_EQ(findings().size(), 1U);
  EXPECT_EQ(findings()[0]["location"], R"(c:\app\マイ\gone.exe)");
}

TEST_P(AnyCodePageTest, AProgramBelowAUserOfAnyNameIsFound) {
  setting("user", "Иван");
  file(R"(C:\Users\Иван\app.exe)");
  key(R"(HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Run)",
      R"("App"="C:\\Users\\Иван\\app.exe")"
      "\n"
      R"("Gone"="C:\\Users\\Иван\\gone.exe")");
  EXPECT_EQ(run({"scan", "--only", "startup", "--json"}), problemsFound);
  ASSERT_EQ(findings().size(), 1U);
  EXPECT_EQ(findings()[0]["badValue"], "Gone");
}

TEST_P(AnyCodePageTest, AJournalBringsBackNamesOfEveryScript) {
  const std::string run32 =
      R"(HKEY_LOCAL_MACHINE\SOFTWARE\Wow6432Node\Microsoft\Windows\CurrentVersion\Run)";
  key(run32, R"("Сервер ソ表"="C:\\нет\\ポ.exe")"
             "\n"
             R"("שלום 會育"="C:\\서버\\Füße.exe")");
  run({"undo", "on"});
  EXPECT_EQ(runAgain({"fix", "--all", "--only", "startup", "--yes"}), nothingFound);
  EXPECT_EQ(runAgain({"scan", "--only", "startup"}), nothingFound);
  EXPECT_EQ(runAgain({"undo", "restore", "1", "--journal"}), nothingFound);
  EXPECT_TRUE(finds("startup", "Сервер ソ表"));
  EXPECT_TRUE(finds("startup", "שלום 會育"));
  EXPECT_EQ(findings().size(), 2U);
}

TEST_P(AnyCodePageTest, HalvesOfPairsAreFoundAndRepaired) {
  folder("C:\\Windows");
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows NT\CurrentVersion\Fonts)",
      R"("Half"=hex(1):61,00,00,D8,2E,00,74,00,74,00,66,00,00,00)");
  EXPECT_EQ(run({"scan", "--only", "fonts", "--json"}), problemsFound);
  ASSERT_EQ(findings().size(), 1U);
  EXPECT_EQ(textIn(findings()[0]["badValue"]), "a\xED\xA0\x80.ttf");
  machineFolder().write("result.json", out.str());
  const std::string result = (machineFolder().path() / "result.json").string();
  EXPECT_EQ(runAgain({"fix", "--all", "--only", "fonts", "--from", result, "--yes"}), nothingFound);
  EXPECT_EQ(error.str().find("no longer found"), std::string::npos);
  EXPECT_EQ(runAgain({"scan", "--only", "fonts"}), nothingFound);
}

INSTANTIATE_TEST_SUITE_P(CodePages, AnyCodePageTest,
                         ::testing::Values("932", "936", "949", "950", "1251", "1252", "1255",
                                           "65001"),
                         [](const auto& page) { return std::string(page.param); });

}  // namespace
}  // namespace zelvreg::console
