// Real disks; the Windows program takes no disk.
// Their drives are empty, so what a scan finds can be counted in the hives themselves.
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <sstream>

#include "console/Commands.h"
#include "machine/RealDisk.h"
#include "machine/TemporaryFolder.h"
#include "support/ParsedJson.h"
#include "text/Text.h"

namespace zelvreg::console {
namespace {

// How many findings there are of each kind.
using Counts = std::map<std::string, int>;

class RealHives : public ::testing::Test {
 protected:
  static Counts scan(const std::string& disk, const std::vector<const char*>& more = {}) {
    return run(disk, more, {"scan", "--json"});
  }
  static Counts search(const std::string& disk, std::vector<const char*> what,
                       const std::vector<const char*>& more = {}) {
    what.insert(what.begin(), "search");
    what.push_back("--json");
    return run(disk, more, what);
  }

  static Counts run(const std::string& disk, const std::vector<const char*>& more,
                    const std::vector<const char*>& command) {
    const fixture::TemporaryFolder copy;
    fixture::copyRealDisk(disk, copy.path());
    const std::string root = copy.path();
    std::vector<const char*> arguments{"zelvreg", "--offline", root.c_str()};
    arguments.insert(arguments.end(), more.begin(), more.end());
    arguments.insert(arguments.end(), command.begin(), command.end());
    const auto parsed = parseCommandLine(static_cast<int>(arguments.size()), arguments.data());
    const auto computer = Computer::open(parsed.options.target);
    std::ostringstream out;
    std::ostringstream error;
    runCommand(parsed.options, *computer, {.out = out, .error = error});
    // These disks are hives alone, so nothing that names a file is called dead, and that is said;
    // and one has a hive whose logs were needed.
    const std::string said = error.str();
    for (const std::string_view line : split(said, "\n")) {
      EXPECT_TRUE(line.empty() || line.find("This is implausible") != std::string::npos ||
                  line.find("of its logs were taken over") != std::string::npos)
          << line;
    }
    const std::set<std::string> ofNoFile{"72", "122", "133", "155", "771"};
    Counts counts;
    const auto findings = fixture::parsedJson(out.str())["findings"];
    for (const auto& finding : findings) {
      const std::string kind = finding["kindCode"];
      ++counts[kind];
      EXPECT_TRUE(finding["checked"] == false || ofNoFile.contains(kind)) << finding;
    }
    return counts;
  }

  void SetUp() override {
    if (!fixture::hasRealDisks()) {
      GTEST_SKIP() << "ZELVREG_REAL_HIVES names no folder with real hives";
    }
  }
};

TEST_F(RealHives, TheProgramsOfADiskWithoutItsFilesAreGone) {
  EXPECT_EQ(
      scan("nt4"),
      (Counts{
          {"1", 24}, {"3", 4}, {"6", 13}, {"7", 19}, {"8", 1}, {"13", 1}, {"133", 3}, {"144", 1}}));
}

TEST_F(RealHives, ADiskWithTheSystemsHiveAloneHasFirewallRules) {
  // Each of the three lists of installed programs is missing, which counts as an empty record.
  EXPECT_EQ(scan("dirty"), (Counts{{"11", 33}, {"133", 3}}));
}

TEST_F(RealHives, EachUserOfADiskCanBeTheCurrentOne) {
  EXPECT_EQ(scan("windows7", {"--user", "first"}), (Counts{{"7", 1},
                                                           {"11", 35},
                                                           {"122", 6},
                                                           {"133", 2},
                                                           {"135", 3},
                                                           {"144", 2},
                                                           {"155", 96},
                                                           {"166", 2}}));
  EXPECT_EQ(scan("windows7", {"--user", "second"}),
            (Counts{{"11", 35}, {"133", 3}, {"144", 1}, {"155", 36}}));
  EXPECT_THROW(scan("windows7", {"--user", "third"}), std::runtime_error);
}

// The disks have no files, so each text that names one on their drive is dead; the control set that
// is in force is found twice.
TEST_F(RealHives, EachTextThatNamesAFileIsFound) {
  EXPECT_EQ(search("nt4", {":\\", "--in", "HKLM"}), (Counts{{"13", 79}}));
  EXPECT_EQ(search("dirty", {":\\", "--in", "HKLM"}), (Counts{{"13", 82}}));
  EXPECT_EQ(search("windows7", {":\\", "--in", "HKCU"}, {"--user", "first"}),
            (Counts{{"11", 642}}));
  EXPECT_EQ(search("windows7", {":\\", "--in", "HKCU"}, {"--user", "second"}),
            (Counts{{"11", 559}}));
}

TEST_F(RealHives, EachNameThatMatchesIsFoundAndIsOfNoKind) {
  EXPECT_EQ(search("nt4", {"win", "--keys", "--values", "--in", "HKLM"}), (Counts{{"", 133}}));
  EXPECT_EQ(search("dirty", {"win", "--keys", "--values", "--in", "HKLM"}), (Counts{{"", 753}}));
  EXPECT_EQ(search("windows7", {"win", "--keys", "--values", "--in", "HKCU"}, {"--user", "first"}),
            (Counts{{"", 638}}));
}

}  // namespace
}  // namespace zelvreg::console
