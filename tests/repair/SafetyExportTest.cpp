#include "repair/SafetyExport.h"

#include <algorithm>

#include "form/Form42.h"
#include "keys/RegistryImport.h"
#include "repair/SafetyExportFixture.h"
#include "runtime/FileText.h"
#include "support/WideValues.h"

namespace zelvreg {
namespace {

using Names = std::vector<std::string>;

const std::string machineClasses = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\";
const std::string userClasses = "HKEY_CURRENT_USER\\Software\\Classes\\";
const std::string otherClasses = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\Wow6432Node\\";

class SafetyExportTest : public fixture::SafetyExportFixture {
 protected:
  SafetyExportTest() {
    for (const std::string& classes : {machineClasses, userClasses, otherClasses}) {
      removeKey(classes + "SafetyExportTest");
      removeKey(classes + "CLSID\\{SafetyExportTest}");
    }
    removeKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\SafetyExportTest");
    removeKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\SafetyExportTest");
  }

  // A dead class: its key with all below it is to go.
  void addClassRow() { addTickedRow({"SafetyExportTest", "", "7", "", "SafetyExportTest", ""}); }
  // A value of a key in the machine's software.
  void addValueRow(std::string_view name) {
    addTickedRow({"", name, "13", "", "SOFTWARE\\SafetyExportTest", ""});
  }

  RegistryImport importIt() {
    const Names paths = exports();
    return importRegistryFile(paths.empty() ? "" : paths.front());
  }
};

TEST_F(SafetyExportTest, ATreeComesBackAsItWas) {
  const std::u16string place = u"Software\\Classes\\SafetyExportTest";
  fixture::setValues(HiveHandle::LocalMachine, place, fixture::unusualValues());
  fixture::setValues(HiveHandle::LocalMachine, place + u"\\Sub\\\x4E2D] [\x0434",
                     fixture::unusualValues());
  fixture::setValues(HiveHandle::LocalMachine, place + u"\\Another", {});
  const auto before = fixture::contentOf(HiveHandle::LocalMachine, place);
  ASSERT_EQ(before.size(), 4U);
  addClassRow();
  EXPECT_TRUE(writeSafetyExport(form, RepairPlan(form)));
  removeKey(machineClasses + "SafetyExportTest");
  ASSERT_FALSE(hasKey(machineClasses + "SafetyExportTest"));
  const RegistryImport result = importIt();
  EXPECT_TRUE(result.isDone) << result.message;
  EXPECT_TRUE(fixture::contentOf(HiveHandle::LocalMachine, place) == before);
}

TEST_F(SafetyExportTest, EachUnusualValueComesBackAlone) {
  const std::u16string place = u"SOFTWARE\\SafetyExportTest";
  for (const WideValue& value : fixture::unusualValues()) {
    // The rows name values in the code page.
    if (std::ranges::any_of(value.name, [](char16_t unit) { return unit >= 0x80; })) {
      continue;
    }
    fixture::setValues(HiveHandle::LocalMachine, place, {value});
    addValueRow(std::string(value.name.begin(), value.name.end()));
  }
  const WideKey key(HiveHandle::LocalMachine, place, KEY_ALL_ACCESS);
  const std::vector<WideValue> before = key.values().value();
  EXPECT_TRUE(writeSafetyExport(form, RepairPlan(form)));
  for (const WideValue& value : before) {
    EXPECT_TRUE(key.deleteValue(value.name));
  }
  EXPECT_TRUE(importIt().isDone);
  EXPECT_TRUE(key.values().value() == before);
}

TEST_F(SafetyExportTest, AMergedClassIsWrittenUnderItsTwoKeys) {
  setText(machineClasses + "SafetyExportTest\\Machine", "m", "x");
  setText(userClasses + "SafetyExportTest\\User", "u", "x");
  addClassRow();
  EXPECT_TRUE(writeSafetyExport(form, RepairPlan(form)));
  EXPECT_EQ(exportedNames(), (Names{"hkcu\\software\\classes\\safetyexporttest",
                                    "hkcu\\software\\classes\\safetyexporttest\\user",
                                    "hkcu\\software\\classes\\safetyexporttest\\user|u",
                                    "hklm\\software\\classes\\safetyexporttest",
                                    "hklm\\software\\classes\\safetyexporttest\\machine",
                                    "hklm\\software\\classes\\safetyexporttest\\machine|m"}));
}

TEST_F(SafetyExportTest, BothViewsOfAKeyAreWritten) {
  setText(machineClasses + "CLSID\\{SafetyExportTest}", "", "true");
  setText(otherClasses + "CLSID\\{SafetyExportTest}", "", "other");
  addTickedRow({"", "", "72", "", "CLSID\\{SafetyExportTest}", ""});
  setText("HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\SafetyExportTest", "x", "y");
  addTickedRow({"", "", "133", "", "SOFTWARE\\SafetyExportTest", ""});
  EXPECT_TRUE(writeSafetyExport(form, RepairPlan(form)));
  EXPECT_EQ(exportedNames(),
            (Names{"hklm\\software\\classes\\clsid\\{safetyexporttest}",
                   "hklm\\software\\classes\\clsid\\{safetyexporttest}|",
                   "hklm\\software\\classes\\wow6432node\\clsid\\{safetyexporttest}",
                   "hklm\\software\\classes\\wow6432node\\clsid\\{safetyexporttest}|",
                   "hklm\\software\\wow6432node\\safetyexporttest",
                   "hklm\\software\\wow6432node\\safetyexporttest|x"}));
}

TEST_F(SafetyExportTest, ADefaultValueThatIsWrittenOverIsDeletedAgainIfThereWasNone) {
  const std::string key = "CLSID\\{SafetyExportTest}";
  setText(machineClasses + key, "", "there");
  setText(otherClasses + key, "x", "y");
  addTickedRow({key, "", "8", "", key, ""});
  EXPECT_TRUE(writeSafetyExport(form, RepairPlan(form)));
  setText(otherClasses + key, "", "");
  EXPECT_TRUE(importIt().isDone);
  EXPECT_EQ(storedText(machineClasses + key, ""), "there");
  EXPECT_EQ(bytesOf(otherClasses + key, ""), "(none)");
  EXPECT_EQ(storedText(otherClasses + key, "x"), "y");
}

TEST_F(SafetyExportTest, AKeyGoesOnceInTheRegistrysOwnSpellingAndATreeCoversWhatIsInIt) {
  setText(machineClasses + "SafetyExportTest\\Sub", "", "x");
  setText("HKEY_LOCAL_MACHINE\\SOFTWARE\\SafetyExportTest", "A", "x");
  setText("HKEY_LOCAL_MACHINE\\SOFTWARE\\SafetyExportTest", "b", "x");
  setText("HKEY_LOCAL_MACHINE\\SOFTWARE\\SafetyExportTest", "other", "x");
  addTickedRow({"safetyexporttest\\SUB", "", "9", "", "", ""});
  addTickedRow({"SafetyExportTest", "", "7", "", "SAFETYEXPORTTEST\\\\", ""});
  addTickedRow({"", "", "72", "", "SafetyExportTest\\Sub", ""});
  addValueRow("B");
  addValueRow("a");
  addValueRow("none");
  addTickedRow({"", "a", "13", "", "software\\safetyEXPORTtest", ""});
  EXPECT_TRUE(writeSafetyExport(form, RepairPlan(form)));
  std::vector<std::u16string> found;
  for (const RegistryChange& change : exported()) {
    found.push_back(change.kind == RegistryChange::Kind::MakeKey
                        ? change.path.substr(change.path.find(u"SafetyExportTest"))
                        : change.value.name);
  }
  EXPECT_EQ(found, (std::vector<std::u16string>{u"SafetyExportTest", u"SafetyExportTest\\Sub", u"",
                                                u"SafetyExportTest", u"A", u"b"}));
}

TEST_F(SafetyExportTest, ARowWithoutAKnownRootTakesTheOneOfTheRowBelowIt) {
  setText("HKEY_LOCAL_MACHINE\\SOFTWARE\\SafetyExportTest", "x", "y");
  addTickedRow({"", "x", "144", "HKEY_USERS", "SOFTWARE\\SafetyExportTest", ""});
  EXPECT_TRUE(writeSafetyExport(form, RepairPlan(form)));
  EXPECT_TRUE(exports().empty());
  addTickedRow({"", "none", "166", "HKEY_LOCAL_MACHINE", "SOFTWARE\\SafetyExportTest", ""});
  EXPECT_TRUE(writeSafetyExport(form, RepairPlan(form)));
  EXPECT_TRUE(exports().empty());
  addTickedRow({"", "none", "144", "HKEY_LOCAL_MACHINE", "SOFTWARE\\SafetyExportTest", ""});
  EXPECT_TRUE(writeSafetyExport(form, RepairPlan(form)));
  EXPECT_EQ(exportedNames(),
            (Names{"hklm\\software\\safetyexporttest", "hklm\\software\\safetyexporttest|x"}));
}

TEST_F(SafetyExportTest, OneRoutineKeepsTheRootForBothOfItsKinds) {
  setText("HKEY_LOCAL_MACHINE\\SOFTWARE\\SafetyExportTest", "x", "y");
  addTickedRow({"", "x", "135", "", "SOFTWARE\\SafetyExportTest", ""});
  addTickedRow({"", "", "133", "HKEY_LOCAL_MACHINE", "SOFTWARE\\SafetyExportTest\\None", ""});
  EXPECT_TRUE(writeSafetyExport(form, RepairPlan(form)));
  EXPECT_EQ(exportedNames(),
            (Names{"hklm\\software\\safetyexporttest", "hklm\\software\\safetyexporttest|x"}));
}

TEST_F(SafetyExportTest, NothingIsWrittenWhenNothingWouldChange) {
  setText("HKEY_LOCAL_MACHINE\\SOFTWARE\\SafetyExportTest", "x", "y");
  addValueRow("none");
  addTickedRow({"", "x", "14", "", "SOFTWARE\\SafetyExportTest", ""});
  addTickedRow({"", "x", "13.5", "", "SOFTWARE\\SafetyExportTest", ""});
  addTickedRow({"", "x", "13", "", "SOFTWARE\\SafetyExportTest\\None", ""});
  addValueRow("x");
  form.View2.setChecked(form.View2.count(), false);
  EXPECT_TRUE(writeSafetyExport(form, RepairPlan(form)));
  EXPECT_TRUE(exports().empty());
}

TEST_F(SafetyExportTest, ProtectedKeysGoOnlyWhenTheRepairTakesThem) {
  setText("HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\FileExts",
          "SafetyExportTest", "x");
  addTickedRow({"", "", "122", "HKEY_CURRENT_USER", "", ""});
  addTickedRow({"", "", "7", "", "", ""});
  form.safeguards.protects = true;
  EXPECT_TRUE(writeSafetyExport(form, RepairPlan(form)));
  EXPECT_TRUE(exports().empty());
  form.View2.setChecked(2, false);
  form.safeguards.protects = false;
  EXPECT_TRUE(writeSafetyExport(form, RepairPlan(form)));
  const Names names = exportedNames();
  EXPECT_NE(std::ranges::find(names,
                              "hkcu\\software\\microsoft\\windows\\currentversion\\explorer"
                              "\\fileexts|safetyexporttest"),
            names.end());
}

TEST_F(SafetyExportTest, EachExportHasANameOfItsOwn) {
  setText("HKEY_LOCAL_MACHINE\\SOFTWARE\\SafetyExportTest", "x", "y");
  addValueRow("x");
  for (std::size_t count = 1; count <= 3; ++count) {
    EXPECT_TRUE(writeSafetyExport(form, RepairPlan(form)));
    EXPECT_EQ(exports().size(), count);
  }
  const std::string first = readFileText(exports().front()).value_or("");
  EXPECT_TRUE(first.starts_with("\xFF\xFEW"));
  EXPECT_EQ(readFileText(exports().back()), first);
}

TEST_F(SafetyExportTest, AFolderThatCannotBeCreatedGivesFalse) {
  setText("HKEY_LOCAL_MACHINE\\SOFTWARE\\SafetyExportTest", "x", "y");
  addValueRow("x");
  form.programFolder = "C:\\SafetyExportTest\\file";
  makeFile(form.programFolder);
  EXPECT_FALSE(writeSafetyExport(form, RepairPlan(form)));
  EXPECT_EQ(storedText("HKEY_LOCAL_MACHINE\\SOFTWARE\\SafetyExportTest", "x"), "y");
  EXPECT_EQ(form.View2.count(), 1U);
}

TEST_F(SafetyExportTest, AKeyThatTheFormatCannotHoldGivesFalse) {
  fixture::setValues(HiveHandle::LocalMachine, u"Software\\Classes\\SafetyExportTest\\a\nb", {});
  addClassRow();
  EXPECT_FALSE(writeSafetyExport(form, RepairPlan(form)));
  EXPECT_TRUE(exports().empty());
}

}  // namespace
}  // namespace zelvreg
