// Whole machine folders, each with the evidence that a scan of it must give. Only the emulated
// computer reads a folder.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "console/CommandRun.h"
#include "evidence/Reasons.h"
#include "evidence/SecondLook.h"
#include "form/Form42.h"
#include "machine/Machine.h"
#include "machine/TemporaryFolder.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scan/SafeguardSources.h"
#include "shell/StartUp.h"
#include "support/SourceFolder.h"

namespace zelvreg {
namespace {

namespace fs = std::filesystem;

using Lines = std::multiset<std::string>;

fs::path foldersHome() { return fs::path(sourceFolder()) / "tests/fixtures/evidence"; }

std::vector<std::string> folderNames() {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(foldersHome())) {
    names.push_back(entry.path().filename().string());
  }
  std::ranges::sort(names);
  return names;
}

// A copy, since a machine in use is locked, and a repair changes it.
class CopiedFolder {
 public:
  explicit CopiedFolder(const std::string& name) : copy(home.path() / name) {
    fs::copy(foldersHome() / name, copy,
             fs::copy_options::recursive | fs::copy_options::copy_symlinks);
  }

  [[nodiscard]] const fs::path& path() const { return copy; }

 private:
  fixture::TemporaryFolder home;
  fs::path copy;
};

class OpenFolder {
 public:
  explicit OpenFolder(const std::string& name) : folder(name) {
    machine = machine::Machine::open(folder.path());
    running.emplace(*machine);
  }

 private:
  CopiedFolder folder;
  std::unique_ptr<machine::Machine> machine;
  std::optional<machine::Running> running;
};

void scan(Form42& form) {
  Form_Load(form);
  for (std::size_t row = 1; row <= categories().size(); ++row) {
    form.View1.setChecked(row, true);
  }
  form.cmd_start.click();
}

std::string lineOf(const Form42& form, std::size_t row) {
  const Evidence& evidence = *evidenceOf(form, row);
  std::string line = form.View2.text(row, kindCodeColumn);
  line.append("\t").append(codeOf(evidence.confidence));
  line.append("\t").append(reasonCodes(evidence));
  line.append("\t").append(form.View2.text(row, locationColumn));
  return line.append("\t").append(form.View2.text(row, badValueColumn));
}

Lines evidenceIn(const Form42& form) {
  Lines lines;
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    lines.insert(lineOf(form, row));
  }
  return lines;
}

Lines expectedIn(const std::string& name) {
  Lines lines;
  std::ifstream file(foldersHome() / name / "expected.txt");
  for (std::string line; std::getline(file, line);) {
    lines.insert(line);
  }
  return lines;
}

std::string joined(const Lines& lines) {
  std::string text;
  for (const std::string& line : lines) {
    text += line + "\n";
  }
  return text;
}

// The names of the keys and values that are called good, as the registry file has them.
Lines goodNames(const fs::path& folder) {
  Lines names;
  std::ifstream file(folder / "registry.reg");
  for (std::string line; std::getline(file, line);) {
    const bool isGoodKey = line.starts_with('[') && line.find("\\good") != std::string::npos;
    const bool isGoodValue = line.starts_with("\"good");
    if (isGoodKey || isGoodValue) {
      names.insert(line.substr(0, isGoodValue ? line.find("\"=") : line.find(']')));
    }
  }
  return names;
}

class MachineFolders : public ::testing::TestWithParam<std::string> {};

TEST_P(MachineFolders, GiveTheEvidenceThatTheyAreMadeFor) {
  const OpenFolder folder(GetParam());
  Form42 form;
  scan(form);
  EXPECT_EQ(joined(evidenceIn(form)), joined(expectedIn(GetParam())));
}

TEST_P(MachineFolders, TickOnlyWhatIsDead) {
  const OpenFolder folder(GetParam());
  Form42 form;
  scan(form);
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    EXPECT_EQ(form.View2.isChecked(row), evidenceOf(form, row)->confidence != Confidence::Unsure)
        << lineOf(form, row);
    // What is alive or cannot be decided is named so, and what is dead too.
    for (const std::size_t column : {locationColumn, badValueColumn}) {
      EXPECT_FALSE(form.View2.text(row, column).starts_with("good") && form.View2.isChecked(row))
          << lineOf(form, row);
      EXPECT_FALSE(form.View2.text(row, column).starts_with("BAD") && !form.View2.isChecked(row))
          << lineOf(form, row);
    }
  }
}

TEST_P(MachineFolders, LoseNothingGoodInARepair) {
  const CopiedFolder folder(GetParam());
  const Lines before = goodNames(folder.path());
  console::CommandRun run;
  run.on("--machine", folder.path().string(), {"fix", "--yes", "--quiet"});
  // The program also writes the keys above.
  const Lines after = goodNames(folder.path());
  EXPECT_TRUE(std::ranges::includes(after, before)) << joined(after);
}

INSTANTIATE_TEST_SUITE_P(Evidence, MachineFolders, ::testing::ValuesIn(folderNames()),
                         [](const auto& folder) {
                           std::string name = folder.param;
                           std::ranges::replace(name, '-', '_');
                           return name;
                         });

}  // namespace
}  // namespace zelvreg
