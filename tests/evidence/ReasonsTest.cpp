#include "evidence/Reasons.h"

#include <gtest/gtest.h>

#include <set>

#include "form/Form42.h"

namespace zelvreg {
namespace {

TEST(Reasons, EachHasItsRuleInTheOrderOfTheEnumeration) {
  std::set<std::string> codes;
  for (std::size_t index = 0; index < reasonCount; ++index) {
    const ReasonRule& rule = reasonRules()[index];
    EXPECT_EQ(static_cast<std::size_t>(rule.reason), index);
    EXPECT_TRUE(codes.insert(rule.code).second) << rule.code;
    EXPECT_FALSE(std::string(rule.sentence).empty()) << rule.code;
  }
}

TEST(Reasons, AConfidenceHasOneCode) {
  for (const Confidence confidence : {Confidence::Unsure, Confidence::Likely, Confidence::Sure}) {
    EXPECT_EQ(confidenceOfCode(codeOf(confidence)), confidence);
  }
  EXPECT_EQ(confidenceOfCode("surely"), std::nullopt);
}

TEST(Reasons, TheWorstOfThemDecides) {
  struct Case {
    std::vector<Reason> reasons;
    Confidence confidence;
  };
  for (const auto& [reasons, confidence] : {
           Case{{}, Confidence::Unsure},
           Case{{Reason::Absent}, Confidence::Sure},
           Case{{Reason::Absent, Reason::ParentAbsent}, Confidence::Sure},
           Case{{Reason::Absent, Reason::BareName}, Confidence::Likely},
           Case{{Reason::NotRegistered}, Confidence::Likely},
           Case{{Reason::Absent, Reason::SharedCount, Reason::SystemOwned}, Confidence::Unsure},
           // That the whole folder is gone makes it surer.
           Case{{Reason::Absent, Reason::ParentAbsent, Reason::SharedCount, Reason::SystemOwned},
                Confidence::Likely},
           Case{{Reason::Absent, Reason::Share}, Confidence::Unsure},
           Case{{Reason::Found}, Confidence::Unsure},
       }) {
    EXPECT_EQ(confidenceOf(reasons), confidence) << reasons.size();
  }
}

TEST(Reasons, TheSentenceIsThatOfTheReasonThatDecided) {
  const Form42 form;
  Evidence evidence;
  EXPECT_EQ(sentenceOf(form, evidence), ruleOf(Reason::NotExamined).sentence);
  evidence.reasons = {Reason::Absent, Reason::DriveAbsent};
  EXPECT_EQ(sentenceOf(form, evidence), ruleOf(Reason::DriveAbsent).sentence);
  EXPECT_EQ(reasonCodes(evidence), "absent drive-absent");
}

}  // namespace
}  // namespace zelvreg
