// Repairs with the guard in force, over rows that a scanner has found or a test makes up.
#ifndef ZELVREG_TESTS_REPAIR_GUARD_FIXTURE_H
#define ZELVREG_TESTS_REPAIR_GUARD_FIXTURE_H

#include <string>
#include <vector>

#include "repair/RepairDriver.h"
#include "scan/Findings.h"
#include "shell/StartUp.h"
#include "support/ComputerFixture.h"
#include "text/Text.h"

namespace zelvreg::fixture {

inline const std::string machineClasses = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\";
inline const std::string userClasses = "HKEY_CURRENT_USER\\Software\\Classes\\";
inline const std::string windowsKey = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\";
inline const std::string deadFile = "C:\\GuardTest gone\\gone.exe";
inline const std::string livingFile = "C:\\GuardTest\\living.exe";

class GuardFixture : public ComputerFixture {
 protected:
  GuardFixture() {
    bindClicks(form);
    form.safeguards = {.exportsFirst = false};
    form.dialogs.show = [this](const UserMessage& message) {
      (message.isQuestion ? questions : messages).push_back(message.text);
      return message.isQuestion ? Answer::Yes : Answer::Ok;
    };
    makeFile(livingFile);
  }

  void add(const Finding& finding) {
    ScannerRun run;
    addRow(form, run, finding);
    form.View2.setChecked(form.View2.count(), true);
  }

  // Ticks what a scanner finds of this test's keys, those with "guardtest" in a field, alone.
  void find(void (*scanner)(Form42& form)) {
    scanner(form);
    for (std::size_t row = form.View2.count(); row > 0; --row) {
      std::string fields;
      for (const std::string& field : findingOf(form, row)) {
        fields += field + "\n";
      }
      if (!containsIgnoringCase(fields, "guardtest")) {
        form.View2.remove(row);
      }
      form.View2.setChecked(row, true);
    }
    found = form.View2.count();
  }
  void repairFound(void (*scanner)(Form42& form)) {
    find(scanner);
    runRepair(form);
  }

  [[nodiscard]] bool isLeftAlone(const std::string& place) const {
    for (const LeftAlone& entry : form.repairOutcome.refused) {
      if (lowerCase(entry.place) == lowerCase(place)) {
        return true;
      }
    }
    return false;
  }

  std::size_t found = 0;  // by the scanner
  std::vector<std::string> questions;
  std::vector<std::string> messages;
};

}  // namespace zelvreg::fixture

#endif
