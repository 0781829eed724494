// Only the emulated computer has a clock and a suite of its own, and files and a registry that a
// whole scan may repair.
#include "form/Form42.h"
#include "form/ProcessEnd.h"
#include "machine/RegistryCalls.h"
#include "machine/computer/Clock.h"
#include "machine/computer/Requests.h"
#include "scan/SafeguardSources.h"
#include "shell/CommandModes.h"
#include "shell/StartUp.h"
#include "support/MachineFixture.h"

namespace zelvreg {
namespace {

constexpr const char* fonts =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Fonts";
constexpr const char* ticks =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\timer\\reg";
constexpr const char* answer =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\real";

// A computer with one font whose file is gone, and a form that is not loaded yet.
class StartUpModesTest : public fixture::MachineFixture {
 protected:
  StartUpModesTest() {
    key("HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion",
        R"("SystemRoot"="C:\\Windows")");
    key("HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion",
        R"("SystemRoot"="C:\\Windows")");
    key(fonts, R"("Gone"="gone.ttf")");
    // A list of programs without a record would itself be found.
    for (const char* list :
         {"HKEY_LOCAL_MACHINE\\SOFTWARE", "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node",
          "HKEY_CURRENT_USER\\Software"}) {
      key(std::string(list) + "\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Tool",
          R"("DisplayName"="Tool")");
    }
    folder("C:\\Windows\\System32");
    folder("C:\\Windows\\SysWOW64");
    folder("C:\\program");
    form.programFolder = "C:\\program";
    form.safeguardChoices = choicesAsDescribed();
    form.dialogs.show = [this](const UserMessage& message) {
      told.push_back(message.text);
      return Answer::No;
    };
  }

  void expectEnd(const char* commandLine) {
    readCommandLine(form, commandLine);
    EXPECT_THROW(Form_Load(form), ProcessEnd);
    EXPECT_FALSE(form.window.visible);
    EXPECT_FALSE(form.Timer1.isEnabled());
    EXPECT_TRUE(told.empty());
  }
  void expectAllTicked() const {
    ASSERT_EQ(form.View1.count(), 16U);
    for (std::size_t row = 1; row <= form.View1.count(); ++row) {
      EXPECT_TRUE(form.View1.isChecked(row)) << row;
    }
  }

  static std::string stored(const char* path, const char* name) {
    const fixture::OpenedKey key(HKEY_LOCAL_MACHINE,
                                 path + std::string_view("HKEY_LOCAL_MACHINE\\").size(),
                                 KEY_QUERY_VALUE | KEY_WOW64_64KEY);
    return fixture::text(key, name);
  }
  // Whether the font is still registered.
  static std::string font() { return stored(fonts, "Gone"); }

  Form42 form;
  std::vector<std::string> told;
};

TEST_F(StartUpModesTest, TheListModeTicksAllRowsAndWritesWhatItFound) {
  start();
  expectEnd("w4");
  expectAllTicked();
  EXPECT_TRUE(form.Timer2.isEnabled());
  EXPECT_EQ(content("C:\\program\\regtmp.txt"), "Gone\r\n");
  EXPECT_EQ(content("C:\\program\\regst.txt"), " 1 \r\n");
  EXPECT_EQ(font(), "gone.ttf");
}

TEST_F(StartUpModesTest, TheFixModeRepairsWithoutAQuestion) {
  start();
  expectEnd("w4-c4");
  expectAllTicked();
  EXPECT_TRUE(form.Timer2.isEnabled());
  EXPECT_EQ(content("C:\\program\\regst.txt"), " 1 \r\n");
  EXPECT_FALSE(has("C:\\program\\regtmp.txt"));
  EXPECT_EQ(font(), "(error 2)");
  // No copy of the list: only the user's Fix makes one.
  EXPECT_FALSE(has("C:\\program\\backup"));
}

TEST_F(StartUpModesTest, WhatTheUserHasExcludedIsListedAndRepairedToo) {
  file("C:\\program\\exregscan.txt", "HKEY_LOCAL_MACHINE\r\n");
  start();
  expectEnd("w4");
  EXPECT_EQ(content("C:\\program\\regtmp.txt"), "Gone\r\n");
  Form42 repairing;
  repairing.programFolder = form.programFolder;
  repairing.safeguardChoices = choicesAsDescribed();
  readCommandLine(repairing, "w4-c4");
  EXPECT_THROW(Form_Load(repairing), ProcessEnd);
  EXPECT_EQ(font(), "(error 2)");
}

TEST_F(StartUpModesTest, TheSuiteIsToldTheNumberOnceASecond) {
  setting("suite", "1");
  machine::Machine& computer = start();
  form.messages.serveHost = [&computer] { computer.clock().advance(100); };
  expectEnd("w4");
  const auto& messages = computer.requests().suiteMessages;
  ASSERT_FALSE(messages.empty());
  EXPECT_EQ(messages.front().text, "r|0");
  EXPECT_EQ(messages.back().text, "r|1");
}

TEST_F(StartUpModesTest, WithoutTheSuiteTheScanEndsAtTheFirstTick) {
  machine::Machine& computer = start();
  form.messages.serveHost = [&computer] { computer.clock().advance(100); };
  expectEnd("w4-c4");
  EXPECT_FALSE(has("C:\\program\\regst.txt"));
  EXPECT_EQ(font(), "gone.ttf");
}

TEST_F(StartUpModesTest, ARecheckScansTheRowsThatWereTickedAndAnswers) {
  key(ticks, R"("font"="1")");
  start();
  expectEnd("r");
  EXPECT_TRUE(form.View1.isChecked(1));
  EXPECT_FALSE(form.View1.isChecked(2));
  EXPECT_EQ(form.View2.count(), 1U);
  EXPECT_FALSE(form.Timer2.isEnabled());
  EXPECT_EQ(stored(answer, "rc"), "1");
  EXPECT_EQ(font(), "gone.ttf");
  EXPECT_FALSE(has("C:\\program\\regst.txt"));
}

TEST_F(StartUpModesTest, ARecheckRepairsIfAskedTo) {
  key(ticks, R"("font"="1")");
  start();
  expectEnd("r-c");
  EXPECT_EQ(stored(answer, "rc"), "1");
  EXPECT_EQ(font(), "(error 2)");
  EXPECT_FALSE(has("C:\\program\\backup"));
}

TEST_F(StartUpModesTest, ARecheckLeavesRowsThatWereNotTicked) {
  key(ticks, R"("font"="0"
"dll"="1")");
  start();
  expectEnd("r-c");
  EXPECT_EQ(stored(answer, "rc"), "1");
  EXPECT_EQ(font(), "gone.ttf");
}

TEST_F(StartUpModesTest, A32BitSystemIsDetected) {
  setting("bits", "32");
  start();
  form.Is64BitOS = true;
  Form_Load(form);
  EXPECT_FALSE(form.Is64BitOS);
}

}  // namespace
}  // namespace zelvreg
