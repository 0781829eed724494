#include "EvidenceTable.h"

#include <algorithm>
#include <cstdlib>
#include <iomanip>

namespace zelvreg::bench {
namespace {

constexpr double hundred = 100;
constexpr double mostCost = 20;  // of a hundred

constexpr Truth truths[] = {Truth::Dead, Truth::Alive, Truth::Undecidable};

void printRow(std::ostream& output, const std::string& name, const Tally& tally) {
  output << "| " << std::setw(5) << name << " |";
  for (const Truth truth : truths) {
    output << std::setw(7) << tally.foundOf(truth) << " |" << std::setw(7) << tally.tickedOf(truth)
           << " |";
  }
  // The surest first.
  for (std::size_t surety = tally.deadBySurety.size(); surety > 0; --surety) {
    output << std::setw(7) << tally.deadBySurety[surety - 1] << " |";
  }
  output << "\n";
}

// Kind codes are numbers.
std::vector<std::pair<std::string, Tally>> inOrder(const EvidenceFigures& figures) {
  std::vector<std::pair<std::string, Tally>> kinds(figures.byKind.begin(), figures.byKind.end());
  std::ranges::sort(kinds, {}, [](const auto& kind) { return std::atoi(kind.first.c_str()); });
  return kinds;
}

void printTable(std::ostream& output, const EvidenceFigures& figures) {
  output << "|  kind |   dead | ticked |  alive | ticked |  und.* | ticked |   sure | likely | "
            "unsure |\n"
         << "|------:|-------:|-------:|-------:|-------:|-------:|-------:|-------:|-------:|"
            "-------:|\n";
  for (const auto& [kind, tally] : inOrder(figures)) {
    printRow(output, kind, tally);
  }
  printRow(output, "all", figures.total());
  output << "* undecidable. The last three columns are the dead ones again, by confidence.\n"
         << figures.rowsWithoutKind << " rows without a kind code, " << figures.tickedWithoutKind
         << " of them ticked\n";
}

void printWrong(std::ostream& output, const EvidenceFigures& figures) {
  for (const Judged& wrong : figures.wronglyTicked) {
    output << "ticked, but " << nameOf(wrong.truth) << " (" << wrong.family << "): " << wrong.place
           << ": " << wrong.reasons << "\n";
  }
  struct Missed {
    std::size_t count = 0;
    std::string first;
  };
  std::map<std::string, Missed> families;
  for (const Judged& missed : figures.deadAndUnticked) {
    Missed& family = families[missed.family + " (" + missed.reasons + ")"];
    if (++family.count == 1) {
      family.first = missed.place;
    }
  }
  for (const auto& [family, missed] : families) {
    output << "dead, but not ticked: " << missed.count << " of " << family << ", as "
           << missed.first << "\n";
  }
  for (const std::string& row : figures.unlabelled) {
    output << "without a label: " << row << "\n";
  }
}

const char* verdict(bool isMet) { return isMet ? "met" : "MISSED"; }

}  // namespace

void printEvidence(std::ostream& output, const EvidenceFigures& figures) {
  printTable(output, figures);
  printWrong(output, figures);
  const Tally all = figures.total();
  output << "alive or undecidable and ticked: "
         << all.tickedOf(Truth::Alive) + all.tickedOf(Truth::Undecidable)
         << "; goal 0: " << verdict(figures.ticksNothingElse()) << "\n"
         << "dead and ticked: " << std::fixed << std::setprecision(2)
         << hundred * static_cast<double>(all.tickedOf(Truth::Dead)) /
                static_cast<double>(std::max<std::size_t>(1, all.foundOf(Truth::Dead)))
         << " %; goal 98 %: " << verdict(figures.ticksTheDead()) << "\n";
}

void printCost(std::ostream& output, const Comparison& scans) {
  const double cost = (scans.ratio - 1) * hundred;
  output << "the second look costs " << std::fixed << std::setprecision(1) << cost
         << " % of the scan; goal at most " << std::setprecision(0) << mostCost
         << " %: " << verdict(cost <= mostCost) << "\n";
}

}  // namespace zelvreg::bench
