// Access lists that keep an administrator out are the emulated computer's alone.
#include <gtest/gtest.h>

#include <random>

#include "form/Form42.h"
#include "keys/RegistryImport.h"
#include "machine/Machine.h"
#include "repair/EveryKindMachine.h"
#include "repair/RepairDriver.h"
#include "repair/SafetyExportFixture.h"
#include "shell/StartUp.h"
#include "support/WholeRegistry.h"

namespace zelvreg {
namespace {

const std::string machine = "HKEY_LOCAL_MACHINE\\SOFTWARE\\";
const std::string windows = "Microsoft\\Windows\\CurrentVersion\\";
const std::string extensions = "HKEY_CURRENT_USER\\Software\\" + windows + "Explorer\\FileExts";
const std::string user = "S-1-5-21-1-1-1-1001";

// What keys below may do, and what a repair of long ago may have left on a container.
const std::vector<std::string> recordLists{
    "D:(A;CI;KA;;;BA)(A;CI;KA;;;SY)(A;CI;KR;;;BU)",
    "O:SYG:SYD:PAI(A;CI;KA;;;BA)(A;CI;KA;;;SY)",
    "O:BAG:BAD:AI(A;CIID;KA;;;BA)(A;CIID;KR;;;WD)",
    "O:" + user + "D:(D;CIIO;GA;;;" + user + ")(A;CI;KA;;;BA)(A;CI;KA;;;WD)",
    "O:SYD:(A;;KA;;;BA)(A;CIIO;KR;;;CO)",
    "D:NO_ACCESS_CONTROL",
};
// The last list of a container denies to read it.
const std::vector<std::string> containerLists{
    "D:(A;CI;KA;;;BA)(A;CI;KA;;;SY)(A;CI;KR;;;BU)",
    "D:(D;CIIO;GA;;;" + user + ")(A;CI;KR;;;WD)(A;;KA;;;" + user + ")(A;CI;KA;;;BA)",
    "O:SYG:SYD:P(A;CI;KR;;;BA)(A;CI;KA;;;SY)",
    "O:SYD:(D;CI;0x6;;;WD)(A;CI;KA;;;BA)",
    "O:SYD:(D;CI;KW;;;WD)(A;CI;KA;;;BA)",
};

// A kind's row, and where its record is; "#" is the record's name.
struct RecordKind {
  std::string location;
  std::string badValue;
  const char* kindCode;
  const char* rootName;
  std::string subKey;
  std::vector<std::string> keys;
};

std::vector<RecordKind> recordKinds() {
  return {
      {"#", "", "6", "", "", {machine + "Classes\\#\\DefaultIcon"}},
      {"#", "", "7", "", "#", {machine + "Classes\\#", extensions + "\\#"}},
      {"CLSID\\#\\Server",
       "",
       "8",
       "",
       "CLSID\\#",
       {machine + "Classes\\CLSID\\#\\Server", machine + "Classes\\Wow6432Node\\CLSID\\#\\Server"}},
      {"#", "", "9", "", "", {machine + "Classes\\#"}},
      {"", "b", "13", "", "SOFTWARE\\#", {machine + "#"}},
      {"", "", "55", "", "SOFTWARE\\#", {machine + "#", machine + "Wow6432Node\\#"}},
      {"C:\\none", "", "71", "", "TypeLib\\#", {machine + "Classes\\TypeLib\\#\\HELPDIR"}},
      {"", "", "72", "", "CLSID\\#", {machine + "Classes\\CLSID\\#"}},
      {"", "#", "122", "", "", {extensions + "\\#"}},
      {"",
       "",
       "133",
       "",
       "SOFTWARE\\" + windows + "Uninstall\\#",
       {machine + windows + "Uninstall\\#", machine + "Wow6432Node\\" + windows + "Uninstall\\#"}},
      {"",
       "c",
       "135",
       "HKEY_LOCAL_MACHINE",
       "SOFTWARE\\" + windows + "Uninstall\\#",
       {machine + windows + "Uninstall\\#"}},
      {"", "a", "144", "HKEY_CURRENT_USER", "Software\\#", {"HKEY_CURRENT_USER\\Software\\#"}},
      {"#", "b", "771", "HKEY_CLASSES_ROOT", "#", {machine + "Classes\\#"}},
  };
}

std::string named(std::string_view text, const std::string& name) {
  std::string result;
  for (const char letter : text) {
    result += letter == '#' ? name : std::string(1, letter);
  }
  return result;
}

class ExportReturnsTest : public fixture::SafetyExportFixture,
                          public testing::WithParamInterface<unsigned> {
 protected:
  ExportReturnsTest() : random(GetParam()) {
    form.safeguards = {.protects = GetParam() % 2 == 0};
    form.dialogs.show = [](const UserMessage& /*message*/) { return Answer::Yes; };
    makeContainers();
    for (int number = 0; number < 12; ++number) {
      makeRecord("R" + std::to_string(number));
    }
  }

  template <typename Item>
  const Item& anyOf(const std::vector<Item>& items) {
    return items[random() % items.size()];
  }

  static void setList(const std::string& key, const std::string& list) {
    machine::Machine::current()->registry().setSecurity(key, machine::parseSddl(list));
  }

  void makeContainers() {
    for (const std::string& key :
         {machine + "Classes", machine + "Classes\\CLSID", machine + "Classes\\Wow6432Node\\CLSID",
          machine + "Classes\\TypeLib", machine + windows + "Uninstall",
          machine + "Wow6432Node\\" + windows + "Uninstall", extensions}) {
      makeKey(key);
      containers.push_back(key);
    }
  }

  void makeRecord(const std::string& name) {
    const std::vector<RecordKind> kinds = recordKinds();
    const RecordKind& kind = anyOf(kinds);
    for (const std::string& key : kind.keys) {
      const std::string path = named(key, name);
      makeTree(path, 0);
    }
    addRow(kind, name);
    if (random() % 4 == 0) {
      addRow(kind, "");
      takesContainers = !form.safeguards.protects;
    }
  }

  void addRow(const RecordKind& kind, const std::string& name) {
    rows.push_back({named(kind.location, name), named(kind.badValue, name), kind.kindCode,
                    kind.rootName, named(kind.subKey, name)});
  }

  void makeTree(const std::string& path, int depth) {
    makeKey(path);
    std::vector<std::string> names{"a", "b", "c", "", "HelpTopic", "LinkedHelpTopics", "C:\\x.dll"};
    std::shuffle(names.begin(), names.end(), random);
    for (const std::string& name : names) {
      if (random() % 4 != 0) {
        setText(path, name, "data of " + name);
      }
    }
    for (auto below = random() % 3; depth < 3 && below > 0; --below) {
      makeTree(path + "\\Below" + std::to_string(below), depth + 1);
    }
    if (random() % 2 != 0) {
      lists.emplace_back(path, anyOf(recordLists));
    }
  }

  // What keeps others out comes last. A repair that would take what cannot be read does not begin.
  void closeKeys() {
    for (const auto& [path, list] : lists) {
      setList(path, list);
    }
    const std::size_t count = containerLists.size() - (takesContainers ? 1 : 0);
    for (const std::string& container : containers) {
      setList(container, containerLists[random() % count]);
    }
  }

  static fixture::WholeRegistry picture() {
    return fixture::wholeRegistry(*machine::Machine::current());
  }

  std::mt19937 random;
  std::vector<std::vector<std::string>> rows;  // their cells, but for the icon
  // Whether a row without a name takes the key that all records lie in.
  bool takesContainers = false;
  std::vector<std::string> containers;
  std::vector<std::pair<std::string, std::string>> lists;
};

TEST_P(ExportReturnsTest, TheOldRegistryComesBackEachTimeAndTwice) {
  closeKeys();
  const fixture::WholeRegistry before = picture();
  for (int repair = 1; repair <= 2; ++repair) {
    form.View2.clear();
    for (const std::vector<std::string>& row : rows) {
      addTickedRow({row[0], row[1], row[2], row[3], row[4], ""});
    }
    runRepair(form);
    ASSERT_FALSE(form.isRepairStopped);
    // The guard may leave all of it alone.
    EXPECT_TRUE(form.safeguards.protects || !fixture::firstDifference(before, picture()).empty());
    for (int turn = 1; turn <= 2; ++turn) {
      const RegistryImport result = importRegistryFile(exports().back());
      EXPECT_TRUE(result.isDone) << result.message;
      EXPECT_EQ(fixture::firstDifference(before, picture()), "") << repair << " " << turn;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, ExportReturnsTest, testing::Range(1U, 61U));

}  // namespace
}  // namespace zelvreg
