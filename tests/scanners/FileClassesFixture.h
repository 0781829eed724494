// What the tests of the scanner of file classes share: classes of their own, and no media types.
#ifndef ZELVREG_TESTS_SCANNERS_FILE_CLASSES_FIXTURE_H
#define ZELVREG_TESTS_SCANNERS_FILE_CLASSES_FIXTURE_H

#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scanners/FileClasses.h"
#include "scanners/ScannerFixture.h"
#include "text/Numbers.h"

namespace zelvreg::fileClasses {

using fixture::Texts;

inline const std::string classesRoot = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\";
// Stands before all other classes.
inline const std::string className = "!FileClassesTest";
inline const std::string openKey = "\\shell\\open\\command";
inline const std::string editKey = "\\shell\\edit\\command";
inline const std::string mediaTypes = "MIME\\Database\\Content Type";
using fixture::countKey;
inline const std::string gone = "C:\\FileClassesTest\\Gone.exe";
inline const std::string there = "C:\\FileClassesTest\\There.exe";

class FileClassesFixture : public fixture::ScannerFixture {
 protected:
  explicit FileClassesFixture(int bits = 64) : fixture::ScannerFixture(bits) {
    removeClasses();
    emptyKey(classesRoot + mediaTypes);
    emptyKey(countKey);
    makeFile(there);
    for (const char* category : {"fonts", "dlls", "paths", "help", "icons", "classes"}) {
      form.View1.add(category);
    }
  }
  ~FileClassesFixture() override { removeClasses(); }

  static void removeClasses() {
    for (const char* suffix : {"", "1", "2", "3"}) {
      removeKey(classesRoot + className + suffix);
    }
  }

  static void setCommand(const std::string& path, const std::string& command,
                         const std::string& valueName = "") {
    setText(classesRoot + path, valueName, command);
  }
  static void setExtension(const std::string& mediaType, const std::string& extension) {
    setText(classesRoot + mediaTypes + "\\" + mediaType, "Extension", extension);
  }

  static Texts programFinding(const std::string& name, const std::string& program,
                              const std::string& command = openKey) {
    return {name, program, "7", "HKEY_CLASSES_ROOT", name + command, "f"};
  }
  static Texts emptyFinding(const std::string& name, const std::string& command) {
    return {name, "", "771", "HKEY_CLASSES_ROOT", name + command, "f"};
  }
  static Texts mediaFinding(const std::string& mediaType, const std::string& extension) {
    return {extension,
            "Extension",
            "771",
            "HKEY_CLASSES_ROOT",
            "MIME\\Database\\Content Type\\" + mediaType,
            "f"};
  }

  // Those of the classes and media types of the test; a real computer has other classes.
  std::vector<Texts> findings() const {
    std::vector<Texts> rows;
    for (std::size_t row = 1; row <= form.View2.count(); ++row) {
      const std::string& subKey = form.View2.text(row, subKeyColumn);
      if (subKey.starts_with(className) || subKey.starts_with(mediaTypes)) {
        rows.push_back(fixture::findingOf(form, row));
      }
    }
    return rows;
  }

  std::string cell() const { return form.View1.text(6, problemsColumn); }
  static std::string keptTotal() { return storedText(countKey, "reg-count"); }
};

}  // namespace zelvreg::fileClasses

#endif
