// Which rows a repair from the command line takes.
#ifndef ZELVREG_CONSOLE_FIX_TICKS_H
#define ZELVREG_CONSOLE_FIX_TICKS_H

#include <cstddef>
#include <vector>

#include "console/CommandLine.h"
#include "console/Commands.h"
#include "console/ScanResult.h"
#include "evidence/ConfidenceSummary.h"

namespace zelvreg {
struct Form42;
}  // namespace zelvreg

namespace zelvreg::console {

class RepairTicks {
 public:
  // Throws std::runtime_error with one line if the reviewed result cannot be read. What is given
  // must outlive it.
  RepairTicks(const Options& optionsInUse, const Streams& streamsInUse);

  // Ticks the rows of a scan that were asked for and are sure enough, and unticks all others.
  // `users` are the computer's, the current one first. Returns how many are ticked.
  std::size_t tick(Form42& form, const std::vector<ComputerUser>& users);

  // Tells on the error stream how sure those of all scans are and how many are left alone. The form
  // is any of theirs.
  void tell(const Form42& form) const;

 private:
  const Options& options;
  const Streams& streams;
  std::vector<FindingResult> reviewed;
  std::size_t found = 0;  // of the reviewed ones
  ConfidenceSummary summary;
};

}  // namespace zelvreg::console

#endif
