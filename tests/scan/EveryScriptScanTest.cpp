// The same records in one script after the other, some of them dead and some not: what is found,
// repaired and found by a search must not depend on their letters.
#include <algorithm>
#include <array>

#include "keys/OpenKey.h"
#include "keys/RootHandles.h"
#include "repair/RepairDriver.h"
#include "scan/Findings.h"
#include "shell/StartUp.h"
#include "support/ComputerFixture.h"
#include "support/OtherScript.h"
#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

using fixture::OtherScript;
using Rows = std::vector<std::vector<std::string>>;

struct Record {
  const char* key;
  const char* name;
  const char* text;
};

const std::string machine = "HKEY_LOCAL_MACHINE\\SOFTWARE\\";
const std::string user = "HKEY_CURRENT_USER\\Software\\";
const std::string firewallRules =
    "HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\Services\\SharedAccess\\Parameters\\"
    "FirewallPolicy\\FirewallRules";

// In keys that hold records of other programs too.
const std::array<Record, 7> values{{
    {"Microsoft\\Windows NT\\CurrentVersion\\Fonts", "Quarrel Gone", "quarrelgone.ttf"},
    {"Microsoft\\Windows\\CurrentVersion\\Run", "Quarrel Gone", "C:\\Quarrel\\gone.exe /x"},
    {"Microsoft\\Windows\\CurrentVersion\\Run", "Quarrel", "\"C:\\Quarrel\\there.exe\" /x"},
    {"", "Quarrel Gone", "v2.30|Action=Allow|App=C:\\Quarrel\\gone.exe|Name=Quarrel|"},
    {"", "Quarrel", "v2.30|Action=Allow|App=C:\\Quarrel\\there.exe|Name=Quarrel|"},
    {"user", "C:\\Quarrel\\gone.exe.FriendlyAppName", "Quarrel"},
    {"user", "C:\\Quarrel\\there.exe.FriendlyAppName", "Quarrel"},
}};

// In keys of their own.
const std::array<Record, 14> records{{
    {"Microsoft\\Windows\\CurrentVersion\\App Paths\\quarrelgone.exe", "", "C:\\Quarrel\\gone.exe"},
    {"Microsoft\\Windows\\CurrentVersion\\App Paths\\quarrel.exe", "", "C:\\Quarrel\\there.exe"},
    {"Microsoft\\Windows\\CurrentVersion\\Uninstall\\Quarrel Gone", "UninstallString",
     "C:\\Quarrel\\gone.exe"},
    {"Microsoft\\Windows\\CurrentVersion\\Uninstall\\Quarrel", "UninstallString",
     "\"C:\\Quarrel\\there.exe\" /x"},
    {"Quarrel Maker", "Gone", "C:\\Quarrel\\gone.exe"},
    {"Quarrel Maker", "There", "C:\\Quarrel\\there.exe"},
    {"Quarrel Maker", "Folder", "C:\\Quarrel\\"},
    {"Classes\\Quarrel.Gone\\DefaultIcon", "", "C:\\Quarrel\\gone.exe,1"},
    {"Classes\\Quarrel.There\\DefaultIcon", "", "\"C:\\Quarrel\\there.exe\",1"},
    {"Classes\\Quarrel.Gone\\shell\\open\\command", "", "C:\\Quarrel\\gone.exe \"%1\""},
    {"Classes\\Quarrel.There\\shell\\open\\command", "", "C:\\Quarrel\\there.exe \"%1\""},
    {"Classes\\CLSID\\{51A1E000-0000-0000-0000-00000000A001}\\InprocServer32", "",
     "C:\\Quarrel\\gone.dll"},
    {"Classes\\CLSID\\{51A1E000-0000-0000-0000-00000000A002}\\InprocServer32", "",
     "C:\\Quarrel\\there.dll"},
    {"Classes\\TypeLib\\{51A1E000-0000-0000-0000-00000000A003}\\1.0\\0\\win32", "",
     "C:\\Quarrel\\gone.tlb"},
}};

// The keys of the computer that the records make.
constexpr std::array ownKeys{
    "Microsoft\\Windows\\CurrentVersion\\App Paths\\quarrelgone.exe",
    "Microsoft\\Windows\\CurrentVersion\\App Paths\\quarrel.exe",
    "Microsoft\\Windows\\CurrentVersion\\Uninstall\\Quarrel Gone",
    "Microsoft\\Windows\\CurrentVersion\\Uninstall\\Quarrel",
    "Quarrel Maker",
    "Classes\\Quarrel.Gone",
    "Classes\\Quarrel.There",
    "Classes\\CLSID\\{51A1E000-0000-0000-0000-00000000A001}",
    "Classes\\CLSID\\{51A1E000-0000-0000-0000-00000000A002}",
    "Classes\\TypeLib\\{51A1E000-0000-0000-0000-00000000A003}",
};

const std::string extension =
    user + "Microsoft\\Windows\\CurrentVersion\\Explorer\\FileExts\\.quarrel";
const std::string muiCache =
    user + "Classes\\Local Settings\\Software\\Microsoft\\Windows\\Shell\\MuiCache";

std::string pathOf(const Record& record) {
  const std::string_view key = record.key;
  return key.empty() ? firewallRules : key == "user" ? muiCache : machine + record.key;
}

void removeValue(const std::string& path, const std::string& name) {
  const std::size_t backslash = path.find('\\');
  const OpenKey key(GetHiveHandle(path.substr(0, backslash)), path.substr(backslash + 1),
                    KEY_SET_VALUE | KEY_WOW64_64KEY);
  RegDeleteValueW(key.handle(), Wide(name).get());
}

struct Outcome {
  Rows found;
  std::vector<std::string> left;  // of the records, after the repair
};

class EveryScriptScanTest : public fixture::ComputerFixture,
                            public ::testing::WithParamInterface<OtherScript> {
 protected:
  static void makeRecords(const OtherScript& script) {
    for (const char* file : {"there.exe", "there.dll"}) {
      makeFile(script.write(std::string("C:\\Quarrel\\") + file));
    }
    for (const auto& record : values) {
      setText(script.write(pathOf(record)), script.write(record.name), script.write(record.text));
    }
    for (const auto& record : records) {
      setText(script.write(pathOf(record)), script.write(record.name), script.write(record.text));
    }
    makeKey(script.write(extension));
  }

  static void removeRecords(const OtherScript& script) {
    for (const auto& record : values) {
      removeValue(script.write(pathOf(record)), script.write(record.name));
    }
    for (const char* key : ownKeys) {
      removeKey(script.write(machine + key));
    }
    removeKey(script.write(extension));
  }

  // The rows of this test, written in the script; those whose fields go to a row by its number
  // change with what else the computer has.
  static Rows rowsOf(const Form42& form, const OtherScript& listed, const OtherScript& written) {
    constexpr std::array<std::string_view, 5> numbered{"2", "4", "5", "55", "56"};
    const std::string mark = lowerCase(listed.write("quarrel"));
    Rows rows;
    for (std::size_t row = 1; row <= form.View2.count(); ++row) {
      std::vector<std::string> fields = fixture::findingOf(form, row);
      const bool isOwn = std::ranges::any_of(
          fields, [&](const std::string& field) { return contains(lowerCase(field), mark); });
      if (isOwn && std::ranges::find(numbered, fields[2]) == numbered.end()) {
        for (const std::size_t named : {0U, 1U, 4U}) {
          fields[named] = written.writeCell(fields[named]);
        }
        rows.push_back(fields);
      }
    }
    std::ranges::sort(rows);
    return rows;
  }

  // All texts of the outcome are written in `written`.
  static Outcome outcomeIn(const OtherScript& script, const OtherScript& written) {
    makeRecords(script);
    Form42 form;
    form.programFolder = "C:\\EveryScriptScanTest";
    form.dialogs.show = [](const UserMessage& message) {
      return message.isQuestion ? Answer::Yes : Answer::Ok;
    };
    Form_Load(form);
    for (std::size_t row = 1; row <= form.View1.count(); ++row) {
      form.View1.setChecked(row, true);
    }
    form.cmd_start.click();
    Outcome outcome{.found = rowsOf(form, script, written), .left = {}};
    const std::string mark = lowerCase(script.write("quarrel"));
    for (std::size_t row = form.View2.count(); row > 0; --row) {
      if (!std::ranges::any_of(fixture::findingOf(form, row), [&](const std::string& field) {
            return contains(lowerCase(field), mark);
          })) {
        form.View2.remove(row);
      }
    }
    runRepair(form);
    outcome.left = recordsLeft(script);
    removeRecords(script);
    return outcome;
  }

  // By their plain names.
  static std::vector<std::string> recordsLeft(const OtherScript& script) {
    std::vector<std::string> left;
    const auto look = [&](const Record& record) {
      const std::string text = storedText(script.write(pathOf(record)), script.write(record.name));
      if (text == script.write(record.text)) {
        left.push_back(pathOf(record) + "|" + record.name);
      }
    };
    std::ranges::for_each(values, look);
    std::ranges::for_each(records, look);
    if (hasKey(script.write(extension))) {
      left.push_back(extension);
    }
    return left;
  }
};

TEST_P(EveryScriptScanTest, FindingsAndRepairsAreThose) {
  const Outcome expected = outcomeIn(fixture::latinScript(), GetParam());
  EXPECT_GE(expected.found.size(), 10U);
  EXPECT_GE(expected.left.size(), 9U);
  const Outcome outcome = outcomeIn(GetParam(), fixture::latinScript());
  EXPECT_EQ(outcome.found, expected.found);
  EXPECT_EQ(outcome.left, expected.left);
}

INSTANTIATE_TEST_SUITE_P(Scripts, EveryScriptScanTest, ::testing::ValuesIn(fixture::otherScripts()),
                         [](const auto& tested) { return tested.param.name(); });

}  // namespace
}  // namespace zelvreg
