// A computer whose lists of help files and console snap-ins are empty.
//
// The values are created in the order of their names.
#ifndef ZELVREG_TESTS_SCANNERS_HELP_FILES_FIXTURE_H
#define ZELVREG_TESTS_SCANNERS_HELP_FILES_FIXTURE_H

#include <functional>

#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scanners/HelpFiles.h"
#include "scanners/ScannerFixture.h"
#include "text/Wide.h"

namespace zelvreg::helpFiles {

using fixture::Texts;

inline const std::string helpKey = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\Help";
inline const std::string helpNtKey = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows NT\\Help";
inline const std::string htmlKey = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\HTML Help";
inline const std::string htmlNtKey =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows NT\\HTML Help";
inline const std::string snapInsKey = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\MMC\\SnapIns";
using fixture::countKey;
inline const std::string folder = "C:\\HelpFilesTest";
// Without a backslash after it, a file whose name begins with what the folder ends in is there.
inline const std::string prefixFolder = folder + "\\pre";
// Holds the files that are there under their folder alone.
inline const std::string wholeFolder = folder + "\\whole";

class HelpFilesFixture : public fixture::ScannerFixture {
 protected:
  explicit HelpFilesFixture(int bits = 64) : fixture::ScannerFixture(bits) {
    for (const std::string& key : {helpKey, helpNtKey, htmlKey, htmlNtKey, snapInsKey, countKey}) {
      emptyKey(key);
    }
    makeFile(folder + "\\there.chm");
    for (const char* category : {"fonts", "dlls", "paths", "help"}) {
      form.View1.add(category);
    }
  }

  static Texts helpFinding(const std::string& location, const std::string& name) {
    return {location, name, "4", "HKEY_LOCAL_MACHINE", "SOFTWARE\\Microsoft\\Windows\\Help", ""};
  }
  static Texts htmlFinding(const std::string& location, const std::string& name) {
    return {location, name, "5", "HKEY_LOCAL_MACHINE", "SOFTWARE\\Microsoft\\Windows\\HTML Help",
            "d"};
  }
  static Texts joinedFinding(const std::string& location, const std::string& name) {
    return {location, name, "56", "HKEY_LOCAL_MACHINE", "SOFTWARE\\Microsoft\\Windows\\HTML Help",
            "d"};
  }
  static Texts snapInFinding(const std::string& location, const std::string& name) {
    return {
        location, name, "55", "HKEY_LOCAL_MACHINE", "SOFTWARE\\Microsoft\\MMC\\SnapIns\\" + name,
        "d"};
  }
  static Texts locationAlone(const std::string& location) { return {location, "", "", "", "", ""}; }

  // An entry that only the second section reports: the joined name is there, the file is not.
  static void listHtmlFinding(const std::string& name) {
    makeFile(prefixFolder + name);
    setText(htmlKey, name, prefixFolder);
  }
  // An entry that only the fourth section reports: the file is there, the joined name is not.
  static void listJoinedFinding(const std::string& name) {
    makeFile(wholeFolder + "\\" + name);
    setText(htmlKey, name, wholeFolder);
  }

  static void makeReadOnly(const std::string& path) {
    makeFile(path);
    SetFileAttributesW(Wide(path).get(), FILE_ATTRIBUTE_READONLY);
  }
  static bool isReadOnly(const std::string& path) {
    return (GetFileAttributesW(Wide(path).get()) & FILE_ATTRIBUTE_READONLY) != 0;
  }

  Texts noteWhileScanning(const std::function<std::string()>& note) {
    return noteDuring(Command7, note);
  }

  std::string cell() const { return form.View1.text(4, problemsColumn); }
};

}  // namespace zelvreg::helpFiles

#endif
