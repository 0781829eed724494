// Wine opens every key for an administrator and cannot be made to fail, so only the emulated
// computer has keys that cannot be read.
#include "form/Form42.h"
#include "keys/RegistryImport.h"
#include "machine/Machine.h"
#include "machine/registry/Registry.h"
#include "repair/SafetyExport.h"
#include "repair/SafetyExportFixture.h"

namespace zelvreg {
namespace {

const std::string key = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\SafetyExportTest";

class SafetyExportFaultsTest : public fixture::SafetyExportFixture {
 protected:
  SafetyExportFaultsTest() {
    setText(key, "x", "y");
    setText(key + "\\Below", "x", "y");
    addTickedRow({"SafetyExportTest", "", "7", "", "SafetyExportTest", ""});
  }
};

TEST_F(SafetyExportFaultsTest, AKeyThatCannotBeReadButCouldBeDeletedGivesFalse) {
  for (const char* list : {"D:(A;;SD;;;WD)", "D:(A;;WD;;;WD)", "D:(A;;0x2;;;WD)"}) {
    setAccessOfKey(key + "\\Below", list);
    EXPECT_FALSE(writeSafetyExport(form, RepairPlan(form))) << list;
    machine::Machine::current()->registry().setSecurity(key + "\\Below",
                                                        machine::parseSddl("D:(A;;KA;;;WD)"));
  }
  EXPECT_TRUE(exports().empty());
}

TEST_F(SafetyExportFaultsTest, AKeyThatCanNeitherBeReadNorDeletedIsLeftOut) {
  machine::Machine::current()->registry().setSecurity(key + "\\Below",
                                                      machine::parseSddl("O:SYD:(A;;RC;;;WD)"));
  EXPECT_TRUE(writeSafetyExport(form, RepairPlan(form)));
  EXPECT_EQ(exportedNames(),
            (std::vector<std::string>{"hklm\\software\\classes\\safetyexporttest",
                                      "hklm\\software\\classes\\safetyexporttest|x"}));
}

TEST_F(SafetyExportFaultsTest, OnlyADenialTellsThatAKeyCannotBeDeleted) {
  auto& faults = machine::Machine::current()->faults();
  faults.failFrom(machine::ApiCall::RegOpenKey, 1, ERROR_NOT_ENOUGH_MEMORY);
  EXPECT_FALSE(writeSafetyExport(form, RepairPlan(form)));
  faults.clear();
  faults.failFrom(machine::ApiCall::RegOpenKey, 1, ERROR_ACCESS_DENIED);
  EXPECT_TRUE(writeSafetyExport(form, RepairPlan(form)));
  faults.clear();
  EXPECT_TRUE(exports().empty());
}

TEST_F(SafetyExportFaultsTest, AListThatBreaksOffGivesFalse) {
  auto& faults = machine::Machine::current()->faults();
  faults.clear();
  ASSERT_TRUE(writeSafetyExport(form, RepairPlan(form)));
  const std::uint64_t values = faults.calls(machine::ApiCall::RegEnumValue);
  const std::uint64_t subkeys = faults.calls(machine::ApiCall::RegEnumKey);
  for (const auto& [call, last] : {std::pair{machine::ApiCall::RegEnumValue, values},
                                   std::pair{machine::ApiCall::RegEnumKey, subkeys}}) {
    faults.clear();
    faults.fail(call, last, ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_FALSE(writeSafetyExport(form, RepairPlan(form)));
  }
  EXPECT_EQ(exports().size(), 1U);
}

TEST_F(SafetyExportFaultsTest, AnyFailingStepOfTheFileGivesFalse) {
  auto& faults = machine::Machine::current()->faults();
  for (const machine::ApiCall call :
       {machine::ApiCall::CreateFile, machine::ApiCall::WriteFile, machine::ApiCall::MoveFile}) {
    faults.clear();
    faults.fail(call, 1, ERROR_DISK_FULL);
    EXPECT_FALSE(writeSafetyExport(form, RepairPlan(form)));
    EXPECT_TRUE(exports().empty());
  }
  faults.clear();
  EXPECT_TRUE(writeSafetyExport(form, RepairPlan(form)));
}

class SafetyExport32Test : public fixture::Computer32Fixture {};

TEST_F(SafetyExport32Test, AComputerWithOneViewHasEachKeyOnce) {
  setText("HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\CLSID\\{SafetyExportTest}", "", "x");
  const std::size_t row = form.View2.add("");
  form.View2.setText(row, kindCodeColumn, "72");
  form.View2.setText(row, subKeyColumn, "CLSID\\{SafetyExportTest}");
  form.View2.setChecked(row, true);
  form.programFolder = "C:\\SafetyExportTest";
  makeFolder(form.programFolder + "\\backup\\registry");
  EXPECT_TRUE(writeSafetyExport(form, RepairPlan(form)));
  removeKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\CLSID\\{SafetyExportTest}");
  const RegistryImport result =
      importRegistryFile("C:\\SafetyExportTest\\backup\\registry\\20260131-134506.reg");
  EXPECT_EQ(result.message, "Imported: 1 keys and 1 values; deleted: 0 keys and 0 values.");
  EXPECT_TRUE(hasKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\CLSID\\{SafetyExportTest}"));
}

}  // namespace
}  // namespace zelvreg
