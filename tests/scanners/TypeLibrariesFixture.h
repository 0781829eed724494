// What the tests of the scanners of type libraries share.
#ifndef ZELVREG_TESTS_SCANNERS_TYPE_LIBRARIES_FIXTURE_H
#define ZELVREG_TESTS_SCANNERS_TYPE_LIBRARIES_FIXTURE_H

#include <algorithm>

#include "keys/AccountSids.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scanners/KeptScanners.h"
#include "scanners/ScannerFixture.h"
#include "scanners/TypeLibraries.h"
#include "text/Numbers.h"
#include "text/Text.h"

namespace zelvreg::typeLibraries {

using fixture::Texts;

inline const std::string nameA = "{TypeLibrariesTest-A}";
inline const std::string nameB = "{TypeLibrariesTest-B}";
inline const std::string libraryKeys = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\TypeLib\\";
inline const std::string classKeys = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\CLSID\\";
inline const std::string classKeys32 =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\Wow6432Node\\CLSID\\";
using fixture::countKey;
inline const std::string folder = "C:\\TypeLibrariesTest";
inline const std::string there = folder + "\\There.tlb";
inline const std::string gone = folder + "\\Gone.tlb";

class TypeLibrariesFixture : public fixture::ScannerFixture {
 protected:
  TypeLibrariesFixture() {
    removeKeys();
    emptyKey(countKey);
    makeFile(there);
    for (const Category& category : categories()) {
      form.View1.setText(form.View1.add(category.valueName), problemsColumn, "before");
    }
  }
  ~TypeLibrariesFixture() override { removeKeys(); }

  static void removeKeys() {
    for (const std::string& root : {libraryKeys, classKeys, classKeys32}) {
      removeKey(root + nameA);
      removeKey(root + nameB);
    }
  }

  // The findings of the test's own keys: the system has libraries, too.
  std::vector<Texts> findings() {
    std::vector<Texts> own;
    for (std::size_t row = 1; row <= form.View2.count(); ++row) {
      if (contains(form.View2.text(row, subKeyColumn), "TypeLibrariesTest")) {
        own.push_back(fixture::findingOf(form, row));
      }
    }
    return own;
  }

  Texts cells() {
    Texts texts;
    for (std::size_t row = 1; row <= form.View1.count(); ++row) {
      texts.push_back(form.View1.text(row, problemsColumn));
    }
    return texts;
  }

  bool isOpenToUser(const std::string& key) {
    return std::ranges::count(accessOfKey(key), user, &fixture::AccessRecord::sid) == 2;
  }

  std::string rowCount() { return decimal(static_cast<std::int64_t>(form.View2.count())); }

  std::vector<BYTE> user = lookUpSid(userName());
};

}  // namespace zelvreg::typeLibraries

#endif
