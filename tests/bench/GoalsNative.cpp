// Only native: the bench is built on the system that builds.
#include "Goals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>

#include "Measure.h"

namespace zelvreg::bench {
namespace {

const Goal& goalOf(Measure measure) { return *std::ranges::find(goals(), measure, &Goal::measure); }

TEST(Goals, EachMeasureHasOneGoal) {
  std::set<Measure> measures;
  for (const Goal& goal : goals()) {
    EXPECT_TRUE(measures.insert(goal.measure).second) << goal.work;
    EXPECT_GT(goal.most, 0) << goal.work;
  }
}

TEST(Goals, AGoalIsMetUpToItsLimit) {
  const Goal& search = goalOf(Measure::Search);
  EXPECT_EQ(isMet(search, {{Measure::Search, search.most}}), true);
  EXPECT_EQ(isMet(search, {{Measure::Search, search.most + 0.001}}), false);
  EXPECT_EQ(isMet(search, {{Measure::Scan, 0.1}}), std::nullopt);
}

TEST(Goals, ANumberIsShownInItsUnit) {
  EXPECT_EQ(inUnit(1.104, Unit::Ratio), "1.10");
  EXPECT_EQ(inUnit(0.05, Unit::Ratio), "0.050");
  EXPECT_EQ(inUnit(0.4, Unit::Seconds), "0.40 s");
  EXPECT_EQ(inUnit(12.34, Unit::Milliseconds), "12.3 ms");
  EXPECT_EQ(inUnit(179.6, Unit::BytesPerKey), "180 bytes a key");
}

TEST(Goals, TheTableSaysOfEachWhetherItIsReachedOrWhatMeasuresIt) {
  std::ostringstream output;
  printGoals(output, {{Measure::Scan, 1.05}, {Measure::Search, 1.5}});
  const std::string table = output.str();
  EXPECT_NE(table.find("plain loops, 1,000,000 keys | 1.10 | 1.05 | yes |\n"), std::string::npos);
  EXPECT_NE(table.find("enumeration, 1,000,000 keys | 1.30 | 1.50 | no |\n"), std::string::npos);
  EXPECT_NE(table.find("opening a folder of 1,000,000 keys | 0.40 s | not measured | |\n"),
            std::string::npos);
  EXPECT_NE(table.find("| 0.50 s | `bench/window/measure --rows 100000 BUILD` | |\n"),
            std::string::npos);
  EXPECT_EQ(static_cast<std::size_t>(std::ranges::count(table, '\n')), goals().size() + 2);
}

TEST(Measure, AMedianIsTheMiddleOfTheNumbers) {
  EXPECT_EQ(median({}), 0);
  EXPECT_EQ(median({3}), 3);
  EXPECT_EQ(median({9, 1, 5}), 5);
  EXPECT_EQ(median({100, 1, 2, 3, -5}), 2);
}

TEST(Measure, TwoWorksAreComparedPairByPairInTurnedOrder) {
  std::string order;
  double first = 0;
  const Comparison times = compare(
      3,
      [&] {
        order += 'a';
        return ++first;
      },
      [&] {
        order += 'b';
        return 6.0;
      });
  EXPECT_EQ(order, "abbaab");
  EXPECT_EQ(times.first, 2);
  EXPECT_EQ(times.second, 6);
  EXPECT_EQ(times.ratio, 3);
}

TEST(Measure, WorkInAChildGivesItsNumbersOrItsMessage) {
  EXPECT_EQ(runInChild([] { return std::vector{1.5, 2.0}; }), (std::vector{1.5, 2.0}));
  EXPECT_EQ(runInChild([] { return std::vector<double>(); }), std::vector<double>());
  try {
    runInChild([]() -> std::vector<double> { throw std::runtime_error("no room"); });
    FAIL();
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "no room");
  }
}

}  // namespace
}  // namespace zelvreg::bench
