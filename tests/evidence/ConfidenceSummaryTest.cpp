#include "evidence/ConfidenceSummary.h"

#include <gtest/gtest.h>

#include "evidence/RowEvidence.h"
#include "support/PlantedEvidence.h"

namespace zelvreg {
namespace {

// So many rows of each confidence, taken and left.
struct Counts {
  std::size_t taken = 0;
  std::size_t left = 0;
};
ConfidenceSummary summaryOf(Counts sure, Counts likely, Counts unsure) {
  ConfidenceSummary summary;
  for (const auto& [confidence, counts] : {std::pair{Confidence::Sure, sure},
                                           {Confidence::Likely, likely},
                                           {Confidence::Unsure, unsure}}) {
    for (std::size_t row = 0; row < counts.taken + counts.left; ++row) {
      summary.add(confidence, row < counts.taken);
    }
  }
  return summary;
}

TEST(ConfidenceSummary, SaysWhatIsTakenAndWhatIsLeftAlone) {
  const ConfidenceSummary summary = summaryOf({42, 0}, {3, 0}, {0, 9});
  EXPECT_EQ(summary.text(Form42()), "42 surely dead, 3 likely, 9 unsure and left alone");
  EXPECT_EQ(summary.leftAlone(), 9U);
  EXPECT_FALSE(summary.isEmpty());
}

TEST(ConfidenceSummary, HasWordsForOneAndForNone) {
  EXPECT_EQ(summaryOf({1, 0}, {1, 0}, {0, 1}).text(Form42()),
            "1 surely dead, 1 likely, 1 unsure and left alone");
  EXPECT_EQ(summaryOf({}, {}, {}).text(Form42()), "none surely dead, none likely, none unsure");
  EXPECT_TRUE(summaryOf({}, {}, {}).isEmpty());
}

TEST(ConfidenceSummary, UnsureRowsThatAreTakenAreNotCalledLeftAlone) {
  EXPECT_EQ(summaryOf({2, 0}, {}, {9, 0}).text(Form42()),
            "2 surely dead, none likely, 9 unsure and ticked all the same");
  EXPECT_EQ(summaryOf({2, 0}, {}, {4, 5}).text(Form42()),
            "2 surely dead, none likely, 4 unsure and ticked all the same, "
            "5 unsure and left alone");
}

TEST(ConfidenceSummary, WhereOnlySureRowsGoLikelyOnesAreLeftAloneToo) {
  const ConfidenceSummary summary = summaryOf({2, 0}, {0, 3}, {0, 9});
  EXPECT_EQ(summary.text(Form42()),
            "2 surely dead, 3 likely and left alone, 9 unsure and left alone");
  EXPECT_EQ(summary.leftAlone(), 12U);
}

TEST(ConfidenceSummary, OfAFormCountsTheTicksAsTheyAre) {
  Form42 form;
  for (const Confidence confidence : {Confidence::Sure, Confidence::Sure, Confidence::Likely,
                                      Confidence::Unsure, Confidence::Unsure}) {
    fixture::addJudgedRow(form, {"x", "y", "1", "HKEY_USERS", "Key", "a"}, confidence);
  }
  form.View2.setChecked(1, true);
  form.View2.setChecked(3, true);
  form.View2.setChecked(5, true);
  // The second row was unticked by the user, not because of doubts.
  EXPECT_EQ(confidenceSummary(form).text(form),
            "1 surely dead, 1 likely, 1 unsure and ticked all the same, 1 unsure and left alone");
  form.View2.setChecked(3, false);
  EXPECT_EQ(confidenceSummary(form).leftAlone(), 1U);
  form.leastTicked = Confidence::Sure;
  EXPECT_EQ(confidenceSummary(form).leftAlone(), 2U);
}

TEST(RowEvidence, ARowThatWasNotLookedAtIsUnsureAndSaysSo) {
  Form42 form;
  fixture::addJudgedRow(form, {"x", "y", "1", "HKEY_USERS", "Key", "a"}, Confidence::Sure);
  ScannerRun run;
  addRow(form, run, {"x", "y", "1", "HKEY_USERS", "Key", "a"});
  EXPECT_EQ(evidenceAt(form, 1).confidence, Confidence::Sure);
  for (const std::size_t row : {2U, 3U}) {
    EXPECT_EQ(evidenceAt(form, row).confidence, Confidence::Unsure);
    EXPECT_EQ(evidenceAt(form, row).reasons, ReasonList{Reason::NotExamined});
  }
}

}  // namespace
}  // namespace zelvreg
