// What a repair must leave: whatever its finding does not name.
#include "form/Form42.h"
#include "repair/GuardFixture.h"
#include "repair/RepairPlan.h"
#include "scanners/FileClasses.h"
#include "scanners/FileExtensions.h"
#include "scanners/ServerFiles.h"
#include "scanners/TypeLibraries.h"
#include "scanners/UninstallRecords.h"
#include "text/Wide.h"

namespace zelvreg::fixture {
namespace {

const std::string machineRecord =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\GuardTest";
const std::string otherRecord =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\"
    "GuardTest";
const std::string userRecord =
    "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\GuardTest";
const std::string classId = "CLSID\\{6A0F3C11-0000-4E7E-9B5A-0000GuardTest}";
const std::string server = classId + "\\InprocServer32";
const std::string otherServer = "Wow6432Node\\" + server;
const std::string extension =
    "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\FileExts\\"
    ".guardtest";

class RepairGuardTest : public GuardFixture {
 protected:
  RepairGuardTest() { removeKeys(); }
  ~RepairGuardTest() override { removeKeys(); }

  static void removeKeys() {
    for (const std::string& key : {machineRecord, otherRecord, userRecord, extension}) {
      removeKey(key);
    }
    for (const std::string& classes : {machineClasses, userClasses}) {
      for (const std::string& key : {std::string("GuardTest"), classId, "Wow6432Node\\" + classId,
                                     std::string("TypeLib\\{GuardTest}")}) {
        removeKey(classes + key);
      }
    }
  }
};

TEST_F(RepairGuardTest, AUsersEmptyRecordLeavesTheComputersWithAllBelowIt) {
  makeKey(userRecord);
  setText(machineRecord, "DisplayName", "living");
  setText(machineRecord + "\\Below", "x", "y");
  find(uninstall);
  EXPECT_EQ(RepairPlan(form).takings(), std::vector<std::string>());
  runRepair(form);
  EXPECT_EQ(storedText(machineRecord, "DisplayName"), "living");
  EXPECT_EQ(storedText(machineRecord + "\\Below", "x"), "y");
  ASSERT_EQ(form.View2.count(), 1U);
  EXPECT_FALSE(form.View2.isChecked(1));
  EXPECT_TRUE(isLeftAlone(machineRecord));
  EXPECT_EQ(form.repairOutcome.leftAlone, 1U);
}

TEST_F(RepairGuardTest, AnEmptyRecordOfOneViewLeavesThatOfTheOther) {
  makeKey(machineRecord);
  setText(otherRecord, "DisplayName", "living");
  repairFound(uninstall);
  EXPECT_FALSE(hasKey(machineRecord));
  EXPECT_EQ(storedText(otherRecord, "DisplayName"), "living");
  EXPECT_EQ(form.View2.count(), 0U);
  EXPECT_EQ(form.repairOutcome.gone, 1U);
}

TEST_F(RepairGuardTest, AnEmptyRecordWithAnotherBelowItStays) {
  setText(machineRecord + "\\Below", "DisplayName", "a record of its own");
  repairFound(uninstall);
  EXPECT_EQ(found, 1U);
  EXPECT_TRUE(hasKey(machineRecord + "\\Below"));
  EXPECT_TRUE(isLeftAlone(machineRecord));
}

TEST_F(RepairGuardTest, ADeadServerOf64BitsLeavesTheOneOf32Bits) {
  setText(machineClasses + server, "", deadFile);
  setText(machineClasses + otherServer, "", livingFile);
  repairFound(cln7);
  EXPECT_EQ(found, 1U);
  EXPECT_EQ(storedText(machineClasses + otherServer, ""), livingFile);
  EXPECT_EQ(storedText(machineClasses + server, ""), deadFile);
  EXPECT_TRUE(isLeftAlone(machineClasses + otherServer));
  EXPECT_EQ(form.View2.count(), 1U);
}

TEST_F(RepairGuardTest, AServersTextIsNoKeyThatItsRepairMayDelete) {
  setText(machineClasses + "GuardTest\\shell\\open\\command", "", livingFile);
  setText(machineClasses + server, "", "guardtest\\shell");
  repairFound(cln7);
  EXPECT_EQ(found, 1U);
  EXPECT_EQ(storedText(machineClasses + "GuardTest\\shell\\open\\command", ""), livingFile);
  EXPECT_TRUE(isLeftAlone(machineClasses + "guardtest\\shell"));
}

TEST_F(RepairGuardTest, AHelpFoldersTextIsNoKeyEither) {
  setText(machineClasses + "GuardTest\\shell\\HELPDIR", "", "living");
  setText(machineClasses + "TypeLib\\{GuardTest}\\1.0\\HELPDIR", "", "guardtest\\shell");
  repairFound(cln71);
  EXPECT_EQ(found, 1U);
  EXPECT_EQ(storedText(machineClasses + "GuardTest\\shell\\HELPDIR", ""), "living");
  // Where such a text begins is not known, so it is not certain that its folder is gone.
  EXPECT_TRUE(hasKey(machineClasses + "TypeLib\\{GuardTest}\\1.0\\HELPDIR"));
}

TEST_F(RepairGuardTest, AnExtensionThatTheUserHasChosenAProgramForStays) {
  setText(extension + "\\UserChoice", "ProgId", "x");
  makeKey(extension + "\\OpenWithProgids");
  repairFound(fileext);
  EXPECT_EQ(found, 1U);
  EXPECT_EQ(storedText(extension + "\\UserChoice", "ProgId"), "x");
  EXPECT_TRUE(isLeftAlone(extension));
}

TEST_F(RepairGuardTest, AnExtensionWithAListOfProgramsStays) {
  setText(extension + "\\OpenWithList", "a", "notepad.exe");
  repairFound(fileext);
  EXPECT_EQ(found, 1U);
  EXPECT_EQ(storedText(extension + "\\OpenWithList", "a"), "notepad.exe");
}

TEST_F(RepairGuardTest, AnExtensionWithNothingInItGoes) {
  makeKey(extension + "\\OpenWithProgids");
  makeKey(extension + "\\OpenWithList");
  repairFound(fileext);
  EXPECT_EQ(found, 1U);
  EXPECT_FALSE(hasKey(extension));
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(RepairGuardTest, ACommandWithAHandlerBesideItStays) {
  const std::string command = machineClasses + "GuardTest\\shell\\open\\command";
  setText(command, "", deadFile);
  setText(command, "DelegateExecute", "{11111111-1111-1111-1111-111111111111}");
  repairFound(Command12);
  EXPECT_EQ(found, 1U);
  EXPECT_EQ(storedText(command, ""), deadFile);
  EXPECT_TRUE(isLeftAlone(command));
}

// A shared file's value is named without the blanks around its name, by which nothing is found.
TEST_F(RepairGuardTest, ARowWhoseRecordIsNotFoundCountsAsWithoutEffect) {
  add({deadFile, deadFile, "2", "HKEY_LOCAL_MACHINE", windowsKey + "SharedDLLs", ""});
  runRepair(form);
  EXPECT_EQ(form.repairOutcome.gone, 0U);
  EXPECT_EQ(form.repairOutcome.noEffect, 1U);
  EXPECT_EQ(form.repairOutcome.failed, 0U);
  ASSERT_EQ(form.View2.count(), 1U);
  EXPECT_FALSE(form.View2.isChecked(1));
}

TEST_F(RepairGuardTest, TwoRowsOfOneRecordAreBothRepaired) {
  makeKey(machineRecord);
  for (int row = 0; row < 2; ++row) {
    add({"x", "GuardTest", "133", "HKEY_LOCAL_MACHINE", windowsKey + "Uninstall\\GuardTest", ""});
  }
  EXPECT_EQ(RepairPlan(form).takings(), std::vector<std::string>{machineRecord});
  runRepair(form);
  EXPECT_FALSE(hasKey(machineRecord));
  EXPECT_EQ(form.repairOutcome.gone, 2U);
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(RepairGuardTest, WhatHasComeBackSinceTheScanStays) {
  const std::string command = machineClasses + "GuardTest\\shell\\open\\command";
  const std::string returning = "C:\\GuardTest returning\\x.exe";
  DeleteFileW(Wide(returning).get());
  setText(command, "", "\"" + returning + "\" %1");
  setText(machineRecord, "DisplayIcon", returning + ",0");
  Command12(form);
  uninstall(form);
  makeFile(returning);
  repairFound([](Form42& /*form*/) {});
  EXPECT_EQ(found, 2U);
  EXPECT_EQ(form.View2.count(), 2U);
  EXPECT_EQ(storedText(command, ""), "\"" + returning + "\" %1");
  EXPECT_EQ(storedText(machineRecord, "DisplayIcon"), returning + ",0");
  EXPECT_EQ(form.repairOutcome.leftAlone, 2U);
  DeleteFileW(Wide(returning).get());
}

TEST_F(RepairGuardTest, WithTheGuardLiftedAllOfItGoes) {
  form.safeguards.protects = false;
  makeKey(userRecord);
  setText(machineRecord, "DisplayName", "living");
  repairFound(uninstall);
  EXPECT_FALSE(hasKey(machineRecord));
  EXPECT_TRUE(hasKey(userRecord));
  EXPECT_EQ(form.View2.count(), 0U);
  EXPECT_TRUE(form.repairOutcome.refused.empty());
}

TEST_F(RepairGuardTest, WhatStayedIsToldOnce) {
  makeKey(userRecord);
  setText(machineRecord, "DisplayName", "living");
  repairFound(uninstall);
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_TRUE(messages[0].starts_with("0 repaired, 1 left alone")) << messages[0];
  EXPECT_EQ(questions.size(), 1U);
}

TEST_F(RepairGuardTest, WhenAllIsRepairedNothingIsTold) {
  makeKey(machineRecord);
  repairFound(uninstall);
  EXPECT_TRUE(messages.empty());
}

}  // namespace
}  // namespace zelvreg::fixture
