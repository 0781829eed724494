#include "form/Form42.h"
#include "form/ProcessEnd.h"
#include "keys/RegistryImport.h"
#include "repair/RepairDriver.h"
#include "repair/SafetyExportFixture.h"
#include "runtime/FileText.h"
#include "scan/AutomaticEnd.h"
#include "scan/SafeguardSources.h"
#include "shell/StartUp.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

const std::string suite =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe";
const std::string user = "HKEY_CURRENT_USER\\Software\\StoppedRepairTest";
const std::string extensions =
    "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\FileExts";

class StoppedRepairTest : public fixture::SafetyExportFixture {
 protected:
  StoppedRepairTest() {
    form.safeguards = {};
    emptyKey(suite);
    emptyKey(user);
    setText(user, "a", "x");
    bindClicks(form);
    form.decideSafeguards.bind([this] { decideSafeguards(form); });
    form.dialogs.show = [this](const UserMessage& message) {
      messages.push_back(message);
      return message.isQuestion ? Answer::Yes : Answer::Ok;
    };
  }
  ~StoppedRepairTest() override {
    removeKey(user);
    DeleteFileW(Wide(form.programFolder + "\\backup").get());
    DeleteFileW(Wide(form.programFolder + "\\regst.txt").get());
  }

  void addRow() {
    addTickedRow({"", "a", "155", "HKEY_CURRENT_USER", "Software\\StoppedRepairTest", ""});
  }

  // Puts a file where the exports' folder would be.
  void refuseExports() {
    form.programFolder += " refused";
    makeFile(form.programFolder + "\\backup");
  }

  void expectNothingDone() const {
    EXPECT_TRUE(form.isRepairStopped);
    EXPECT_EQ(form.View2.count(), 1U);
    EXPECT_EQ(storedText(user, "a"), "x");
    EXPECT_EQ(storedText(suite + "\\statics\\regscan", "count"), "(none)");
    EXPECT_EQ(storedText(suite + "\\wizard\\finish", "1"), "(none)");
    EXPECT_EQ(storedText(suite + "\\regscan", "cnt"), "(none)");
  }

  std::vector<UserMessage> messages;
};

TEST_F(StoppedRepairTest, AUserIsToldWhyNothingWasRepaired) {
  setText(suite + "\\regscan", "saveundo", "1");
  addRow();
  refuseExports();
  runRepair(form);
  expectNothingDone();
  ASSERT_EQ(messages.size(), 2U);
  EXPECT_TRUE(messages[0].isQuestion);
  EXPECT_FALSE(messages[1].isQuestion);
  EXPECT_EQ(messages[1].icon, MessageIcon::Exclamation);
  EXPECT_TRUE(messages[1].text.starts_with("Nothing was repaired: the safety export"));
}

TEST_F(StoppedRepairTest, TheNextRepairThatCanBeExportedIsStoppedNoLonger) {
  addRow();
  const std::string folder = form.programFolder;
  refuseExports();
  runRepair(form);
  form.programFolder = folder;
  runRepair(form);
  EXPECT_FALSE(form.isRepairStopped);
  EXPECT_EQ(storedText(user, "a"), "(none)");
}

TEST_F(StoppedRepairTest, TheFixModeSaysNothingAndStillWritesItsTotal) {
  addRow();
  refuseExports();
  form.autoMode = 2;
  form.totalFound = 7;
  EXPECT_THROW(endAutomaticScan(form), ProcessEnd);
  expectNothingDone();
  EXPECT_TRUE(messages.empty());
  EXPECT_EQ(readFileText(form.programFolder + "\\regst.txt"), " 7 \r\n");
}

TEST_F(StoppedRepairTest, TheRecheckThatRepairsSaysNothingAndStillAnswersTheSuite) {
  addRow();
  refuseExports();
  form.recheckMode = 1;
  form.recheckFix = 1;
  EXPECT_THROW(endAutomaticScan(form), ProcessEnd);
  expectNothingDone();
  EXPECT_TRUE(messages.empty());
  EXPECT_EQ(storedText(suite + "\\real", "rc"), "1");
}

TEST_F(StoppedRepairTest, WithTheExportSwitchedOffNothingStopsIt) {
  setText(suite + "\\regscan", "safetyexport", "0");
  addRow();
  refuseExports();
  runRepair(form);
  EXPECT_FALSE(form.isRepairStopped);
  EXPECT_EQ(messages.size(), 1U);
  EXPECT_EQ(storedText(user, "a"), "(none)");
}

TEST_F(StoppedRepairTest, WhatTheSettingLiftsTheProtectionFromIsExported) {
  setText(extensions + "\\.stoppedrepairtest", "x", "y");
  setText(suite + "\\regscan", "protect", "0");
  addTickedRow({"", "", "122", "HKEY_CURRENT_USER", "", ""});
  runRepair(form);
  EXPECT_FALSE(hasKey(extensions));
  EXPECT_TRUE(form.repairOutcome.refused.empty());
  ASSERT_EQ(exports().size(), 1U);
  EXPECT_TRUE(importRegistryFile(exports().front()).isDone);
  EXPECT_EQ(storedText(extensions + "\\.stoppedrepairtest", "x"), "y");
  removeKey(extensions + "\\.stoppedrepairtest");
}

TEST_F(StoppedRepairTest, AnyOtherTextOfTheSettingKeepsTheProtection) {
  for (const char* text : {"1", "", "00", "no"}) {
    setText(extensions + "\\.stoppedrepairtest", "x", "y");
    setText(suite + "\\regscan", "protect", text);
    addTickedRow({"", "", "122", "HKEY_CURRENT_USER", "", ""});
    runRepair(form);
    EXPECT_EQ(storedText(extensions + "\\.stoppedrepairtest", "x"), "y") << text;
    EXPECT_FALSE(form.repairOutcome.refused.empty()) << text;
    EXPECT_TRUE(exports().empty()) << text;
  }
  removeKey(extensions + "\\.stoppedrepairtest");
}

}  // namespace
}  // namespace zelvreg
