#include "ScanBench.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "BareWalk.h"
#include "OpenMachine.h"
#include "form/Form42.h"
#include "scan/CategoryTable.h"
#include "shell/StartUp.h"

namespace zelvreg::bench {
namespace {

// A sample lasts at least so long, else the clock's own step shows.
constexpr double shortestSample = 0.03;
constexpr double mostRepeats = 200;

void tick(Form42& form, const std::set<std::size_t>& rows) {
  for (std::size_t row = 1; row <= form.View1.count(); ++row) {
    form.View1.setChecked(row, rows.contains(row));
  }
}

// The press of the button alone counts, not the loading of the form.
double scanSeconds(const std::set<std::size_t>& rows, std::size_t repeats, double& findings) {
  double seconds = 0;
  for (std::size_t run = 0; run < repeats; ++run) {
    Form42 form;
    Form_Load(form);
    tick(form, rows);
    form.lookAgain.bind({});
    seconds += secondsOf([&form] { form.cmd_start.click(); });
    findings = static_cast<double>(form.View2.count());
  }
  return seconds;
}

double walkSeconds(const std::set<std::size_t>& rows, std::size_t repeats) {
  return secondsOf([&] {
    for (std::size_t run = 0; run < repeats; ++run) {
      bareWalk(rows);
    }
  });
}

std::vector<double> measureHere(const std::filesystem::path& folder,
                                const std::set<std::size_t>& rows, std::size_t pairs) {
  ScanFigures figures;
  figures.baseMemory = memoryNow();
  std::unique_ptr<console::Computer> computer;
  figures.loadSeconds = secondsOf([&] { computer = openMachine(folder); });
  figures.loadedMemory = memoryNow();
  figures.loadPeak = memoryPeak();
  resetMemoryPeak();
  // The first walk reads the folders of the disk, which are kept from then on.
  bareWalk(rows);
  const double once = walkSeconds(rows, 1);
  const auto repeats =
      static_cast<std::size_t>(std::min(mostRepeats, std::ceil(shortestSample / once)));
  const auto runs = static_cast<double>(repeats);
  figures.times = compare(
      pairs, [&] { return walkSeconds(rows, repeats) / runs; },
      [&] { return scanSeconds(rows, repeats, figures.findings) / runs; });
  figures.scanPeak = memoryPeak();
  return {figures.times.first,  figures.times.second, figures.times.ratio,
          figures.findings,     figures.loadSeconds,  figures.baseMemory,
          figures.loadedMemory, figures.loadPeak,     figures.scanPeak};
}

}  // namespace

std::set<std::size_t> allRows() {
  std::set<std::size_t> rows;
  for (std::size_t row = 1; row <= categories().size(); ++row) {
    rows.insert(row);
  }
  return rows;
}

ScanFigures measureScan(const std::filesystem::path& folder, const std::set<std::size_t>& rows,
                        std::size_t pairs) {
  const std::vector<double> numbers = runInChild([&] { return measureHere(folder, rows, pairs); });
  return {.times = {numbers.at(0), numbers.at(1), numbers.at(2)},
          .findings = numbers.at(3),
          .loadSeconds = numbers.at(4),
          .baseMemory = numbers.at(5),
          .loadedMemory = numbers.at(6),
          .loadPeak = numbers.at(7),
          .scanPeak = numbers.at(8)};
}

}  // namespace zelvreg::bench
