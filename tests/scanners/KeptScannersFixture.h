// What the tests of the scanners of server programs share.
#ifndef ZELVREG_TESTS_SCANNERS_KEPT_SCANNERS_FIXTURE_H
#define ZELVREG_TESTS_SCANNERS_KEPT_SCANNERS_FIXTURE_H

#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scanners/KeptScanners.h"
#include "scanners/ScannerFixture.h"
#include "text/Numbers.h"
#include "text/Text.h"

namespace zelvreg::serverPrograms {

using fixture::Texts;

inline const std::string classA = "{ServerProgramsTest-A}";
inline const std::string classB = "{ServerProgramsTest-B}";
inline const std::string classKeys = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\CLSID\\";
inline const std::string classKeys32 =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\Wow6432Node\\CLSID\\";
using fixture::countKey;
inline const std::string folder = "C:\\ServerProgramsTest";
inline const std::string there = folder + "\\There.exe";
inline const std::string gone = folder + "\\Gone.exe";

class ServerProgramsFixture : public fixture::ScannerFixture {
 protected:
  ServerProgramsFixture() {
    removeClasses();
    emptyKey(countKey);
    makeFile(there);
    for (const Category& category : categories()) {
      form.View1.setText(form.View1.add(category.valueName), problemsColumn, "before");
    }
  }
  ~ServerProgramsFixture() override { removeClasses(); }

  static void removeClasses() {
    for (const std::string& name : {classA, classA + " ", classB}) {
      removeKey(classKeys + name);
      removeKey(classKeys32 + name);
    }
  }

  // The findings of the test's own classes: the system has classes, too.
  std::vector<Texts> findings() {
    std::vector<Texts> own;
    for (std::size_t row = 1; row <= form.View2.count(); ++row) {
      if (contains(form.View2.text(row, locationColumn), "ServerProgramsTest")) {
        own.push_back(fixture::findingOf(form, row));
      }
    }
    return own;
  }

  // What a scanner says of its walk at each yield, and in the end.
  Texts progressOf(void (*scan)(Form42& form)) {
    Texts shown;
    form.messages.serveHost = [&] { shown.push_back(form.Label3.caption); };
    scan(form);
    shown.push_back(form.Label3.caption);
    return shown;
  }

  Texts cells() {
    Texts texts;
    for (std::size_t row = 1; row <= form.View1.count(); ++row) {
      texts.push_back(form.View1.text(row, problemsColumn));
    }
    return texts;
  }

  std::string rowCount() { return decimal(static_cast<std::int64_t>(form.View2.count())); }
};

}  // namespace zelvreg::serverPrograms

#endif
