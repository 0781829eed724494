#include "console/ReviewedResult.h"

#include <gtest/gtest.h>

#include "support/PlantedEvidence.h"

namespace zelvreg::console {
namespace {

using Rows = std::set<std::size_t>;

// A result with a finding that only has these members besides its identity.
std::string resultWith(const std::string& members) {
  return R"({"findings": [{"location": "a", "badValue": "b", "kindCode": "1",)"
         R"( "rootName": "HKEY_USERS", "subKey": "Key")" +
         members + "}]}";
}

class ReviewedResultTest : public ::testing::Test {
 protected:
  void add(Confidence confidence, const char* location = "a") {
    fixture::addJudgedRow(form, {location, "b", "1", "HKEY_USERS", "Key", "a"}, confidence);
  }
  ReviewedRows rowsOf(const std::string& json) {
    return reviewedRows(form, reviewedFindings(json, "file"));
  }

  Form42 form;
};

TEST_F(ReviewedResultTest, RowsAreFoundByWhatTheyAreNotByHowSureTheyAre) {
  add(Confidence::Sure, "other");
  add(Confidence::Unsure);
  for (const char* members : {"", R"(, "confidence": "sure")", R"(, "confidence": "likely")"}) {
    const ReviewedRows found = rowsOf(resultWith(members));
    EXPECT_EQ(found.rows, Rows{2}) << members;
    EXPECT_EQ(found.reviewedAsUnsure, Rows{}) << members;
  }
}

TEST_F(ReviewedResultTest, WhatWasCalledUnsureHasBeenReviewedAsSuch) {
  add(Confidence::Sure);
  EXPECT_EQ(rowsOf(resultWith(R"(, "confidence": "unsure")")).reviewedAsUnsure, Rows{1});
}

TEST_F(ReviewedResultTest, EachFindingStandsForOneRow) {
  add(Confidence::Unsure);
  add(Confidence::Unsure);
  EXPECT_EQ(rowsOf(resultWith("")).rows, Rows{1});
  const auto twice = reviewedFindings(resultWith(R"(, "confidence": "unsure")"), "file");
  auto findings = reviewedFindings(resultWith(""), "file");
  findings.insert(findings.end(), twice.begin(), twice.end());
  findings.insert(findings.end(), twice.begin(), twice.end());
  const ReviewedRows found = reviewedRows(form, findings);
  EXPECT_EQ(found.rows, (Rows{1, 2}));
  EXPECT_EQ(found.reviewedAsUnsure, Rows{2});
}

TEST_F(ReviewedResultTest, WhatWasUntickedIsNotAmongThem) {
  add(Confidence::Unsure);
  const ReviewedRows found = rowsOf(resultWith(R"(, "checked": false, "confidence": "unsure")"));
  EXPECT_EQ(found.rows, Rows{});
}

TEST_F(ReviewedResultTest, AConfidenceThatDoesNotExistIsRefused) {
  for (const char* members : {R"(, "confidence": "maybe")", R"(, "confidence": 1)"}) {
    try {
      rowsOf(resultWith(members));
      ADD_FAILURE() << members;
    } catch (const std::runtime_error& refusal) {
      EXPECT_STREQ(refusal.what(),
                   "file is no result of a scan; give what scan --json printed, whole");
    }
  }
}

}  // namespace
}  // namespace zelvreg::console
