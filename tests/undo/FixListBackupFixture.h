// The copies of the fix list of one test, and the list of undo entries that names them.
#ifndef ZELVREG_TESTS_UNDO_FIX_LIST_BACKUP_FIXTURE_H
#define ZELVREG_TESTS_UNDO_FIX_LIST_BACKUP_FIXTURE_H

#include <string>

#include "runtime/FileText.h"
#include "scan/Findings.h"
#include "support/ComputerFixture.h"
#include "text/Wide.h"
#include "undo/FixListBackup.h"

namespace zelvreg {

class FixListBackupFixture : public fixture::ComputerFixture {
 protected:
  FixListBackupFixture() {
    emptyKey(settings);
    makeFolder(form.programFolder);
  }
  ~FixListBackupFixture() override {
    for (const char* number : {"1", "2"}) {
      DeleteFileW(Wide(pathOf(stamp(number))).get());
    }
  }

  void addTicked(const char* location, const char* badValue = "bad value",
                 const char* rootName = "HKEY_USERS", const char* subKey = "Software\\Key") {
    ScannerRun run;
    addRow(form, run, {location, badValue, "2", rootName, subKey, "a"});
    form.View2.setChecked(form.View2.count(), true);
  }

  // The stamp of an entry, which is the name of its file.
  [[nodiscard]] std::string stamp(const std::string& number) const {
    return storedText(settings + "\\dates", number);
  }
  [[nodiscard]] std::string pathOf(const std::string& stem) const {
    return form.programFolder + "\\backup\\fixreg\\" + stem + ".txt";
  }
  [[nodiscard]] std::string copy(const std::string& number) const {
    return readFileText(pathOf(stamp(number))).value_or("(none)");
  }

  const std::string settings =
      "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\regscan";
};

}  // namespace zelvreg

#endif
