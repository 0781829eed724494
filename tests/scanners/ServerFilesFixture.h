// What the tests of the scanners of server files share: the four places with classes of their own.
#ifndef ZELVREG_TESTS_SCANNERS_SERVER_FILES_FIXTURE_H
#define ZELVREG_TESTS_SCANNERS_SERVER_FILES_FIXTURE_H

#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scanners/ScannerFixture.h"
#include "scanners/ServerFiles.h"
#include "text/Numbers.h"
#include "text/Text.h"

namespace zelvreg::serverFiles {

using fixture::Texts;

inline const std::string classA = "{ServerFilesTest-A}";
inline const std::string classB = "{ServerFilesTest-B}";
// Before all other users.
inline const std::string usersHive = "!ServerFilesTest-1_Classes";
inline const std::string laterUsersHive = "!ServerFilesTest-2_Classes";
inline const std::string machineClasses = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes";
inline const std::string userClasses = "HKEY_CURRENT_USER\\Software\\Classes";
using fixture::countKey;
inline const std::string there = "C:\\ServerFilesTest\\There.dll";
inline const std::string gone = "C:\\ServerFilesTest\\Gone.dll";
inline const std::string goneResolved = "c:\\serverfilestest\\gone.dll";

struct Place {
  std::string name;
  void (*scan)(Form42& form);
  std::string classesRoot;  // where its classes are made
  std::size_t row;
  std::string caption;
  std::string rootName;
  std::string keyPrefix;  // of a class in a finding
  std::string kindCode;
  std::string iconKey;
};

inline const Place ofClassesRoot{"ClassesRoot",
                                 cln7,
                                 machineClasses,
                                 7,
                                 "Invalid ClassId Configuration",
                                 "HKEY_CLASSES_ROOT",
                                 "CLSID\\",
                                 "8",
                                 "g"};
inline const Place ofCurrentUser{"CurrentUser",
                                 cln8,
                                 userClasses,
                                 8,
                                 "Current user settings",
                                 "HKEY_CURRENT_USER",
                                 "SOFTWARE\\Classes\\CLSID\\",
                                 "11",
                                 "h"};
inline const Place ofUsers{"Users",
                           cln9,
                           "HKEY_USERS\\" + usersHive,
                           9,
                           "Global user settings",
                           "HKEY_USERS",
                           usersHive + "\\CLSID\\",
                           "12",
                           "i"};
inline const Place ofMachine{"Machine",
                             cln10,
                             machineClasses,
                             10,
                             "Computer settings",
                             "HKEY_LOCAL_MACHINE",
                             "SOFTWARE\\Classes\\CLSID\\",
                             "13",
                             "j"};

class ServerFilesFixture : public fixture::ScannerFixture {
 protected:
  ServerFilesFixture() {
    removeClasses();
    emptyKey(countKey);
    makeFile(there);
    for (const Category& category : categories()) {
      form.View1.setText(form.View1.add(category.valueName), problemsColumn, "before");
    }
  }
  ~ServerFilesFixture() override { removeClasses(); }

  static void removeClasses() {
    for (const std::string& root : {machineClasses, userClasses}) {
      for (const std::string& name : {classA, classB}) {
        removeKey(root + "\\CLSID\\" + name);
        removeKey(root + "\\Wow6432Node\\CLSID\\" + name);
      }
    }
    removeKey("HKEY_USERS\\" + usersHive);
    removeKey("HKEY_USERS\\" + laterUsersHive);
  }

  static std::string serverOf(const Place& place, const std::string& name) {
    return place.classesRoot + "\\CLSID\\" + name + "\\InprocServer32";
  }

  static void serve(const Place& place, const std::string& name, const std::string& server) {
    setText(serverOf(place, name), "", server);
  }

  static Texts finding(const Place& place, const std::string& name, const std::string& path) {
    return {path,
            "",
            place.kindCode,
            place.rootName,
            place.keyPrefix + name + "\\InprocServer32",
            place.iconKey};
  }

  // The findings of the test's own classes: the system has classes, too.
  std::vector<Texts> findings() {
    std::vector<Texts> own;
    for (std::size_t row = 1; row <= form.View2.count(); ++row) {
      if (contains(form.View2.text(row, subKeyColumn), "ServerFilesTest")) {
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

  std::string rowCount() { return decimal(static_cast<std::int64_t>(form.View2.count())); }
};

}  // namespace zelvreg::serverFiles

#endif
