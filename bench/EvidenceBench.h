// How well the second look of a scan judges a machine of which everything is known.
#ifndef ZELVREG_BENCH_EVIDENCE_BENCH_H
#define ZELVREG_BENCH_EVIDENCE_BENCH_H

#include <array>
#include <cstddef>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "Labels.h"
#include "Measure.h"

namespace zelvreg::bench {

// References that have a finding, each counted once however many rows it has. It is ticked if one
// of its rows is.
struct Tally {
  std::array<std::size_t, truthCount> found{};   // by truth
  std::array<std::size_t, truthCount> ticked{};  // by truth
  std::array<std::size_t, 3> deadBySurety{};     // the dead ones: unsure, likely, sure

  [[nodiscard]] std::size_t foundOf(Truth truth) const {
    return found[static_cast<std::size_t>(truth)];
  }
  [[nodiscard]] std::size_t tickedOf(Truth truth) const {
    return ticked[static_cast<std::size_t>(truth)];
  }
  void add(const Tally& other);
};

// A reference with the reasons that the second look gave for it.
struct Judged {
  std::string place;
  std::string family;
  Truth truth = Truth::Alive;
  std::string reasons;
};

struct EvidenceFigures {
  std::map<std::string, Tally> byKind;
  std::vector<Judged> wronglyTicked;
  std::vector<Judged> deadAndUnticked;
  // Rows that the maker of the machine knows nothing of: there should be none.
  std::vector<std::string> unlabelled;
  std::size_t rowsWithoutKind = 0;
  std::size_t tickedWithoutKind = 0;

  [[nodiscard]] Tally total() const;
  // The goals: nothing is ticked but what is dead, and of that at least 98 in a hundred.
  [[nodiscard]] bool ticksNothingElse() const;
  [[nodiscard]] bool ticksTheDead() const;
};

// Makes a machine in the folder, which must not exist or be empty, scans all of it as the program
// does with "careful" in force, and compares the ticks with what is known. Nothing else may run on
// a machine in this process. Throws std::runtime_error with one line.
EvidenceFigures measureEvidence(const std::filesystem::path& folder, std::size_t keys,
                                std::uint64_t seed);

// The scan of that folder without the second look, and with it, in so many pairs.
Comparison compareWithSecondLook(const std::filesystem::path& folder, std::size_t pairs);

}  // namespace zelvreg::bench

#endif
