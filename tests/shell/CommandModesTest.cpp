#include "shell/CommandModes.h"

#include "form/ProcessEnd.h"
#include "languages/Texts.h"
#include "runtime/FileText.h"
#include "scan/AutomaticEnd.h"
#include "scan/CategoryTable.h"
#include "shell/Languages.h"
#include "shell/StartUp.h"
#include "support/ComputerFixture.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

const std::string suite =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe";
const std::string user = "HKEY_CURRENT_USER\\Software\\CommandModesTest";

struct Mode {
  const char* text;
  int autoMode;
  int recheckMode;
  int recheckFix;
  const char* commandText;
};

class CommandLineModes : public ::testing::TestWithParam<Mode> {};

TEST_P(CommandLineModes, FollowFromTheTextBetweenItsDashes) {
  Form42 form;
  readCommandLine(form, GetParam().text);
  EXPECT_EQ(form.autoMode, GetParam().autoMode);
  EXPECT_EQ(form.recheckMode, GetParam().recheckMode);
  EXPECT_EQ(form.recheckFix, GetParam().recheckFix);
  EXPECT_EQ(form.commandText, GetParam().commandText);
  EXPECT_TRUE(form.hasCommandLine);
  EXPECT_FALSE(form.window.visible);
}

INSTANTIATE_TEST_SUITE_P(Texts, CommandLineModes,
                         ::testing::Values(Mode{"w4", 1, 0, 0, ""}, Mode{" W4-C4 ", 2, 0, 0, ""},
                                           Mode{"w4-x", 1, 0, 0, ""}, Mode{"r", 0, 1, 0, "r"},
                                           Mode{"r-c", 0, 1, 1, "r-c"}, Mode{"d", 0, 0, 0, "d"},
                                           Mode{"D ", 0, 0, 0, "d"}, Mode{"w44", 0, 0, 0, "w44"},
                                           Mode{"else", 0, 0, 0, "else"},
                                           Mode{"d-x", 0, 0, 0, "d-x"}, Mode{"r-x", 0, 1, 0, "r-x"},
                                           Mode{"w4-c4-x", 2, 0, 0, ""}, Mode{" W4 ", 1, 0, 0, ""},
                                           Mode{"R-C", 0, 1, 1, "r-c"},
                                           Mode{"w4 -c4", 0, 0, 0, "w4 -c4"},
                                           Mode{"r-c-x", 0, 1, 1, "r-c-x"}));

TEST(CommandLineMode, AnEmptyTextIsAnOrdinaryStart) {
  Form42 form;
  readCommandLine(form, "  ");
  EXPECT_FALSE(form.hasCommandLine);
  EXPECT_TRUE(form.window.visible);
}

class AutomaticEndTest : public fixture::ComputerFixture {
 protected:
  AutomaticEndTest() {
    emptyKey(suite);
    emptyKey(user);
    makeFolder(form.programFolder);
    bindClicks(form);
  }
  ~AutomaticEndTest() override {
    removeKey(user);
    for (const char* file : {"\\regst.txt", "\\regtmp.txt"}) {
      DeleteFileW(Wide(form.programFolder + file).get());
    }
  }

  void add(const char* name) {
    setText(user, name, "x");
    const std::size_t row = form.View2.add(std::string("location of ") + name);
    form.View2.setText(row, 1, name);
    form.View2.setText(row, 2, "155");
    form.View2.setText(row, 4, "Software\\CommandModesTest");
  }
  std::string fileText(const char* name) {
    return readFileText(form.programFolder + "\\" + name).value_or("(none)");
  }
};

TEST_F(AutomaticEndTest, WithoutAModeTheScanContinues) {
  add("a");
  endAutomaticScan(form);
  EXPECT_EQ(fileText("regst.txt"), "(none)");
}

TEST_F(AutomaticEndTest, TheListModeWritesItsTwoFilesAndFixesNothing) {
  form.autoMode = 1;
  form.totalFound = 12;
  add("a");
  add("b");
  EXPECT_THROW(endAutomaticScan(form), ProcessEnd);
  EXPECT_EQ(fileText("regtmp.txt"), "location of a\r\nlocation of b\r\n");
  EXPECT_EQ(fileText("regst.txt"), " 12 \r\n");
  EXPECT_EQ(storedText(user, "a"), "x");
}

TEST_F(AutomaticEndTest, AnEmptyListIsAnEmptyFile) {
  form.autoMode = 1;
  EXPECT_THROW(endAutomaticScan(form), ProcessEnd);
  EXPECT_EQ(fileText("regtmp.txt"), "");
  EXPECT_EQ(fileText("regst.txt"), " 0 \r\n");
}

TEST_F(AutomaticEndTest, TheFixModeRepairsAllRowsWithoutAQuestion) {
  form.autoMode = 2;
  form.totalFound = 2;
  bool wasAsked = false;
  form.dialogs.show = [&wasAsked](const UserMessage&) {
    wasAsked = true;
    return Answer::No;
  };
  add("a");
  add("b");
  EXPECT_THROW(endAutomaticScan(form), ProcessEnd);
  EXPECT_FALSE(wasAsked);
  EXPECT_EQ(storedText(user, "a"), "(none)");
  EXPECT_EQ(storedText(user, "b"), "(none)");
  EXPECT_EQ(fileText("regst.txt"), " 2 \r\n");
  EXPECT_EQ(fileText("regtmp.txt"), "(none)");
}

TEST_F(AutomaticEndTest, ARecheckAnswersTheSuiteAndRepairsOnlyIfAskedTo) {
  form.recheckMode = 1;
  add("a");
  EXPECT_THROW(endAutomaticScan(form), ProcessEnd);
  EXPECT_EQ(storedText(suite + "\\real", "rc"), "1");
  EXPECT_EQ(storedText(user, "a"), "x");
  form.recheckFix = 1;
  EXPECT_THROW(endAutomaticScan(form), ProcessEnd);
  EXPECT_EQ(storedText(user, "a"), "(none)");
}

TEST_F(AutomaticEndTest, BothModesOfTheSuiteTickAllRowsAndReportWhileTheyScan) {
  for (const int mode : {1, 2}) {
    Form42 fresh;
    fresh.programFolder = form.programFolder;
    createCategoryRows(fresh);
    fresh.autoMode = mode;
    EXPECT_THROW(runCommandMode(fresh), ProcessEnd);
    EXPECT_TRUE(fresh.Timer2.isEnabled());
    for (std::size_t row = 1; row <= 16; ++row) {
      EXPECT_TRUE(fresh.View1.isChecked(row)) << row;
      EXPECT_EQ(fresh.View1.text(row, statusColumn), "Finished") << row;
    }
  }
}

TEST_F(AutomaticEndTest, AnOrdinaryStartTicksAndScansNothing) {
  createCategoryRows(form);
  runCommandMode(form);
  EXPECT_FALSE(form.Timer2.isEnabled());
  EXPECT_FALSE(form.View1.isChecked(1));
  EXPECT_EQ(form.View1.text(1, statusColumn), "");
}

TEST_F(AutomaticEndTest, TheFrontEndIsToldThatTheProcessEnds) {
  bool wasTold = false;
  form.onProcessEnd = [&wasTold] { wasTold = true; };
  form.autoMode = 1;
  EXPECT_THROW(endAutomaticScan(form), ProcessEnd);
  EXPECT_TRUE(wasTold);
}

TEST_F(AutomaticEndTest, ARecheckWithoutTicksSaysSoAndStaysOpen) {
  std::vector<std::string> told;
  form.dialogs.show = [&told](const UserMessage& message) {
    told.push_back(message.text);
    return Answer::Ok;
  };
  readCommandLine(form, "r");
  Form_Load(form);
  // In the language that is chosen there.
  EXPECT_EQ(told, std::vector<std::string>{textOf(form, "scan-nothing-chosen")});
  EXPECT_EQ(storedText(suite + "\\real", "rc"), "(none)");
}

TEST_F(AutomaticEndTest, OneLetterStartsWithoutTheStartButton) {
  readCommandLine(form, "d");
  Form_Load(form);
  EXPECT_FALSE(form.cmd_start.enabled);
}

}  // namespace
}  // namespace zelvreg
