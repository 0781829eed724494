// A computer on which none of the places that Command5 looks at holds anything, but for the keys of
// Software that the system itself has there.
#ifndef ZELVREG_TESTS_SCANNERS_APPLICATION_PATHS_FIXTURE_H
#define ZELVREG_TESTS_SCANNERS_APPLICATION_PATHS_FIXTURE_H

#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scanners/ApplicationPaths.h"
#include "scanners/GrantedKeys.h"
#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg::fixture {

using Rows = std::vector<std::vector<std::string>>;
using Texts = std::vector<std::string>;

class ApplicationPathsFixture : public ComputerFixture {
 protected:
  explicit ApplicationPathsFixture(int bits = 64) : ComputerFixture(bits) {
    emptyKey(appPaths + "\\Probe");
    if (hasKey(appPaths32 + "\\Probe")) {
      removeLinkTo32BitList();
    }
    for (const std::string& key : {appPaths, appPaths32, store, layers, countKey}) {
      emptyKey(key);
    }
    for (const std::string& key : {ntAppPaths, ntAppPaths32, own, own32, ownOfUser}) {
      removeKey(key);
    }
    makeFile(there);
    makeFolder(folder);
    form.View1.add("fonts");
    form.View1.add("dlls");
    form.View1.add("application paths");
  }

  // Windows shows one list of application paths in both views, Wine by a link from the 32-bit one.
  // Here each view has a list of its own.
  static void removeLinkTo32BitList() {
    constexpr DWORD openTheLinkItself = 8;
    HKEY link = nullptr;
    RegOpenKeyExW(
        HKEY_LOCAL_MACHINE,
        Wide("SOFTWARE\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\App Paths").get(),
        openTheLinkItself, KEY_ALL_ACCESS | KEY_WOW64_64KEY, &link);
    RegDeleteKeyW(link, Wide("").get());
    RegCloseKey(link);
  }

  // The findings in places that the tests fill.
  [[nodiscard]] Rows findings() const {
    Rows rows;
    for (std::size_t row = 1; row <= form.View2.count(); ++row) {
      if (isOfTests(lowerCase(form.View2.text(row, subKeyColumn)))) {
        rows.push_back(findingOf(form, row));
      }
    }
    return rows;
  }
  static bool isOfTests(const std::string& subKey) {
    return contains(subKey, "app paths") || contains(subKey, "appcompatflags") ||
           contains(subKey, "applicationpathstest") || subKey.ends_with('\\');
  }

  [[nodiscard]] std::string shownCount() const { return form.View1.text(3, problemsColumn); }

  static bool isGranted(const std::string& key) { return namesUser(accessOfKey(key), userName()); }

  static Texts inAppPaths(const std::string& location, const std::string& name,
                          const std::string& subKey) {
    return {location, name, "3", "HKEY_LOCAL_MACHINE", subKey, "c"};
  }
  static Texts named(const std::string& name, const std::string& root, const std::string& subKey) {
    return {name, name, "3", root, subKey, "c"};
  }

  const std::string machine = "HKEY_LOCAL_MACHINE";
  const std::string user = "HKEY_CURRENT_USER";

  const std::string appPaths =
      machine + "\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths";
  const std::string ntAppPaths =
      machine + "\\SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\App Paths";
  const std::string appPaths32 =
      machine + "\\SOFTWARE\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\App Paths";
  const std::string ntAppPaths32 =
      machine + "\\SOFTWARE\\Wow6432Node\\Microsoft\\Windows NT\\CurrentVersion\\App Paths";
  const std::string compatibility =
      user + "\\Software\\Microsoft\\Windows NT\\CurrentVersion\\AppCompatFlags";
  const std::string store = compatibility + "\\Compatibility Assistant\\Store";
  const std::string layers = compatibility + "\\Layers";
  const std::string own = machine + "\\SOFTWARE\\ApplicationPathsTest";
  const std::string own32 = machine + "\\SOFTWARE\\Wow6432Node\\ApplicationPathsTest";
  const std::string ownOfUser = user + "\\Software\\ApplicationPathsTest";
  const std::string countKey =
      machine + "\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\real";

  // The spellings under which findings are reported.
  const std::string appPathsReported = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths";
  const std::string ntAppPathsReported =
      "SOFTWARE\\Microsoft\\Windows nt\\CurrentVersion\\App Paths";
  const std::string appPaths32Reported =
      "SOFTWARE\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\App Paths";
  const std::string storeReported =
      "Software\\Microsoft\\Windows NT\\CurrentVersion\\AppCompatFlags\\Compatibility Assistant\\"
      "Store";
  const std::string layersReported =
      "Software\\Microsoft\\Windows NT\\CurrentVersion\\AppCompatFlags\\Layers";
  const std::string ownReported = "Software\\ApplicationPathsTest";
  const std::string own32Reported = "Software\\Wow6432Node\\ApplicationPathsTest";

  const std::string folder = "C:\\ApplicationPathsTest\\Folder";
  const std::string there = "C:\\ApplicationPathsTest\\There.exe";
  const std::string gone = "C:\\ApplicationPathsTest\\Gone.exe";
  // As a 32-bit process on a 64-bit system resolves it.
  const std::string goneResolved = "c:\\applicationpathstest\\gone.exe";
};

}  // namespace zelvreg::fixture

#endif
