#include "GoalBench.h"

#include <algorithm>
#include <cstdlib>
#include <iomanip>
#include <string_view>
#include <vector>

#include "EvidenceBench.h"
#include "Goals.h"
#include "ImageBench.h"
#include "MachineMaker.h"
#include "OfflineBench.h"
#include "OpeningBench.h"
#include "PeerBench.h"
#include "Programs.h"
#include "ReplayBench.h"
#include "ScanBench.h"
#include "SearchBench.h"
#include "WorkFolder.h"

namespace zelvreg::bench {
namespace {

namespace fs = std::filesystem;

constexpr double milliseconds = 1000;
constexpr double microseconds = 1'000'000;
constexpr double megabyte = 1024 * 1024;
constexpr std::size_t programRuns = 51;
constexpr int problemsFound = 1;

// Making takes memory that would show in what is measured afterwards.
void makeApart(const std::function<void()>& work) {
  runInChild([&work] {
    work();
    return std::vector<double>();
  });
}

Comparison secondLook(const fs::path& folder, std::size_t pairs) {
  const std::vector<double> numbers = runInChild([&] {
    const Comparison times = compareWithSecondLook(folder, pairs);
    return std::vector<double>{times.first, times.second, times.ratio};
  });
  return {numbers.at(0), numbers.at(1), numbers.at(2)};
}

class GoalBench {
 public:
  GoalBench(std::ostream& stream, std::size_t pairCount) : output(stream), pairs(pairCount) {}

  void machine(std::size_t keys) {
    const WorkFolder work;
    const fs::path folder = work.path() / "machine";
    makeApart([&] { makeMachine(folder, {.keys = keys}); });
    const OpeningFigures opening = measureOpening(folder, pairs);
    figures[Measure::Opening] = opening.seconds;
    figures[Measure::OpeningMemory] = opening.bytes / static_cast<double>(keys);
    figures[Measure::Scan] = measureScan(folder, allRows(), pairs).times.ratio;
    figures[Measure::Search] = measureSearch(folder, pairs).times.ratio;
  }

  void secondLookOf(std::size_t keys) {
    const WorkFolder work;
    const fs::path folder = work.path() / "machine";
    makeApart([&] { makeMachine(folder, {.keys = keys}); });
    figures[Measure::SecondLook] = secondLook(folder, pairs).ratio - 1;
  }

  void madeDisk(const DiskSize& size) {
    const WorkFolder work;
    makeApart([&] { makeDisk(work.path(), size); });
    disk(work.path());
    if (const auto added = measureImage(work.path(), pairs)) {
      figures[Measure::Image] = *added * milliseconds;
    }
  }

  void disk(const fs::path& root) {
    offline = measureOffline(root, pairs);
    figures[Measure::OfflineToWalk] = offline.times.ratio;
    figures[Measure::OfflineMemory] = offline.scanPeak * megabyte / offline.hiveBytes;
    const char* folders = std::getenv("PATH");
    readers = measurePeers(offline.hive, folders == nullptr ? "" : folders, pairs,
                           [&root] { return offlineScanSeconds(root); });
    if (const PeerFigures* fastest = fastestOf(readers)) {
      figures[Measure::OfflineToReader] = fastest->times.ratio;
    }
  }

  void replay() {
    const WorkFolder work;
    makeApart([&] { makeDirtyDisk(work.path()); });
    figures[Measure::Replay] = measureReplay(work.path(), pairs) * milliseconds;
  }

  void programs() {
    const std::string zelvreg = zelvregProgram().string();
    const WorkFolder work;
    const fs::path demo = work.path() / "demo";
    fs::copy(demoMachine(), demo, fs::copy_options::recursive);
    version = measureProgram({zelvreg, "--version"}, programRuns);
    demoScan =
        measureProgram({zelvreg, "--machine", demo.string(), "scan"}, programRuns, problemsFound);
    figures[Measure::Version] = version.elapsed * milliseconds;
    figures[Measure::Demo] = demoScan.elapsed * milliseconds;
  }

  void print() const {
    printGoals(output, figures);
    output << std::fixed << std::setprecision(1) << "\nThe hive: " << offline.hiveBytes / megabyte
           << " MB, " << std::setprecision(0) << offline.keys << " keys, " << offline.values
           << " values; peak memory " << std::setprecision(1) << offline.scanPeak << " MB.\n"
           << "Processor time: `zelvreg --version` " << version.processor * milliseconds
           << " ms, a scan of the demo machine " << demoScan.processor * milliseconds << " ms.\n";
    printReaders();
  }

 private:
  void printReaders() const {
    output << "\n| reader of the hive | time | an offline scan / its time |\n|---|---|---|\n"
           << "| an offline scan | "
           << inUnit(offline.times.second * milliseconds, Unit::Milliseconds) << " | 1.00 |\n"
           << "| the same with the second look | "
           << inUnit(offline.secondLook.second * milliseconds, Unit::Milliseconds) << " | "
           << inUnit(1 / offline.secondLook.ratio, Unit::Ratio) << " |\n"
           << "| a bare libhivex walk | "
           << inUnit(offline.times.first * milliseconds, Unit::Milliseconds) << " | "
           << inUnit(offline.times.ratio, Unit::Ratio) << " |\n";
    for (const PeerFigures& reader : readers) {
      output << "| " << reader.peer->name << " | "
             << inUnit(reader.times.first * milliseconds, Unit::Milliseconds) << " | "
             << inUnit(reader.times.ratio, Unit::Ratio) << " |\n";
    }
    for (const Peer& peer : peers()) {
      const bool isThere = std::ranges::any_of(
          readers, [&peer](const PeerFigures& reader) { return reader.peer == &peer; });
      if (!isThere) {
        output << "\n" << peer.name << " is not installed (Debian: " << peer.package << ").\n";
      }
    }
  }

  std::ostream& output;
  std::size_t pairs;
  Figures figures;
  OfflineFigures offline;
  std::vector<PeerFigures> readers;
  ProgramTimes version;
  ProgramTimes demoScan;
};

}  // namespace

void benchGoals(std::ostream& output, const GoalSizes& sizes, const fs::path& offlineRoot,
                std::size_t pairs) {
  GoalBench bench(output, pairs);
  bench.programs();
  bench.machine(sizes.keys);
  bench.secondLookOf(sizes.secondLookKeys);
  bench.replay();
  if (offlineRoot.empty()) {
    bench.madeDisk(sizes.disk);
  } else {
    bench.disk(offlineRoot);
  }
  bench.print();
}

void benchScaling(std::ostream& output, std::span<const std::size_t> sizes, std::size_t pairs) {
  output << "keys\topening\tplain loops\tscan\tscan with the second look\tsearch\n"
         << std::fixed << std::setprecision(4);
  for (const std::size_t keys : sizes) {
    const WorkFolder work;
    const fs::path folder = work.path() / "machine";
    makeApart([&] { makeMachine(folder, {.keys = keys}); });
    const double perKey = microseconds / static_cast<double>(keys);
    const OpeningFigures opening = measureOpening(folder, pairs);
    const ScanFigures scan = measureScan(folder, allRows(), pairs);
    const SearchFigures search = measureSearch(folder, pairs);
    output << keys << "\t" << opening.seconds * perKey << "\t" << scan.times.first * perKey << "\t"
           << scan.times.second * perKey << "\t" << secondLook(folder, pairs).second * perKey
           << "\t" << search.times.second * microseconds / search.keys << "\n"
           << std::flush;
  }
}

}  // namespace zelvreg::bench
