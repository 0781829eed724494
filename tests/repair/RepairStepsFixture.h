// Single rows, whose steps are taken one after the other.
#ifndef ZELVREG_TESTS_REPAIR_REPAIR_STEPS_FIXTURE_H
#define ZELVREG_TESTS_REPAIR_REPAIR_STEPS_FIXTURE_H

#include <string>

#include "repair/RepairSteps.h"
#include "scan/Findings.h"
#include "support/ComputerFixture.h"

namespace zelvreg::fixture {

inline const std::string machine = "HKEY_LOCAL_MACHINE\\SOFTWARE\\RepairStepsTest";
inline const std::string classes = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\RepairStepsTest";

class RepairStepsFixture : public ComputerFixture {
 protected:
  RepairStepsFixture() { removeKeys(); }
  ~RepairStepsFixture() override { removeKeys(); }

  static void removeKeys() {
    for (const std::string& key :
         {machine, classes, std::string("HKEY_CURRENT_USER\\Software\\RepairStepsTest")}) {
      removeKey(key);
    }
  }

  // The rows of one test are those of one routine.
  void take(const Finding& finding) {
    ScannerRun run;
    addRow(form, run, finding);
    takeSteps(form, form.View2.count(), *repairKind(std::stoi(std::string(finding.kindCode))),
              root);
  }

 private:
  HiveHandle root = HiveHandle::Unknown;
};

}  // namespace zelvreg::fixture

#endif
