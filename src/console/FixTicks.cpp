#include "console/FixTicks.h"

#include "console/DisplayText.h"
#include "console/HostFile.h"
#include "console/ReviewedResult.h"
#include "evidence/ConfidenceSummary.h"
#include "evidence/RowEvidence.h"
#include "form/Form42.h"
#include "scan/Findings.h"
#include "scan/SafeguardSources.h"
#include "text/Numbers.h"

namespace zelvreg::console {
namespace {

ReviewedRows allRows(const Form42& form) {
  ReviewedRows all;
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    all.rows.insert(row);
  }
  return all;
}

bool isOfKinds(const Form42& form, std::size_t row, const std::set<int>& kinds) {
  const double kind = leadingNumber(form.View2.text(row, kindCodeColumn));
  return kinds.empty() || kinds.contains(static_cast<int>(kind));
}

// How sure a row must be. Who reviews a row that is called unsure has decided it, unless a policy
// has.
class Threshold {
 public:
  Threshold(const Form42& form, const Options& options)
      : least(options.leastSure.value_or(form.safeguards.careful ? form.leastTicked
                                                                 : Confidence::Unsure)),
        leastDecided(options.leastSure.value_or(
            isKeptByPolicy(form, &Safeguards::careful) ? form.leastTicked : Confidence::Unsure)) {}

  [[nodiscard]] bool isReachedBy(Confidence confidence, bool isDecided) const {
    return confidence >= (isDecided ? leastDecided : least);
  }

 private:
  Confidence least;
  Confidence leastDecided;
};

// Whoever chose rows by name is told why not all of them are taken.
void tellWhyReviewedAreLeft(std::size_t left, const Form42& form, const Options& options,
                            const Streams& streams) {
  streams.error << "zelvreg: of the findings in " << printable(options.reviewedFile) << " " << left
                << (left == 1 ? " is" : " are") << " unsure and left alone: "
                << (isKeptByPolicy(form, &Safeguards::careful)
                        ? "a policy of this computer takes no such finding\n"
                        : "the file does not call them unsure, so review a new result\n");
}

void tellHowSure(const ConfidenceSummary& summary, const Form42& form, const Streams& streams) {
  if (summary.isEmpty()) {
    return;
  }
  const std::size_t left = summary.leftAlone();
  const bool canTakeAll = left > 0 && !isKeptByPolicy(form, &Safeguards::careful);
  streams.error << "zelvreg: " << summary.text(form)
                << (!canTakeAll ? ""
                    : left == 1 ? " (--all takes it too)"
                                : " (--all takes them too)")
                << "\n";
}

}  // namespace

RepairTicks::RepairTicks(const Options& optionsInUse, const Streams& streamsInUse)
    : options(optionsInUse), streams(streamsInUse) {
  if (!options.reviewedFile.empty()) {
    reviewed = reviewedFindings(readHostFile(options.reviewedFile), options.reviewedFile);
  }
}

std::size_t RepairTicks::tick(Form42& form, const std::vector<ComputerUser>& users) {
  const ReviewedRows wanted =
      options.reviewedFile.empty() ? allRows(form) : reviewedRows(form, reviewed, users);
  found += wanted.rows.size();
  const Threshold threshold(form, options);
  std::size_t ticked = 0;
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    const bool isWanted = wanted.rows.contains(row) && isOfKinds(form, row, options.kinds);
    const Confidence confidence = evidenceAt(form, row).confidence;
    const bool isTaken =
        isWanted && threshold.isReachedBy(confidence, wanted.reviewedAsUnsure.contains(row));
    form.View2.setChecked(row, isTaken);
    ticked += isTaken ? 1 : 0;
    if (isWanted) {
      summary.add(confidence, isTaken);
    }
  }
  return ticked;
}

void RepairTicks::tell(const Form42& form) const {
  if (!options.reviewedFile.empty()) {
    if (found < reviewed.size()) {
      streams.error << "zelvreg: " << reviewed.size() - found << " of the " << reviewed.size()
                    << " findings in " << printable(options.reviewedFile)
                    << " are no longer found\n";
    }
    if (!options.leastSure && summary.leftAlone() > 0) {
      tellWhyReviewedAreLeft(summary.leftAlone(), form, options, streams);
    }
  }
  tellHowSure(summary, form, streams);
}

}  // namespace zelvreg::console
