#include "evidence/RowEvidence.h"

#include "evidence/SecondLook.h"

namespace zelvreg {

const Evidence& evidenceAt(const Form42& form, std::size_t row) {
  static const Evidence notExamined{.reasons = {Reason::NotExamined}, .tested = {}};
  const Evidence* evidence = evidenceOf(form, row);
  return evidence != nullptr ? *evidence : notExamined;
}

}  // namespace zelvreg
