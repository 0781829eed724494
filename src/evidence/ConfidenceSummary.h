// What is said before a repair: how sure the rows are that it takes, and how many it leaves alone
// because they are not sure enough.
#ifndef ZELVREG_EVIDENCE_CONFIDENCE_SUMMARY_H
#define ZELVREG_EVIDENCE_CONFIDENCE_SUMMARY_H

#include <array>
#include <cstddef>
#include <string>

#include "form/Evidence.h"

namespace zelvreg {

struct Form42;

class ConfidenceSummary {
 public:
  void add(Confidence confidence, bool isTaken);

  // Whether no row was added.
  [[nodiscard]] bool isEmpty() const;
  [[nodiscard]] std::size_t leftAlone() const;
  // "42 surely dead, 3 likely, 9 unsure and left alone", in the language of the form.
  [[nodiscard]] std::string text(const Form42& form) const;

 private:
  struct Rows {
    std::size_t taken = 0;
    std::size_t left = 0;
  };
  [[nodiscard]] std::string partOf(const Form42& form, Confidence confidence) const;

  std::array<Rows, 3> rows;  // by confidence
};

// Of the rows as they are ticked now. What is not ticked counts as left alone if it is less sure
// than `form.leastTicked`; other rows were unticked by the user and do not count.
ConfidenceSummary confidenceSummary(const Form42& form);

}  // namespace zelvreg

#endif
