#include "evidence/SecondLook.h"

#include "evidence/Reasons.h"
#include "form/Form42.h"
#include "scan/Findings.h"

namespace zelvreg {
namespace {

Evidence evidenceFor(const Form42& form, std::size_t row) {
  Evidence evidence;
  evidence.reasons = {form.View2.text(row, kindCodeColumn).empty() ? Reason::OwnShadowRow
                                                                   : Reason::Absent};
  evidence.confidence = confidenceOf(evidence.reasons);
  return evidence;
}

}  // namespace

void lookAgain(Form42& form) {
  form.evidence.clear();
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    form.messages.doEvents();
    form.evidence.push_back(evidenceFor(form, row));
    form.View2.setItemData(row, form.evidence.size());
  }
}

const Evidence* evidenceOf(const Form42& form, std::size_t row) {
  const std::size_t number = form.View2.itemData(row);
  return number == 0 || number > form.evidence.size() ? nullptr : &form.evidence[number - 1];
}

void tickByConfidence(Form42& form) {
  const Confidence least = form.safeguards.careful ? form.leastTicked : Confidence::Unsure;
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    const Evidence* evidence = evidenceOf(form, row);
    const Confidence confidence = evidence == nullptr ? Confidence::Unsure : evidence->confidence;
    form.View2.setChecked(row, confidence >= least);
  }
}

ConfidenceCounts countConfidence(const Form42& form) {
  ConfidenceCounts counts;
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    const Evidence* evidence = evidenceOf(form, row);
    const Confidence confidence = evidence == nullptr ? Confidence::Unsure : evidence->confidence;
    counts.sure += confidence == Confidence::Sure ? 1 : 0;
    counts.likely += confidence == Confidence::Likely ? 1 : 0;
    counts.unsure += confidence == Confidence::Unsure ? 1 : 0;
    counts.unsureTicked += confidence == Confidence::Unsure && form.View2.isChecked(row) ? 1 : 0;
  }
  return counts;
}

}  // namespace zelvreg
