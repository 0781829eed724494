// A computer on which calls to Windows fail: dead entries of three kinds beside some that live,
// what the user and a policy exclude, and an earlier repair that can be undone.
#ifndef ZELVREG_TESTS_REPAIR_FAULT_SWEEP_FIXTURE_H
#define ZELVREG_TESTS_REPAIR_FAULT_SWEEP_FIXTURE_H

#include <map>
#include <string>
#include <vector>

#include "console/CommandRun.h"
#include "machine/base/FaultPlan.h"
#include "support/ComputerFixture.h"

namespace zelvreg::fixture {

using Arguments = std::vector<std::string>;

// What a command has left behind. Times in it are replaced by "TIME", so that runs can be compared.
struct Ended {
  int status = 0;
  std::string out;
  std::vector<std::string> lines;  // of standard error
};

// What counts of the computer: keys by their path with an empty text, values as path, "|" and name
// with their type and bytes, files of the program as "file " and path with their content.
using Picture = std::map<std::string, std::string>;

bool isOwn(const std::string& entry);  // of the program's own key
bool isFile(const std::string& entry);

// The same with "TIME" for times in names and texts.
std::string withoutTimes(const std::string& text);
Picture withoutTimes(const Picture& picture);

class FaultSweepFixture : public ComputerFixture, protected console::CommandRun {
 protected:
  // Makes the computer as it is at first.
  FaultSweepFixture();
  ~FaultSweepFixture() override;

  // What of a picture a repair is to take, one for each of its rows.
  static const std::vector<std::string> dead;

  Ended run(const Arguments& arguments);
  // The same with faults.
  Ended runFailing(const Arguments& arguments, machine::FaultPlan& plan);

  static Picture picture();
  // Makes the computer what it was.
  static void restore(const Picture& before);
  // The newest safety export; empty without one.
  static std::string newestExport();

 private:
  void make();

  const Picture found;  // what other tests have left there
};

}  // namespace zelvreg::fixture

#endif
