// For each kind of row: what its repair takes is in the export, and importing it undoes the
// repair.
#include <algorithm>

#include "keys/RegistryImport.h"
#include "repair/RepairSteps.h"
#include "repair/SafetyExport.h"
#include "repair/SafetyExportFixture.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

struct Value {
  std::string key;
  std::string name;
};

struct Kind {
  Finding finding;
  std::vector<Value> values;  // that the repair would take, each in a key of its own or shared
};

const std::string machine = "HKEY_LOCAL_MACHINE\\SOFTWARE\\";
const std::string windows = machine + "Microsoft\\Windows\\CurrentVersion\\";
const std::string windowsNt = machine + "Microsoft\\Windows NT\\CurrentVersion\\";
const std::string own = machine + "SafetyExportTest";
const std::string classes = machine + "Classes\\";
const std::string classes32 = machine + "Classes\\Wow6432Node\\";
const std::string user = "HKEY_CURRENT_USER\\Software\\";

std::vector<Kind> kinds() {
  const char* place = "SOFTWARE\\SafetyExportTest";
  return {
      {{"ZelvFont", "", "1", "", "", ""},
       {{windowsNt + "Fonts", "ZelvFont"}, {windows + "Fonts", "ZelvFont"}}},
      {{"C:\\zelv.dll", "", "2", "", place, ""},
       {{windowsNt + "SharedDlls", "C:\\zelv.dll"}, {own, "C:\\zelv.dll"}}},
      {{"", "Path", "3", "HKEY_LOCAL_MACHINE", place, ""}, {{own, "Path"}}},
      {{"", "zelv.hlp", "4", "", "", ""},
       {{machine + "Microsoft\\Windows NT\\Help", "zelv.hlp"},
        {machine + "Microsoft\\Windows\\Help", "zelv.hlp"}}},
      {{"", "zelv.chm", "5", "", "", ""},
       {{machine + "Microsoft\\Windows NT\\HTML Help", "zelv.chm"},
        {machine + "Microsoft\\Windows\\HTML Help", "zelv.chm"}}},
      {{"SafetyExportTest", "", "6", "", "", ""},
       {{classes + "SafetyExportTest\\DefaultIcon", ""},
        {classes + "SafetyExportTest\\DefaultIcon\\Below", "x"}}},
      {{"SafetyExportTest", "", "7", "", "SafetyExportTest", ""},
       {{classes + "SafetyExportTest", ""},
        {classes + "SafetyExportTest\\Below\\Deeper", "x"},
        {user + "Classes\\SafetyExportTest", "x"}}},
      {{"CLSID\\{SafetyExportTest}\\Server", "", "8", "", "CLSID\\{SafetyExportTest}", ""},
       {{classes + "CLSID\\{SafetyExportTest}\\Server", ""},
        {classes + "CLSID\\{SafetyExportTest}\\Server", "x"},
        {classes32 + "CLSID\\{SafetyExportTest}\\Server", ""}}},
      {{"SafetyExportTest", "", "9", "", "", ""}, {{classes + "SafetyExportTest", ""}}},
      {{"SafetyExportTest", "", "10", "", "", ""}, {{classes + "SafetyExportTest", ""}}},
      {{"", "{zelv}", "11", "", "", ""},
       {{"HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\Services\\SharedAccess\\Parameters\\"
         "FirewallPolicy\\FirewallRules",
         "{zelv}"}}},
      {{"", "x", "12", "", ".DEFAULT\\Software\\SafetyExportTest", ""},
       {{"HKEY_USERS\\.DEFAULT\\Software\\SafetyExportTest", "x"}}},
      {{"", "x", "13", "", place, ""}, {{own, "x"}}},
      {{"", "", "55", "", place, ""}, {{own, "HelpTopic"}, {own, "LinkedHelpTopics"}}},
      {{"", "x", "56", "", place, ""}, {{own, "x"}}},
      {{"C:\\none", "", "71", "", "SafetyExportTest\\1.0", ""},
       {{classes + "SafetyExportTest\\1.0\\HELPDIR", ""}}},
      {{"", "", "72", "", "CLSID\\{SafetyExportTest}", ""},
       {{classes + "CLSID\\{SafetyExportTest}\\Below", "x"},
        {classes32 + "CLSID\\{SafetyExportTest}", "x"}}},
      {{"", ".zelv", "122", "", "", ""},
       {{user + "Microsoft\\Windows\\CurrentVersion\\Explorer\\FileExts\\.zelv", "x"},
        {user + "Microsoft\\Windows NT\\CurrentVersion\\Explorer\\FileExts\\.zelv", "x"}}},
      {{"", "", "133", "", place, ""},
       {{own + "\\Below", "x"}, {machine + "Wow6432Node\\SafetyExportTest", "x"}}},
      {{"", "x", "135", "HKEY_LOCAL_MACHINE", place, ""}, {{own, "x"}}},
      {{"", "x", "144", "HKEY_CURRENT_USER", place, ""}, {{user + "SafetyExportTest", "x"}}},
      {{"", "x", "155", "", place, ""}, {{user + "SafetyExportTest", "x"}}},
      {{"", "x", "166", "HKEY_CURRENT_USER", place, ""}, {{user + "SafetyExportTest", "x"}}},
      {{"SafetyExportTest", "Extension", "771", "HKEY_CLASSES_ROOT", "SafetyExportTest", ""},
       {{classes + "SafetyExportTest", "Extension"}}},
  };
}

std::string shortName(const Value& value) {
  const std::string path = value.key + "|" + value.name;
  const std::string root = path.substr(0, path.find('\\'));
  const std::string shortRoot = root == "HKEY_LOCAL_MACHINE"  ? "hklm"
                                : root == "HKEY_CURRENT_USER" ? "hkcu"
                                                              : "hku";
  return shortRoot + lowerCase(path.substr(root.size()));
}

class SafetyExportKindsTest : public fixture::SafetyExportFixture,
                              public testing::WithParamInterface<std::size_t> {
 protected:
  SafetyExportKindsTest() : kind(kinds()[GetParam()]) {
    for (const std::string& key :
         {own, machine + "Wow6432Node\\SafetyExportTest", classes + "SafetyExportTest",
          user + "Classes\\SafetyExportTest", classes + "CLSID\\{SafetyExportTest}",
          classes32 + "CLSID\\{SafetyExportTest}", user + "SafetyExportTest"}) {
      removeKey(key);
    }
    for (const Value& value : kind.values) {
      setText(value.key, value.name, "data of " + value.name);
    }
  }

  [[nodiscard]] std::ptrdiff_t valuesThere() const {
    return std::ranges::count_if(kind.values, [](const Value& value) {
      return storedText(value.key, value.name) == "data of " + value.name;
    });
  }

  Kind kind;
};

TEST_P(SafetyExportKindsTest, WhatTheRepairTakesIsExportedAndComesBack) {
  const std::size_t row = addTickedRow(kind.finding);
  const auto all = static_cast<std::ptrdiff_t>(kind.values.size());
  ASSERT_EQ(valuesThere(), all);
  ASSERT_TRUE(writeSafetyExport(form, RepairPlan(form)));
  const std::vector<std::string> names = exportedNames();
  for (const Value& value : kind.values) {
    EXPECT_NE(std::ranges::find(names, shortName(value)), names.end()) << value.key;
  }
  HiveHandle root = HiveHandle::Unknown;
  takeSteps(form, row, *repairKind(std::stoi(std::string(kind.finding.kindCode))), root);
  EXPECT_LT(valuesThere(), all);
  const RegistryImport result = importRegistryFile(exports().front());
  EXPECT_TRUE(result.isDone) << result.message;
  for (const Value& value : kind.values) {
    EXPECT_EQ(storedText(value.key, value.name), "data of " + value.name) << value.key;
  }
}

INSTANTIATE_TEST_SUITE_P(Kinds, SafetyExportKindsTest, testing::Range<std::size_t>(0, 24),
                         [](const auto& kind) {
                           return "Kind" + std::string(kinds()[kind.param].finding.kindCode);
                         });

TEST(SafetyExportKindsListTest, EveryKindIsTested) { EXPECT_EQ(kinds().size(), 24U); }

}  // namespace
}  // namespace zelvreg
