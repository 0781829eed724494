// Repairs of random computers, judged by what their findings say and by what the maker of these
// knows to be in use: nothing here asks the guard. Only the emulated computer can be created
// from nothing.
#include <iterator>
#include <utility>

#include "form/Form42.h"
#include "keys/RegistryImport.h"
#include "repair/RandomMachine.h"
#include "runtime/Directory.h"
#include "scan/Findings.h"
#include "shell/StartUp.h"
#include "support/RegistryContent.h"
#include "support/WholeRegistry.h"
#include "text/Numbers.h"
#include "text/Text.h"

namespace zelvreg::fixture {
namespace {

const std::string machineRoot = R"(hkey_local_machine\)";
const std::string userRoot = R"(hkey_users\s-1-5-21-1-1-1-1001\)";
const std::string userClassesRoot = R"(hkey_users\s-1-5-21-1-1-1-1001_classes\)";
const std::string machineClassesRoot = R"(hkey_local_machine\software\classes\)";
const std::string windows = R"(software\microsoft\windows\currentversion\)";

// Keys and values by their paths in lower case.
RegistryContent inLowerCase(const RegistryContent& content) {
  RegistryContent lower;
  for (const auto& [name, value] : content) {
    lower[lowerCase(name)] = value;
  }
  return lower;
}

struct Row {
  std::string location, badValue, rootName, subKey;
  int kind = 0;
};

// One finding against the registry as it was before.
class Oracle {
 public:
  Oracle(const RegistryContent& contentBefore, const RandomMachine& machineOfTest)
      : before(contentBefore), machine(machineOfTest) {}

  // Whether the row names this value, or this key with what is in it.
  [[nodiscard]] bool names(const Row& row, const std::string& entry) const {
    switch (row.kind) {
      case 1:
        return entry == value(machineRoot + R"(software\microsoft\windows nt\currentversion\fonts)",
                              row.location);
      case 2:
        return entry == value(machineRoot + row.subKey, row.location);
      case 4:
        return entry == firstWithText({value(help("windows"), row.badValue),
                                       value(help("windows nt"), row.badValue)});
      case 55:
        return entry == firstWithText({value(machineRoot + row.subKey, "helptopic"),
                                       value(machineRoot + row.subKey, "linkedhelptopics")});
      case 11:
        return entry == value(rootOf(row) + row.subKey, row.badValue) &&
               (!contains(entry, "firewallrules") || fateOf(entry) == Fate::Dead);
      case 6:
        return isOfDeadKey(entry, shown(row.location + R"(\defaulticon)"));
      case 71:
        return isOfDeadKey(entry, shown(row.subKey + R"(\helpdir)"));
      case 7:
      case 8:
      case 72:
        return isOfDeadKey(entry, shown(row.subKey));
      case 122:
        return isOfEmptyKey(entry, userRoot + windows + R"(explorer\fileexts\)" + row.badValue);
      case 133:
        return isOfEmptyKey(entry, rootOf(row) + row.subKey);
      case 12:
        return entry == value(rootOf(row) + row.subKey, row.badValue) && !isOthersVariable(entry);
      case 771:
        return entry == value(shown(row.subKey, row.badValue), row.badValue);
      default:
        return row.kind != 0 && !isListOfPrograms(row) &&
               entry == value(rootOf(row) + row.subKey, row.badValue);
    }
  }

 private:
  static std::string value(const std::string& key, const std::string& name) {
    return key + "|" + name;
  }
  static std::string help(const std::string& system) {
    return machineRoot + R"(software\microsoft\)" + system + R"(\help)";
  }
  static bool isListOfPrograms(const Row& row) {
    return row.kind == 3 && row.subKey.ends_with("app paths");
  }

  static std::string rootOf(const Row& row) {
    return row.rootName == "hkey_current_user" ? userRoot : row.rootName + "\\";
  }

  // The user's class before the computer's, where the user has the value that was judged.
  [[nodiscard]] std::string shown(const std::string& key, const std::string& name = {}) const {
    const bool isUsers = before.contains(value(userClassesRoot + key, name));
    return (isUsers ? userClassesRoot : machineClassesRoot) + key;
  }

  [[nodiscard]] std::string textOf(const std::string& entry) const {
    const auto found = before.find(entry);
    std::string text;
    // Type, colon, UTF-16.
    for (std::size_t at = found == before.end() ? 0 : found->second.find(':') + 1;
         found != before.end() && at + 1 < found->second.size(); at += 2) {
      text += found->second[at];
    }
    return std::string(untilNul(text));
  }
  [[nodiscard]] Fate fateOf(const std::string& entry) const {
    return machine.fateOf(textOf(entry));
  }

  [[nodiscard]] std::string firstWithText(const std::vector<std::string>& entries) const {
    for (const std::string& entry : entries) {
      if (!trim(textOf(entry)).empty()) {
        return entry;
      }
    }
    return {};
  }

  static bool isIn(const std::string& entry, const std::string& key) {
    return entry.starts_with(key) &&
           (entry.size() == key.size() || entry[key.size()] == '\\' || entry[key.size()] == '|');
  }

  static bool isDirectlyIn(const std::string& name, const std::string& key) {
    return name.find('|') == key.size();
  }
  // What may be in a key below one that goes: dead references and blank default values.
  [[nodiscard]] bool isWorthless(const std::string& name) const {
    return fateOf(name) == Fate::Dead || (name.ends_with('|') && textOf(name).empty());
  }

  // A key goes by its dead default value, and nothing beside it or below it may be in use.
  [[nodiscard]] bool isOfDeadKey(const std::string& entry, const std::string& key) const {
    return isIn(entry, key) && allIn(key, [&](const std::string& name) {
             if (isDirectlyIn(name, key)) {
               return name == value(key, "") || fateOf(name) != Fate::InUse;
             }
             return isWorthless(name);
           });
  }
  [[nodiscard]] bool isOfEmptyKey(const std::string& entry, const std::string& key) const {
    return isIn(entry, key) && allIn(key, [&](const std::string& name) {
             if (isDirectlyIn(name, key)) {
               return name == value(key, "") && textOf(name).empty();
             }
             return isWorthless(name);
           });
  }
  template <typename Judge>
  [[nodiscard]] bool allIn(const std::string& key, Judge judge) const {
    for (const auto& [name, content] : before) {
      if (isIn(name, key) && name.find('|') != std::string::npos && !judge(name)) {
        return false;
      }
    }
    return true;
  }

  [[nodiscard]] bool isOthersVariable(const std::string& entry) const {
    return contains(entry, lowerCase(RandomMachine::otherUser)) && contains(textOf(entry), "%");
  }

  const RegistryContent& before;
  const RandomMachine& machine;
};

std::vector<Row> rowsOf(const Form42& form) {
  std::vector<Row> rows;
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    const auto cell = [&](std::size_t column) { return lowerCase(form.View2.text(row, column)); };
    rows.push_back({cell(locationColumn), cell(badValueColumn), cell(rootNameColumn),
                    cell(subKeyColumn),
                    static_cast<int>(leadingNumber(form.View2.text(row, kindCodeColumn)))});
  }
  return rows;
}

class RandomRepairTest : public ::testing::TestWithParam<std::uint32_t> {
 protected:
  static RegistryContent contentOf(const MachineBuilder& builder) {
    return inLowerCase(registryContent(builder.computer()));
  }

  static void repairAll(Form42& form) {
    form.dialogs.show = [](const UserMessage& message) {
      return message.isQuestion ? Answer::Yes : Answer::Ok;
    };
    form.chameleonButton16.click();
    form.cmd_fix.click();
  }

  static void scanAll(Form42& form) {
    Form_Load(form);
    for (std::size_t row = 1; row <= form.View1.count(); ++row) {
      form.View1.setChecked(row, true);
    }
    form.cmd_start.click();
  }
};

TEST_P(RandomRepairTest, WhatIsGoneWasNamedAndNothingInUseWasInIt) {
  MachineBuilder builder;
  const RandomMachine machine(builder, GetParam());
  builder.folder(R"(C:\Program Files (x86)\zelvreg)");
  builder.start();
  const RegistryContent before = contentOf(builder);
  Form42 form;
  scanAll(form);
  const std::vector<Row> rows = rowsOf(form);
  repairAll(form);
  EXPECT_FALSE(form.isRepairStopped);
  const Oracle oracle(before, machine);
  const RegistryContent after = contentOf(builder);
  for (const std::string& entry : changedEntries(before, after)) {
    EXPECT_TRUE(std::ranges::any_of(rows, [&](const Row& row) { return oracle.names(row, entry); }))
        << entry;
  }
  EXPECT_EQ(form.repairOutcome.failed, 0U);
}

TEST_P(RandomRepairTest, TheExportGivesTheOldRegistryBackTwice) {
  MachineBuilder builder;
  const RandomMachine machine(builder, GetParam());
  builder.folder(R"(C:\Program Files (x86)\zelvreg)");
  builder.start();
  const WholeRegistry before = wholeRegistry(builder.computer());
  Form42 form;
  scanAll(form);
  EXPECT_EQ(firstDifference(before, wholeRegistry(builder.computer())), "");
  repairAll(form);
  const std::string folder = form.programFolder + R"(\backup\registry\)";
  const std::string file = Dir(folder + "*.reg");
  for (int turn = 1; turn <= 2 && !file.empty(); ++turn) {
    const RegistryImport import = importRegistryFile(folder + file);
    EXPECT_TRUE(import.isDone) << import.message;
    EXPECT_EQ(firstDifference(before, wholeRegistry(builder.computer())), "") << turn;
  }
  EXPECT_NE(file.empty(), form.repairOutcome.hasBegun);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomRepairTest, ::testing::Range(1U, randomMachineCount() + 1));

}  // namespace
}  // namespace zelvreg::fixture
