// A computer whose three lists of installed programs hold one record each, in which nothing is
// wrong, and no list under the other spelling.
#ifndef ZELVREG_TESTS_SCANNERS_UNINSTALL_RECORDS_FIXTURE_H
#define ZELVREG_TESTS_SCANNERS_UNINSTALL_RECORDS_FIXTURE_H

#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scanners/GrantedKeys.h"
#include "scanners/UninstallRecords.h"

namespace zelvreg::fixture {

using Rows = std::vector<std::vector<std::string>>;
using Texts = std::vector<std::string>;

class UninstallRecordsFixture : public ComputerFixture {
 protected:
  explicit UninstallRecordsFixture(int bits = 64) : ComputerFixture(bits) {
    for (const std::string& list : {ofMachine, ofMachine32, ofUser}) {
      emptyKey(list);
      setText(list + "\\Kept", "", "kept");
    }
    for (const std::string& list : {ntOfMachine, ntOfMachine32, ntOfUser}) {
      removeKey(list);
    }
    emptyKey(countKey);
    setText(probe32, "SystemRoot", "C:\\Windows");
    makeFile(there);
    makeFolder(folder);
    for (int row = 1; row <= 13; ++row) {
      form.View1.add("category");
    }
  }

  [[nodiscard]] Rows findings() const {
    Rows rows;
    for (std::size_t row = 1; row <= form.View2.count(); ++row) {
      rows.push_back(findingOf(form, row));
    }
    return rows;
  }

  [[nodiscard]] std::string shownCount() const { return form.View1.text(13, problemsColumn); }

  static bool isGranted(const std::string& key) { return namesUser(accessOfKey(key), userName()); }

  static Texts finding(const std::string& badValue, const std::string& kind,
                       const std::string& root, const std::string& subKey) {
    return {"Add/Remove programs", badValue, kind, root, subKey, "re"};
  }
  [[nodiscard]] Texts shellOfMachine(const std::string& name) const {
    return finding(name, "133", machine, reported + name);
  }
  [[nodiscard]] Texts shellOfUser(const std::string& name) const {
    return finding(name, "133", user, reported + name);
  }
  [[nodiscard]] Texts shellOfMachine32(const std::string& name) const {
    return finding(name, "133", machine, reported32 + name);
  }

  const std::string machine = "HKEY_LOCAL_MACHINE";
  const std::string user = "HKEY_CURRENT_USER";

  const std::string ofMachine =
      machine + "\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall";
  const std::string ofMachine32 =
      machine + "\\SOFTWARE\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\Uninstall";
  const std::string ofUser = user + "\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall";
  const std::string ntOfMachine =
      machine + "\\SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Uninstall";
  const std::string ntOfMachine32 =
      machine + "\\SOFTWARE\\Wow6432Node\\Microsoft\\Windows NT\\CurrentVersion\\Uninstall";
  const std::string ntOfUser =
      user + "\\Software\\Microsoft\\Windows NT\\CurrentVersion\\Uninstall";
  // Where a 32-bit process looks for the system's folder.
  const std::string probe32 =
      machine + "\\SOFTWARE\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion";
  const std::string countKey =
      machine + "\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\real";

  const std::string reported = "Software\\Microsoft\\windows\\currentversion\\Uninstall\\";
  const std::string reported32 =
      "Software\\Wow6432Node\\Microsoft\\windows\\currentversion\\Uninstall\\";

  const std::string folder = "C:\\UninstallRecordsTest\\Folder";
  const std::string there = "C:\\UninstallRecordsTest\\There.exe";
  const std::string gone = "C:\\UninstallRecordsTest\\Gone.exe";
};

}  // namespace zelvreg::fixture

#endif
