#include <CLI/CLI.hpp>
#include <exception>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <vector>

#include "EvidenceBench.h"
#include "EvidenceTable.h"
#include "GoalBench.h"
#include "MachineMaker.h"
#include "OfflineBench.h"
#include "ScanBench.h"
#include "SearchBench.h"
#include "WorkFolder.h"
#include "scan/CategoryTable.h"

namespace {

using namespace zelvreg::bench;
namespace fs = std::filesystem;

constexpr int goalMissed = 1;
constexpr int failed = 2;

struct Arguments {
  std::vector<std::size_t> sizes{10'000, 100'000};
  std::size_t pairs = 11;
  std::string offlineRoot;
  bool isByCategory = false;
  bool isOfSearch = false;
  bool isOfEvidence = false;
  bool isOfGoals = false;
  bool isOfScaling = false;
  std::uint64_t seed = 1;
};

// Of the machine that --evidence makes.
constexpr std::size_t evidenceKeys = 100'000;

constexpr double milliseconds = 1000;
constexpr double microseconds = 1'000'000;

void printCategories(const fs::path& folder, const std::set<std::size_t>& rows, std::size_t pairs) {
  for (const std::size_t row : rows) {
    const ScanFigures figures = measureScan(folder, {row}, pairs);
    std::cout << "    " << std::left << std::setw(16) << zelvreg::categories()[row - 1].optionName
              << std::right << "walk " << std::setw(9) << figures.times.first * milliseconds
              << " ms  scan " << std::setw(9) << figures.times.second * milliseconds
              << " ms  scan/walk " << figures.times.ratio << "\n";
  }
}

void printScan(std::size_t keys, const ScanFigures& figures) {
  const auto perKey = static_cast<double>(keys);
  std::cout << std::setw(9) << keys << " keys: scan/walk " << figures.times.ratio << "  (scan "
            << figures.times.second * milliseconds << " ms, "
            << figures.times.second * microseconds / perKey << " us a key, walk "
            << figures.times.first * milliseconds << " ms, " << std::setprecision(0)
            << figures.findings << " findings)\n"
            << std::setprecision(2) << "           peak of scan/loaded machine "
            << figures.scanPeak / figures.loadedMemory << "  (loaded " << figures.loadedMemory
            << " MB, of which the program " << figures.baseMemory << "; scan " << figures.scanPeak
            << " MB; loading took " << figures.loadSeconds << " s and " << figures.loadPeak
            << " MB)\n"
            << std::flush;
}

void printSearch(const SearchFigures& figures) {
  std::cout << std::setprecision(0) << std::setw(9) << figures.keys
            << " keys: " << std::setprecision(2) << "search/enumeration " << figures.times.ratio
            << "  (search " << figures.times.second * milliseconds << " ms, "
            << figures.times.second * microseconds / figures.keys << " us a key, enumeration "
            << figures.times.first * milliseconds << " ms, of keys alone "
            << figures.keysOnly * milliseconds << " ms, " << std::setprecision(0)
            << figures.findings << " findings)\n"
            << std::setprecision(2) << "           peak of search/loaded machine "
            << figures.searchPeak / figures.loadedMemory << "\n"
            << std::flush;
}

void benchMachines(const Arguments& arguments) {
  const zelvreg::bench::WorkFolder work;
  const std::set<std::size_t> rows = allRows();
  for (const std::size_t keys : arguments.sizes) {
    const fs::path folder = work.path() / std::to_string(keys);
    makeMachine(folder, {.keys = keys});
    if (arguments.isOfSearch) {
      printSearch(measureSearch(folder, arguments.pairs));
    } else {
      printScan(keys, measureScan(folder, rows, arguments.pairs));
    }
    if (arguments.isByCategory) {
      printCategories(folder, rows, arguments.pairs);
    }
    fs::remove_all(folder);
  }
}

void benchOffline(const Arguments& arguments) {
  const OfflineFigures figures = measureOffline(arguments.offlineRoot, arguments.pairs);
  std::cout << "offline scan/bare libhivex walk " << figures.times.ratio << "  (scan "
            << figures.times.second * milliseconds << " ms, " << std::setprecision(0)
            << figures.findings << " findings; walk of " << figures.keys << " keys and "
            << figures.values << " values " << std::setprecision(2)
            << figures.times.first * milliseconds << " ms)\n"
            << "scan with the second look/without " << figures.secondLook.ratio << "  (with it "
            << figures.secondLook.second * milliseconds << " ms)\n"
            << "peak memory scan/walk " << figures.scanPeak / figures.walkPeak << "  (scan "
            << figures.scanPeak << " MB, walk " << figures.walkPeak << " MB)\n";
}

// Whether every tick is as it should be. Time decides nothing.
bool benchEvidence(const Arguments& arguments) {
  bool isMet = true;
  for (const std::size_t keys : arguments.sizes) {
    const WorkFolder work;
    const fs::path folder = work.path() / "machine";
    std::cout << keys << " keys, seed " << arguments.seed << "\n";
    const EvidenceFigures figures = measureEvidence(folder, keys, arguments.seed);
    printEvidence(std::cout, figures);
    isMet = isMet && figures.ticksNothingElse() && figures.ticksTheDead();
    printCost(std::cout, compareWithSecondLook(folder, arguments.pairs));
  }
  return isMet;
}

int bench(const Arguments& arguments) {
  if (arguments.isOfGoals) {
    benchGoals(std::cout, {}, arguments.offlineRoot, arguments.pairs);
    return 0;
  }
  if (arguments.isOfScaling) {
    benchScaling(std::cout, arguments.sizes, arguments.pairs);
    return 0;
  }
  if (arguments.isOfEvidence) {
    return benchEvidence(arguments) ? 0 : goalMissed;
  }
  if (arguments.offlineRoot.empty()) {
    benchMachines(arguments);
  } else {
    benchOffline(arguments);
  }
  return 0;
}

void addOptions(CLI::App& app, Arguments& arguments) {
  app.add_option("--keys", arguments.sizes, "sizes of the machines to make, separated by commas")
      ->capture_default_str()
      ->delimiter(',')
      ->check(CLI::Range(fewestKeys, mostKeys));
  app.add_option("--pairs", arguments.pairs, "how many times each pair is taken")
      ->capture_default_str()
      ->check(CLI::Range(1, 1000));
  app.add_option("--offline", arguments.offlineRoot,
                 "compare an offline scan of this mounted disk instead")
      ->check(CLI::ExistingDirectory);
  app.add_flag("--by-category", arguments.isByCategory, "compare each category by itself too");
  app.add_flag("--search", arguments.isOfSearch,
               "compare a registry search with an enumeration instead of a scan");
  app.add_flag("--evidence", arguments.isOfEvidence,
               "compare the ticks of a scan with what is dead instead; status 1 if they are wrong");
  app.add_flag(
      "--goals", arguments.isOfGoals,
      "measure all that docs/benchmark.md has a goal for, on made machines and a made disk "
      "(or that of --offline); bench/window/measure measures the window");
  app.add_flag("--scaling", arguments.isOfScaling,
               "print how long things take at each size, in microseconds a key, with tabs between");
  app.add_option("--seed", arguments.seed, "of the machine that --evidence makes")
      ->capture_default_str();
}

}  // namespace

int main(int count, char** arguments) {
  try {
    Arguments given;
    CLI::App app("Compares a scan with the bare walk of what it reads.", "zelvreg-bench");
    addOptions(app, given);
    try {
      app.parse(count, arguments);
    } catch (const CLI::CallForHelp&) {
      std::cout << app.help();
      return 0;
    }
    if (given.isOfEvidence && app.count("--keys") == 0) {
      given.sizes = {evidenceKeys};
    }
    std::cout << std::fixed << std::setprecision(2);
    return bench(given);
  } catch (const std::exception& error) {
    const std::string message = error.what();
    std::cerr << "zelvreg-bench: " << message.substr(0, message.find('\n')) << "\n";
    return failed;
  }
}
