#include "evidence/ConfidenceSummary.h"

#include <algorithm>

#include "evidence/RowEvidence.h"
#include "form/Form42.h"
#include "text/Numbers.h"

namespace zelvreg {
namespace {

std::string countText(std::size_t count) {
  return count == 0 ? "none" : decimal(static_cast<std::int64_t>(count));
}

}  // namespace

void ConfidenceSummary::add(Confidence confidence, bool isTaken) {
  Rows& same = rows[static_cast<std::size_t>(confidence)];
  ++(isTaken ? same.taken : same.left);
}

bool ConfidenceSummary::isEmpty() const {
  return std::ranges::all_of(rows, [](const Rows& same) { return same.taken + same.left == 0; });
}

std::size_t ConfidenceSummary::leftAlone() const {
  std::size_t count = 0;
  for (const Rows& same : rows) {
    count += same.left;
  }
  return count;
}

std::string ConfidenceSummary::partOf(Confidence confidence, const char* name) const {
  const auto& [taken, left] = rows[static_cast<std::size_t>(confidence)];
  std::string part;
  if (taken > 0 || left == 0) {
    const bool isRisky = confidence == Confidence::Unsure && taken > 0;
    part = countText(taken) + " " + name + (isRisky ? " and ticked all the same" : "");
  }
  if (left > 0) {
    part += (part.empty() ? "" : ", ") + countText(left) + " " + name + " and left alone";
  }
  return part;
}

std::string ConfidenceSummary::text() const {
  return partOf(Confidence::Sure, "surely dead") + ", " + partOf(Confidence::Likely, "likely") +
         ", " + partOf(Confidence::Unsure, "unsure");
}

ConfidenceSummary confidenceSummary(const Form42& form) {
  ConfidenceSummary summary;
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    const Confidence confidence = evidenceAt(form, row).confidence;
    const bool isTicked = form.View2.isChecked(row);
    if (isTicked || confidence < form.leastTicked) {
      summary.add(confidence, isTicked);
    }
  }
  return summary;
}

}  // namespace zelvreg
