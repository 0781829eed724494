// Kills a process by its system calls, and works on a folder that stands for a computer.
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <map>
#include <optional>

#include "exclusions/ExclusionFile.h"
#include "form/Form42.h"
#include "machine/KilledProcess.h"
#include "repair/EveryKindMachine.h"
#include "support/RegistryContent.h"

namespace zelvreg {
namespace {

namespace fs = std::filesystem;
using fixture::canBeTraced;
using fixture::RegistryContent;
using Files = std::map<std::string, std::string>;

std::string bytesOf(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// Of the files directly in a folder, or of all below it, those that have their final names: a file
// that is still being written is hidden or ends in ".new".
template <typename Iterator>
Files filesIn(const fs::path& folder) {
  Files files;
  for (const auto& file : Iterator(folder)) {
    const std::string name = fs::relative(file.path(), folder).string();
    if (file.is_regular_file() && file.path().extension() != ".new" && !name.starts_with('.')) {
      files[name] = bytesOf(file.path());
    }
  }
  return files;
}

// Keys and values, and who may do what to them.
struct ComputerState {
  RegistryContent content;
  std::map<std::string, std::string> accessLists;

  bool operator==(const ComputerState&) const = default;
};

ComputerState stateOf(const machine::Machine& computer) {
  ComputerState state{.content = fixture::registryContent(computer), .accessLists = {}};
  for (const auto& [path, list] : computer.registry().securities()) {
    state.accessLists[path] = machine::formatSddl(list);
  }
  return state;
}

class KilledRepairTest : public ::testing::Test {
 protected:
  KilledRepairTest() {
    everyKind.stop();
    originals = registryFiles();
  }

  void SetUp() override {
    if (!canBeTraced) {
      GTEST_SKIP() << "a process under this sanitizer cannot be traced";
    }
  }

  // registry.reg, security.txt and the others that make the computer.
  [[nodiscard]] Files registryFiles() const {
    return filesIn<fs::directory_iterator>(everyKind.folder());
  }
  [[nodiscard]] Files programFiles() const {
    return filesIn<fs::recursive_directory_iterator>(everyKind.programFolder());
  }

  void restore() {
    everyKind.stop();
    for (const auto& entry : fs::directory_iterator(everyKind.folder())) {
      if (entry.is_regular_file()) {
        fs::remove(entry.path());
      }
    }
    for (const auto& [name, bytes] : originals) {
      std::ofstream(everyKind.folder() / name, std::ios::binary) << bytes;
    }
  }

  void prepare() {
    everyKind.restart();
    form.emplace();
    form->dialogs.show = [](const UserMessage&) { return Answer::Yes; };
    fixture::scanAllRows(*form);
  }
  void repairAndSave() {
    form->cmd_fix.click();
    everyKind.computer().save();
  }

  // Works to the end once, then again and again, killed at each of its calls; `judge` is asked
  // after each time.
  void killEverywhere(const std::function<void()>& preparation, const std::function<void()>& work,
                      const std::function<void()>& judge) {
    constexpr int mostCalls = 3000;
    int calls = 0;
    for (bool isDone = false; !isDone && calls < mostCalls && !HasFailure(); ++calls) {
      SCOPED_TRACE("killed at call " + std::to_string(calls));
      restore();
      isDone = fixture::endsBeforeCall(calls, preparation, work);
      judge();
    }
    EXPECT_LT(calls, mostCalls);
  }

  fixture::EveryKindMachine everyKind;
  std::optional<Form42> form;
  Files originals;
};

TEST_F(KilledRepairTest, ARepairThatIsKilledAnywhereLeavesTheOldComputerOrTheNewOne) {
  everyKind.restart();
  const ComputerState before = stateOf(everyKind.computer());
  prepare();
  repairAndSave();
  const ComputerState after = stateOf(everyKind.computer());
  const Files whole = programFiles();
  ASSERT_FALSE(before == after);
  ASSERT_EQ(whole.size(), 5U);  // language, exclusions, copy of the list, journal, export
  std::set<bool> seen;
  killEverywhere([this] { prepare(); }, [this] { repairAndSave(); },
                 [&] {
                   const Files now = programFiles();
                   for (const auto& [name, bytes] : now) {
                     EXPECT_TRUE(whole.contains(name) && whole.at(name) == bytes) << name;
                   }
                   const auto computer = machine::Machine::open(everyKind.folder());
                   const ComputerState state = stateOf(*computer);
                   EXPECT_TRUE(state == before || state == after);
                   seen.insert(state == after);
                   if (state == after) {
                     EXPECT_EQ(now.size(), whole.size());
                   }
                 });
  EXPECT_EQ(seen.size(), 2U);
}

TEST_F(KilledRepairTest, ExclusionsThatAreWrittenAgainAreTheOldOrTheNewOnes) {
  const std::vector<std::string> few{"HKEY_USERS\\Software\\Nothing"};
  const std::vector<std::string> many(3000, "HKEY_USERS\\Software\\Another");
  std::set<std::size_t> seen;
  const auto prepareForm = [this] {
    everyKind.restart();
    form.emplace();
    form->programFolder = "C:\\Program Files (x86)\\zelvreg";
  };
  killEverywhere(
      prepareForm, [&] { writeExclusions(*form, many); },
      [&] {
        const std::string bytes = programFiles().at("exregscan.txt");
        const auto entries = exclusionsIn(bytes);
        EXPECT_TRUE(entries == few || entries == many);
        seen.insert(entries.size());
      });
  EXPECT_EQ(seen.size(), 2U);
}

TEST_F(KilledRepairTest, AnExclusionThatIsAddedComesWholeOrNotAtAll) {
  const std::vector<std::string> one{"HKEY_USERS\\Software\\Nothing"};
  const std::vector<std::string> two{"HKEY_USERS\\Software\\Nothing", "HKEY_USERS\\Software\\More"};
  std::set<std::size_t> seen;
  const auto prepareForm = [this] {
    everyKind.restart();
    form.emplace();
    form->programFolder = "C:\\Program Files (x86)\\zelvreg";
  };
  killEverywhere(
      prepareForm, [&] { appendExclusions(*form, {two[1]}); },
      [&] {
        const auto entries = exclusionsIn(programFiles().at("exregscan.txt"));
        EXPECT_TRUE(entries == one || entries == two);
        seen.insert(entries.size());
      });
  EXPECT_EQ(seen.size(), 2U);
}

}  // namespace
}  // namespace zelvreg
