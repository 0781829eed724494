#include "console/FixTicks.h"

#include <sstream>

#include "shell/StartUp.h"
#include "support/ComputerFixture.h"
#include "support/PlantedEvidence.h"

namespace zelvreg::console {
namespace {

const std::string policies = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Policies\\zelvane\\zelvreg";

// Rows 1 to 6: two that are sure, one that is likely, three that are unsure. The kinds of the two
// halves differ.
class FixTicksTest : public fixture::ComputerFixture {
 protected:
  FixTicksTest() {
    removeKey(policies);
    form.safeguards = {};
    for (const auto& [confidence, kind] : {std::pair{Confidence::Sure, "1"},
                                           {Confidence::Sure, "1"},
                                           {Confidence::Likely, "1"},
                                           {Confidence::Unsure, "2"},
                                           {Confidence::Unsure, "2"},
                                           {Confidence::Unsure, "2"}}) {
      fixture::addJudgedRow(form, {"x", "y", kind, "HKEY_USERS", "Key", "a"}, confidence);
    }
  }
  ~FixTicksTest() override { removeKey(policies); }

  // The rows that are ticked then, as a text of digits.
  std::string ticks() {
    error.str("");
    RepairTicks repair(options, streams);
    const std::size_t count = repair.tick(form, {});
    repair.tell(form);
    std::string rows;
    for (std::size_t row = 1; row <= form.View2.count(); ++row) {
      rows += form.View2.isChecked(row) ? std::to_string(row) : "";
    }
    EXPECT_EQ(count, rows.size());
    return rows;
  }

  Options options;
  std::ostringstream out;
  std::ostringstream error;
  const Streams streams{.out = out, .error = error};
};

TEST_F(FixTicksTest, UnsureRowsAreLeftAloneAndCounted) {
  form.View2.setChecked(6, true);
  EXPECT_EQ(ticks(), "123");
  EXPECT_EQ(error.str(),
            "zelvreg: 2 surely dead, 1 likely, 3 unsure and left alone (--all takes them too)\n");
  EXPECT_EQ(out.str(), "");
}

TEST_F(FixTicksTest, OneRowIsSpokenOfAsOne) {
  form.View2.remove(6);
  form.View2.remove(5);
  EXPECT_EQ(ticks(), "123");
  EXPECT_EQ(error.str(),
            "zelvreg: 2 surely dead, 1 likely, 1 unsure and left alone (--all takes it too)\n");
}

TEST_F(FixTicksTest, TheLeastConfidenceMovesTheLimit) {
  options.leastSure = Confidence::Sure;
  EXPECT_EQ(ticks(), "12");
  EXPECT_EQ(error.str(),
            "zelvreg: 2 surely dead, 1 likely and left alone, 3 unsure and left alone "
            "(--all takes them too)\n");
  options.leastSure = Confidence::Likely;
  EXPECT_EQ(ticks(), "123");
  options.leastSure = Confidence::Unsure;
  EXPECT_EQ(ticks(), "123456");
}

TEST_F(FixTicksTest, WithTheSafeguardLiftedAllAreTakenAndItIsSaid) {
  form.safeguards.careful = false;
  EXPECT_EQ(ticks(), "123456");
  EXPECT_EQ(error.str(), "zelvreg: 2 surely dead, 1 likely, 3 unsure and ticked all the same\n");
}

TEST_F(FixTicksTest, TheLeastConfidenceNarrowsAlsoWithTheSafeguardLifted) {
  form.safeguards = asDescribed();
  options.leastSure = Confidence::Likely;
  EXPECT_EQ(ticks(), "123");
}

TEST_F(FixTicksTest, OnlyTheKindsThatAreWantedCount) {
  options.kinds = {2};
  EXPECT_EQ(ticks(), "");
  EXPECT_EQ(error.str(),
            "zelvreg: none surely dead, none likely, 3 unsure and left alone "
            "(--all takes them too)\n");
  options.kinds = {1};
  EXPECT_EQ(ticks(), "123");
  EXPECT_EQ(error.str(), "zelvreg: 2 surely dead, 1 likely, none unsure\n");
  options.kinds = {7};
  EXPECT_EQ(ticks(), "");
  EXPECT_EQ(error.str(), "");
}

TEST_F(FixTicksTest, WhatAPolicyForbidsIsNotOffered) {
  setText(policies, "careful", "1");
  EXPECT_EQ(ticks(), "123");
  EXPECT_EQ(error.str(), "zelvreg: 2 surely dead, 1 likely, 3 unsure and left alone\n");
}

}  // namespace
}  // namespace zelvreg::console
