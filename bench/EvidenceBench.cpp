#include "EvidenceBench.h"

#include <memory>

#include "KnownReferences.h"
#include "MachineMaker.h"
#include "OpenMachine.h"
#include "evidence/Reasons.h"
#include "evidence/SecondLook.h"
#include "form/Form42.h"
#include "scan/Findings.h"
#include "shell/StartUp.h"

namespace zelvreg::bench {
namespace {

constexpr std::size_t leastTickedOfHundred = 98;

void prepare(Form42& form) {
  Form_Load(form);
  for (std::size_t row = 1; row <= form.View1.count(); ++row) {
    form.View1.setChecked(row, true);
  }
}

// The rows of one reference taken together.
struct Finding {
  std::string kind;
  bool isTicked = false;
  Confidence confidence = Confidence::Unsure;
  std::string reasons;  // of its surest row
};

using Findings = std::map<const KnownReference*, Finding>;

void note(Finding& finding, const Form42& form, std::size_t row) {
  const Evidence* evidence = evidenceOf(form, row);
  const Confidence confidence = evidence == nullptr ? Confidence::Unsure : evidence->confidence;
  if (evidence != nullptr && (finding.reasons.empty() || confidence > finding.confidence)) {
    finding.reasons = reasonCodes(*evidence);
    finding.confidence = confidence;
  }
  finding.isTicked = finding.isTicked || form.View2.isChecked(row);
}

Findings collect(const Form42& form, const KnownReferences& known, EvidenceFigures& figures) {
  Findings findings;
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    const std::string kind(form.View2.text(row, kindCodeColumn));
    if (kind.empty()) {
      ++figures.rowsWithoutKind;
      figures.tickedWithoutKind += form.View2.isChecked(row) ? 1 : 0;
      continue;
    }
    const KnownReference* reference = known.find(form, row);
    if (reference == nullptr) {
      figures.unlabelled.push_back("kind " + kind + ": " + fullKey(form, row) + ", " +
                                   std::string(form.View2.text(row, badValueColumn)));
      continue;
    }
    Finding& finding = findings[reference];
    finding.kind = kind;
    note(finding, form, row);
  }
  return findings;
}

void count(EvidenceFigures& figures, const KnownReference& reference, const Finding& finding) {
  const auto truth = static_cast<std::size_t>(reference.truth);
  Tally& tally = figures.byKind[finding.kind];
  ++tally.found[truth];
  tally.ticked[truth] += finding.isTicked ? 1 : 0;
  const bool isDead = reference.truth == Truth::Dead;
  if (isDead) {
    ++tally.deadBySurety[static_cast<std::size_t>(finding.confidence)];
  }
  if (isDead != finding.isTicked) {
    std::vector<Judged>& list = isDead ? figures.deadAndUnticked : figures.wronglyTicked;
    list.push_back({reference.place, reference.family, reference.truth, finding.reasons});
  }
}

}  // namespace

void Tally::add(const Tally& other) {
  for (std::size_t truth = 0; truth < truthCount; ++truth) {
    found[truth] += other.found[truth];
    ticked[truth] += other.ticked[truth];
    deadBySurety[truth] += other.deadBySurety[truth];
  }
}

Tally EvidenceFigures::total() const {
  Tally all;
  for (const auto& [kind, tally] : byKind) {
    all.add(tally);
  }
  return all;
}

bool EvidenceFigures::ticksNothingElse() const {
  return wronglyTicked.empty() && tickedWithoutKind == 0;
}

bool EvidenceFigures::ticksTheDead() const {
  const Tally all = total();
  return all.tickedOf(Truth::Dead) * 100 >= all.foundOf(Truth::Dead) * leastTickedOfHundred;
}

EvidenceFigures measureEvidence(const std::filesystem::path& folder, std::size_t keys,
                                std::uint64_t seed) {
  KnownReferences known;
  makeMachine(folder, {.keys = keys, .seed = seed}, [&](const Label& label) { known.add(label); });
  const auto computer = openMachine(folder);
  Form42 form;
  prepare(form);
  form.cmd_start.click();
  EvidenceFigures figures;
  for (const auto& [reference, finding] : collect(form, known, figures)) {
    count(figures, *reference, finding);
  }
  return figures;
}

Comparison compareWithSecondLook(const std::filesystem::path& folder, std::size_t pairs) {
  const auto computer = openMachine(folder);
  const auto scan = [](bool looksAgain) {
    Form42 form;
    prepare(form);
    if (!looksAgain) {
      form.lookAgain.bind({});
    }
    return secondsOf([&form] { form.cmd_start.click(); });
  };
  // The first scan reads the folders of the disk, which are kept from then on.
  scan(true);
  return compare(
      pairs, [&] { return scan(false); }, [&] { return scan(true); });
}

}  // namespace zelvreg::bench
