#include "WalkTable.h"

#include <array>
#include <string>

namespace zelvreg::bench {
namespace {

constexpr const char16_t* components = u"SOFTWARE\\Classes\\CLSID";
constexpr const char16_t* sharedDlls = u"Software\\Microsoft\\Windows\\CurrentVersion\\SharedDlls";
constexpr const char16_t* htmlHelp = u"SOFTWARE\\Microsoft\\Windows\\HTML Help";
constexpr const char16_t* openCommand = u"\\shell\\open\\command";
constexpr const char16_t* editCommand = u"\\shell\\edit\\command";
constexpr const char16_t* serverKey = u"\\InprocServer32";

using Loops = std::vector<Loop>;

Loop values(HKEY root, const char16_t* key, Names names) {
  return {root, key, At::Key, u"", nullptr, names};
}

Loop valuesOfSubkeys(HKEY root, const char16_t* key, Names names, const char16_t* below = u"") {
  return {root, key, At::Subkeys, below, nullptr, names};
}

Loop valueOfSubkeys(HKEY root, const char16_t* key, const char16_t* below, const char16_t* value,
                    Names names) {
  return {root, key, At::Subkeys, below, value, names};
}

Loops applicationPaths() {
  constexpr const char16_t* native = u"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths";
  constexpr const char16_t* wow =
      u"SOFTWARE\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\App Paths";
  const HKEY machine = HKEY_LOCAL_MACHINE;
  const HKEY user = HKEY_CURRENT_USER;
  return {
      valueOfSubkeys(machine, native, u"", u"", Names::ByPath),
      valuesOfSubkeys(machine, native, Names::Nothing),
      valueOfSubkeys(machine, wow, u"", u"", Names::ByPath),
      valuesOfSubkeys(machine, wow, Names::Nothing),
      values(user,
             u"Software\\Microsoft\\Windows NT\\CurrentVersion\\AppCompatFlags\\"
             u"Compatibility Assistant\\Store",
             Names::ByName),
      values(user, u"Software\\Microsoft\\Windows NT\\CurrentVersion\\AppCompatFlags\\Layers",
             Names::ByName),
      valuesOfSubkeys(machine, u"Software", Names::ByPathOrFolder),
      valuesOfSubkeys(machine, u"Software\\Wow6432Node", Names::ByPathOrFolder),
      valuesOfSubkeys(user, u"Software", Names::ByPathOrFolder),
  };
}

Loops fileClasses() {
  const HKEY classes = HKEY_CLASSES_ROOT;
  return {
      valueOfSubkeys(classes, u"", openCommand, u"", Names::ByPath),
      valueOfSubkeys(classes, u"", editCommand, u"", Names::Nothing),
      valueOfSubkeys(classes, u"MIME\\Database\\Content Type", u"", u"Extension", Names::Nothing),
  };
}

Loops componentClasses() {
  const HKEY classes = HKEY_CLASSES_ROOT;
  return {
      {classes, u"TypeLib", At::FirstOfSubkeys, u"\\HELPDIR", u"", Names::ByPathOrFolder},
      valueOfSubkeys(classes, u"CLSID", serverKey, u"", Names::ByPath),
      valueOfSubkeys(classes, u"CLSID", u"\\TypeLib", u"", Names::ByLibrary),
  };
}

Loops recentLists() {
  static const std::u16string above = u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\";
  static const std::array<std::u16string, 8> keys{above + u"RecentDocs",
                                                  above + u"StreamMRU",
                                                  above + u"TypedPaths",
                                                  above + u"WordWheelQuery",
                                                  above + u"RunMRU",
                                                  above + u"ComDlg32\\OpenSavePidlMRU",
                                                  above + u"ComDlg32\\LastVisitedPidlMRULegacy",
                                                  above + u"ComDlg32\\LastVisitedPidlMRU"};
  Loops loops;
  for (const std::u16string& key : keys) {
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
      {values(machine, u"Software\\Microsoft\\Windows NT\\CurrentVersion\\Fonts", Names::ByFont)},
      // The names of the 64-bit key are tested in both passes.
      {values(machine, sharedDlls, Names::ByNameMade),
       values(machine, sharedDlls, Names::ByNameMade),
       values(machine, u"Software\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\SharedDlls",
              Names::ByNameMade)},
      applicationPaths(),
      {values(machine, u"SOFTWARE\\Microsoft\\Windows\\Help", Names::ByNameInFolder),
       values(machine, htmlHelp, Names::ByNameInFolder),
       valueOfSubkeys(machine, u"SOFTWARE\\Microsoft\\MMC\\SnapIns", u"", u"HelpTopic",
                      Names::ByPath),
       values(machine, htmlHelp, Names::ByNameInFolder)},
      {valueOfSubkeys(classes, u"", u"\\defaulticon", u"", Names::ByPath)},
      fileClasses(),
      componentClasses(),
      {valueOfSubkeys(user, components, serverKey, u"", Names::ByPath)},
      {valueOfSubkeys(user, components, serverKey, u"", Names::ByPath)},
      {valueOfSubkeys(machine, components, serverKey, u"", Names::ByPath)},
      {values(machine,
              u"SYSTEM\\CurrentControlSet\\services\\SharedAccess\\Parameters\\FirewallPolicy\\"
              u"FirewallRules",
              Names::ByRule)},
      {valuesOfSubkeys(user, u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\FileExts",
                       Names::Nothing, u"\\OpenWithProgids")},
      {valuesOfSubkeys(machine, u"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall",
                       Names::ByPathOrFolder),
       valuesOfSubkeys(user, u"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall",
                       Names::ByPathOrFolder),
       valuesOfSubkeys(machine,
                       u"Software\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\Uninstall",
                       Names::ByPathOrFolder)},
      {values(machine, u"Software\\Microsoft\\Windows\\CurrentVersion\\Run", Names::ByPath),
       values(machine, u"Software\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\Run",
              Names::ByPath),
       values(user, u"Software\\Microsoft\\Windows\\CurrentVersion\\Run", Names::ByPath),
       values(user, u"Software\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\Run",
              Names::ByPath)},
      recentLists(),
      {values(user,
              u"Software\\Classes\\Local Settings\\Software\\Microsoft\\Windows\\Shell\\MuiCache",
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
