// Only native: machines for measuring are made on the system that builds.
#include "MachineMaker.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "CaseTable.h"
#include "Labels.h"
#include "WorkFolder.h"

namespace zelvreg::bench {
namespace {

namespace fs = std::filesystem;

std::string contentOf(const fs::path& file) {
  std::ifstream input(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(input), {}};
}

struct KeptLabel {
  std::string kind;
  std::string place;
  std::string family;
  Truth truth;

  bool operator==(const KeptLabel&) const = default;
};

struct Made {
  std::string registry;
  std::vector<KeptLabel> labels;
};

Made make(std::uint64_t seed) {
  const WorkFolder work;
  const fs::path folder = work.path() / "machine";
  Made made;
  makeMachine(folder, {.keys = fewestKeys, .seed = seed}, [&](const Label& label) {
    made.labels.push_back(
        {std::string(label.kind),
         std::string(label.root) + "\\" + std::string(label.key) + "\t" + std::string(label.value),
         label.family, label.truth});
  });
  made.registry = contentOf(folder / "registry.reg");
  return made;
}

const Made& madeOnce(std::uint64_t seed) {
  static std::map<std::uint64_t, Made> machines;
  const auto found = machines.find(seed);
  return found == machines.end() ? machines.emplace(seed, make(seed)).first->second : found->second;
}

std::size_t countOfKeys(const std::string& registry) {
  std::istringstream lines(registry);
  std::size_t keys = 0;
  for (std::string line; std::getline(lines, line);) {
    keys += line.starts_with('[') ? 1 : 0;
  }
  return keys;
}

class MadeMachines : public testing::TestWithParam<std::uint64_t> {};
INSTANTIATE_TEST_SUITE_P(Seeds, MadeMachines, testing::Values(1, 2, 3));

TEST_P(MadeMachines, HaveExactlySoManyKeys) {
  EXPECT_EQ(countOfKeys(madeOnce(GetParam()).registry), fewestKeys);
}

TEST_P(MadeMachines, AreTheSameForTheSameSeed) {
  const Made& first = madeOnce(GetParam());
  const Made second = make(GetParam());
  EXPECT_TRUE(first.registry == second.registry);
  EXPECT_TRUE(first.labels == second.labels);
  EXPECT_FALSE(first.registry == madeOnce(GetParam() + 1).registry);
}

TEST_P(MadeMachines, HaveEveryKindAndNoPlaceTwice) {
  std::set<std::string> kinds;
  std::set<std::string> places;
  for (const KeptLabel& label : madeOnce(GetParam()).labels) {
    kinds.insert(label.kind);
    EXPECT_TRUE(places.insert(label.kind + "\t" + label.place).second) << label.place;
  }
  EXPECT_EQ(kinds, (std::set<std::string>{"1",   "2",   "3",   "4",   "5",   "6",  "7",  "8",
                                          "11",  "12",  "13",  "55",  "56",  "71", "72", "122",
                                          "133", "135", "144", "155", "166", "771"}));
}

TEST_P(MadeMachines, HaveEveryHardCase) {
  std::set<std::pair<std::string, Truth>> labelled;
  for (const KeptLabel& label : madeOnce(GetParam()).labels) {
    labelled.emplace(label.family, label.truth);
  }
  for (const auto table : {pathCases(), textCases(), commandCases()}) {
    for (const Case& one : table) {
      EXPECT_TRUE(labelled.contains({one.family, one.truth})) << one.text;
    }
  }
}

TEST_P(MadeMachines, HaveNoMoreDeadReferencesOfAKindThanOthers) {
  std::map<std::string, std::map<Truth, std::size_t>> counts;
  for (const KeptLabel& label : madeOnce(GetParam()).labels) {
    ++counts[label.kind][label.truth];
  }
  for (auto& [kind, ofKind] : counts) {
    EXPECT_GT(ofKind[Truth::Dead], 0U) << "kind " << kind;
    EXPECT_LE(ofKind[Truth::Dead], ofKind[Truth::Alive] + ofKind[Truth::Undecidable])
        << "kind " << kind;
  }
}

TEST(Labels, AreLinesOfSixColumns) {
  const WorkFolder work;
  const fs::path file = work.path() / "labels";
  LabelFile labels(file);
  labels.add({"144", "HKEY_CURRENT_USER", "Software\\Run", "Name", "cmd", Truth::Undecidable});
  labels.finish();
  EXPECT_EQ(contentOf(file),
            "label\tfamily\tkind\troot\tkey\tvalue\n"
            "undecidable\tcmd\t144\tHKEY_CURRENT_USER\tSoftware\\Run\tName\n");
}

TEST(Labels, ThatCannotBeWrittenAreAnError) {
  LabelFile labels("/no such folder/labels");
  EXPECT_THROW(labels.finish(), std::runtime_error);
}

}  // namespace
}  // namespace zelvreg::bench
