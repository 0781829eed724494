#include "evidence/ConfidenceSummary.h"

#include <algorithm>
#include <array>

#include "evidence/RowEvidence.h"
#include "form/Form42.h"
#include "languages/Texts.h"

namespace zelvreg {
namespace {

struct Words {
  TextKey taken;
  TextKey takenAllTheSame;
  TextKey left;
};

// By confidence. Only what is unsure is not meant to be taken.
constexpr std::array<Words, 3> words{{
    {"unsure-rows", "unsure-rows-ticked", "unsure-rows-left"},
    {"likely-rows", "likely-rows", "likely-rows-left"},
    {"sure-rows", "sure-rows", "sure-rows-left"},
}};

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

std::string ConfidenceSummary::partOf(const Form42& form, Confidence confidence) const {
  const auto& [taken, left] = rows[static_cast<std::size_t>(confidence)];
  const Words& said = words[static_cast<std::size_t>(confidence)];
  std::string part;
  if (taken > 0) {
    part = textOf(form, said.takenAllTheSame, {std::to_string(taken)});
  } else if (left == 0) {
    part = textOf(form, said.taken, {textOf(form, "none")});
  }
  if (left > 0) {
    part += (part.empty() ? "" : ", ") + textOf(form, said.left, {std::to_string(left)});
  }
  return part;
}

std::string ConfidenceSummary::text(const Form42& form) const {
  return partOf(form, Confidence::Sure) + ", " + partOf(form, Confidence::Likely) + ", " +
         partOf(form, Confidence::Unsure);
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
