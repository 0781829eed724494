// Rows of the results that the second look has judged already.
#ifndef ZELVREG_TESTS_SUPPORT_PLANTED_EVIDENCE_H
#define ZELVREG_TESTS_SUPPORT_PLANTED_EVIDENCE_H

#include <utility>

#include "form/Form42.h"
#include "scan/Findings.h"

namespace zelvreg::fixture {

inline void plantEvidence(Form42& form, std::size_t row, Evidence evidence) {
  form.evidence.push_back(std::move(evidence));
  form.View2.setItemData(row, form.evidence.size());
}

// Adds a row that is this sure, for one reason, without a tick.
inline void addJudgedRow(Form42& form, const Finding& finding, Confidence confidence) {
  ScannerRun run;
  addRow(form, run, finding);
  plantEvidence(form, form.View2.count(),
                {.confidence = confidence,
                 .reasons = {confidence == Confidence::Unsure ? Reason::Share : Reason::Absent},
                 .tested = {}});
}

}  // namespace zelvreg::fixture

#endif
