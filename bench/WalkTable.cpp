#include "WalkTable.h"

#include <array>
#include <string>

namespace zelvreg::bench {
namespace {

constexpr const char* components = "SOFTWARE\\Classes\\CLSID";
constexpr const char* sharedDlls = "Software\\Microsoft\\Windows\\CurrentVersion\\SharedDlls";
constexpr const char* htmlHelp = "SOFTWARE\\Microsoft\\Windows\\HTML Help";
constexpr const char* openCommand = "\\shell\\open\\command";
constexpr const char* editCommand = "\\shell\\edit\\command";
constexpr const char* serverKey = "\\InprocServer32";

using Loops = std::vector<Loop>;

Loop values(HKEY root, const char* key, Names names) {
  return {root, key, At::Key, "", nullptr, names};
}

Loop valuesOfSubkeys(HKEY root, const char* key, Names names, const char* below = "") {
  return {root, key, At::Subkeys, below, nullptr, names};
}

Loop valueOfSubkeys(HKEY root, const char* key, const char* below, const char* value, Names names) {
  return {root, key, At::Subkeys, below, value, names};
}

Loops applicationPaths() {
  constexpr const char* native = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths";
  constexpr const char* wow =
      "SOFTWARE\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\App Paths";
  const HKEY machine = HKEY_LOCAL_MACHINE;
  const HKEY user = HKEY_CURRENT_USER;
  return {
      valueOfSubkeys(machine, native, "", "", Names::ByPath),
      valuesOfSubkeys(machine, native, Names::Nothing),
      valueOfSubkeys(machine, wow, "", "", Names::ByPath),
      valuesOfSubkeys(machine, wow, Names::Nothing),
      values(user,
             "Software\\Microsoft\\Windows NT\\CurrentVersion\\AppCompatFlags\\"
             "Compatibility Assistant\\Store",
             Names::ByName),
      values(user, "Software\\Microsoft\\Windows NT\\CurrentVersion\\AppCompatFlags\\Layers",
             Names::ByName),
      valuesOfSubkeys(machine, "Software", Names::ByPathOrFolder),
      valuesOfSubkeys(machine, "Software\\Wow6432Node", Names::ByPathOrFolder),
      valuesOfSubkeys(user, "Software", Names::ByPathOrFolder),
  };
}

Loops fileClasses() {
  const HKEY classes = HKEY_CLASSES_ROOT;
  return {
      valueOfSubkeys(classes, "", openCommand, "", Names::ByPath),
      valueOfSubkeys(classes, "", editCommand, "", Names::Nothing),
      valueOfSubkeys(classes, "MIME\\Database\\Content Type", "", "Extension", Names::Nothing),
  };
}

Loops componentClasses() {
  const HKEY classes = HKEY_CLASSES_ROOT;
  return {
      {classes, "TypeLib", At::FirstOfSubkeys, "\\HELPDIR", "", Names::ByPathOrFolder},
      valueOfSubkeys(classes, "CLSID", serverKey, "", Names::ByPath),
      valueOfSubkeys(classes, "CLSID", "\\TypeLib", "", Names::ByLibrary),
  };
}

Loops recentLists() {
  static const std::string above = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\";
  static const std::array<std::string, 8> keys{above + "RecentDocs",
                                               above + "StreamMRU",
                                               above + "TypedPaths",
                                               above + "WordWheelQuery",
                                               above + "RunMRU",
                                               above + "ComDlg32\\OpenSavePidlMRU",
                                               above + "ComDlg32\\LastVisitedPidlMRULegacy",
                                               above + "ComDlg32\\LastVisitedPidlMRU"};
  Loops loops;
  for (const std::string& key : keys) {
    loops.push_back(values(HKEY_CURRENT_USER, key.c_str(), Names::Nothing));
    loops.push_back(valuesOfSubkeys(HKEY_CURRENT_USER, key.c_str(), Names::Nothing));
  }
  return loops;
}

// In the order of the category rows.
std::vector<Loops> makeTable() {
  const HKEY classes = HKEY_CLASSES_ROOT;
  const HKEY machine = HKEY_LOCAL_MACHINE;
  const HKEY user = HKEY_CURRENT_USER;
  return {
      {values(machine, "Software\\Microsoft\\Windows NT\\CurrentVersion\\Fonts", Names::ByFont)},
      // The names of the 64-bit key are tested in both passes.
      {values(machine, sharedDlls, Names::ByNameMade),
       values(machine, sharedDlls, Names::ByNameMade),
       values(machine, "Software\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\SharedDlls",
              Names::ByNameMade)},
      applicationPaths(),
      {values(machine, "SOFTWARE\\Microsoft\\Windows\\Help", Names::ByNameInFolder),
       values(machine, htmlHelp, Names::ByNameInFolder),
       valueOfSubkeys(machine, "SOFTWARE\\Microsoft\\MMC\\SnapIns", "", "HelpTopic", Names::ByPath),
       values(machine, htmlHelp, Names::ByNameInFolder)},
      {valueOfSubkeys(classes, "", "\\defaulticon", "", Names::ByPath)},
      fileClasses(),
      componentClasses(),
      {valueOfSubkeys(user, components, serverKey, "", Names::ByPath)},
      {valueOfSubkeys(user, components, serverKey, "", Names::ByPath)},
      {valueOfSubkeys(machine, components, serverKey, "", Names::ByPath)},
      {values(machine,
              "SYSTEM\\CurrentControlSet\\services\\SharedAccess\\Parameters\\FirewallPolicy\\"
              "FirewallRules",
              Names::ByRule)},
      {valuesOfSubkeys(user, "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\FileExts",
                       Names::Nothing, "\\OpenWithProgids")},
      {valuesOfSubkeys(machine, "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall",
                       Names::ByPathOrFolder),
       valuesOfSubkeys(user, "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall",
                       Names::ByPathOrFolder),
       valuesOfSubkeys(machine,
                       "Software\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\Uninstall",
                       Names::ByPathOrFolder)},
      {values(machine, "Software\\Microsoft\\Windows\\CurrentVersion\\Run", Names::ByPath),
       values(machine, "Software\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\Run",
              Names::ByPath),
       values(user, "Software\\Microsoft\\Windows\\CurrentVersion\\Run", Names::ByPath),
       values(user, "Software\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\Run",
              Names::ByPath)},
      recentLists(),
      {values(user,
              "Software\\Classes\\Local Settings\\Software\\Microsoft\\Windows\\Shell\\MuiCache",
              Names::ByName)},
  };
}

}  // namespace

std::span<const Loop> loopsOf(std::size_t row) {
  static const std::vector<Loops> table = makeTable();
  return row >= 1 && row <= table.size() ? std::span<const Loop>(table[row - 1])
                                         : std::span<const Loop>();
}

}  // namespace zelvreg::bench
