// Only native: machines for measuring are made on the system that builds.
#include "EvidenceBench.h"

#include <gtest/gtest.h>

#include <sstream>

#include "EvidenceTable.h"
#include "MachineMaker.h"
#include "WorkFolder.h"

namespace zelvreg::bench {
namespace {

const EvidenceFigures& measuredOnce(std::uint64_t seed) {
  static std::map<std::uint64_t, EvidenceFigures> machines;
  const auto found = machines.find(seed);
  if (found != machines.end()) {
    return found->second;
  }
  const WorkFolder work;
  return machines.emplace(seed, measureEvidence(work.path() / "machine", fewestKeys, seed))
      .first->second;
}

class EvidenceOnMadeMachines : public testing::TestWithParam<std::uint64_t> {};
INSTANTIATE_TEST_SUITE_P(Seeds, EvidenceOnMadeMachines, testing::Values(1, 2, 3));

TEST_P(EvidenceOnMadeMachines, EveryFindingHasALabelAndEveryKindHasFindings) {
  const EvidenceFigures& figures = measuredOnce(GetParam());
  EXPECT_EQ(figures.unlabelled, std::vector<std::string>());
  EXPECT_EQ(figures.byKind.size(), 22U);
  for (const auto& [kind, tally] : figures.byKind) {
    EXPECT_GT(tally.foundOf(Truth::Dead), 0U) << "kind " << kind;
  }
  EXPECT_GT(figures.total().foundOf(Truth::Alive), 0U);
  EXPECT_GT(figures.total().foundOf(Truth::Undecidable), 0U);
  EXPECT_GT(figures.rowsWithoutKind, 0U);
}

TEST_P(EvidenceOnMadeMachines, OnlyDeadReferencesAreTickedAndNearlyAllOfThem) {
  const EvidenceFigures& figures = measuredOnce(GetParam());
  std::ostringstream table;
  printEvidence(table, figures);
  EXPECT_TRUE(figures.ticksNothingElse()) << table.str();
  EXPECT_TRUE(figures.ticksTheDead()) << table.str();
}

Tally tally(std::size_t dead, std::size_t ticked) {
  Tally result;
  result.found[static_cast<std::size_t>(Truth::Dead)] = dead;
  result.ticked[static_cast<std::size_t>(Truth::Dead)] = ticked;
  return result;
}

TEST(EvidenceGoals, AreNinetyEightOfAHundredDeadReferences) {
  EvidenceFigures figures;
  figures.byKind["1"] = tally(50, 50);
  figures.byKind["2"] = tally(50, 48);
  EXPECT_TRUE(figures.ticksTheDead());
  figures.byKind["2"] = tally(50, 47);
  EXPECT_FALSE(figures.ticksTheDead());
}

TEST(EvidenceGoals, AreNoTicksOfOthersOrOfRowsWithoutAKind) {
  EvidenceFigures figures;
  EXPECT_TRUE(figures.ticksNothingElse());
  figures.tickedWithoutKind = 1;
  EXPECT_FALSE(figures.ticksNothingElse());
  figures.tickedWithoutKind = 0;
  figures.wronglyTicked.push_back({"place", "cmd", Truth::Alive, "absent"});
  EXPECT_FALSE(figures.ticksNothingElse());
}

TEST(EvidenceTable, NamesWhatIsTickedWronglyAndCountsWhatIsMissed) {
  EvidenceFigures figures;
  figures.byKind["144"] = tally(2, 0);
  figures.wronglyTicked.push_back({"kind 144: key", "cmd", Truth::Alive, "absent"});
  figures.deadAndUnticked = {{"a", "svchost", Truth::Dead, "found"},
                             {"b", "svchost", Truth::Dead, "found"}};
  std::ostringstream output;
  printEvidence(output, figures);
  const std::string text = output.str();
  EXPECT_NE(text.find("ticked, but alive (cmd): kind 144: key: absent\n"), std::string::npos);
  EXPECT_NE(text.find("dead, but not ticked: 2 of svchost (found), as a\n"), std::string::npos);
  EXPECT_NE(text.find("dead and ticked: 0.00 %; goal 98 %: MISSED\n"), std::string::npos);
}

TEST(EvidenceTable, SaysWhatTheSecondLookCosts) {
  std::ostringstream output;
  printCost(output, {.first = 1, .second = 1.125, .ratio = 1.125});
  EXPECT_EQ(output.str(), "the second look costs 12.5 % of the scan; goal at most 20 %: met\n");
}

}  // namespace
}  // namespace zelvreg::bench
