// Only the emulated computer can be created from nothing.
#include "repair/RandomMachine.h"

#include <array>
#include <cstdlib>

#include "support/Sanitizer.h"
#include "text/Text.h"

namespace zelvreg::fixture {
namespace {

struct Known {
  const char* text;
  Fate fate;
};

constexpr std::array texts{
    Known{R"(C:\Gone\gone.exe)", Fate::Dead},
    Known{R"("C:\Gone\gone.dll" /x)", Fate::Dead},
    Known{R"(C:\Gone\folder)", Fate::Dead},
    Known{R"(C:\Real\app.exe)", Fate::InUse},
    Known{R"("C:\Real\app.exe" "%1")", Fate::InUse},
    Known{R"(C:\Real\app.exe,2)", Fate::InUse},
    Known{R"(C:\Real)", Fate::InUse},
    Known{R"(E:\away\x.exe)", Fate::InUse},
    Known{R"(\\server\share\x.exe)", Fate::InUse},
    Known{R"(%USERPROFILE%\gone.exe)", Fate::InUse},
    Known{R"(notepad.exe)", Fate::InUse},
    Known{R"(a.doc\shell)", Fate::InUse},
    Known{R"({00000000-0000-0000-0000-000000000001})", Fate::InUse},
    Known{R"(Both)", Fate::Describes},
    Known{R"(A name)", Fate::Describes},
    Known{"", Fate::Describes},
};

constexpr std::array classNames{"A.Doc", "B.Doc", ".a", "Applications"};
constexpr std::array classIds{"{00000000-0000-0000-0000-000000000001}",
                              "{00000000-0000-0000-0000-000000000002}"};
constexpr std::array recordNames{"App1", "App2", "app3.exe"};
constexpr std::array extensionNames{".a", ".b", ".c", ".d"};
constexpr std::array valueNames{"a", "b", "Path", "ThreadingModel"};

const std::string hklm = R"(HKEY_LOCAL_MACHINE\)";
const std::string hkcu = R"(HKEY_CURRENT_USER\)";

}  // namespace

std::uint32_t randomMachineCount() {
  constexpr std::uint32_t usual = 150;
  // Sanitizers make each run ten times as long.
  constexpr std::uint32_t slowness = areAddressesChecked ? 10 : 1;
  const char* asked = std::getenv("ZELVREG_RANDOM_MACHINES");
  return asked == nullptr ? usual
                          : static_cast<std::uint32_t>(std::strtoul(asked, nullptr, 10)) / slowness;
}

RandomMachine::RandomMachine(MachineBuilder& builder, std::uint32_t seed)
    : machine(builder), random(seed) {
  for (const auto& [text, fate] : texts) {
    fates[text] = fate;
  }
  machine.file(R"(C:\Real\app.exe)", "x");
  machine.file(R"(C:\Windows\System32\notepad.exe)", "x");
  addKey(hklm + R"(SOFTWARE\Microsoft\Windows NT\CurrentVersion)",
         valueLine("SystemRoot", R"(C:\Windows)"));
  fates[R"(C:\Windows)"] = Fate::InUse;
  addClasses(hklm + R"(SOFTWARE\Classes)");
  addClasses(hkcu + R"(Software\Classes)");
  addClasses(std::string(R"(HKEY_USERS\)") + otherUser + "_Classes");
  addSoftware(hklm + "SOFTWARE");
  addSoftware(hklm + R"(SOFTWARE\Wow6432Node)");
  addSoftware(hkcu + "Software");
  addExtensions();
  addHelp();
  addFirewall();
}

bool RandomMachine::chance(int percent) { return static_cast<int>(random() % 100) < percent; }

std::string RandomMachine::anyText() { return texts[random() % texts.size()].text; }

std::string RandomMachine::valueLine(const std::string& name, const std::string& text) {
  const auto escaped = [](const std::string& plain) {
    return replaceAll(replaceAll(plain, "\\", "\\\\"), "\"", "\\\"");
  };
  return (name.empty() ? "@" : "\"" + escaped(name) + "\"") + "=\"" + escaped(text) + "\"\n";
}

void RandomMachine::addKey(const std::string& path, const std::string& lines) {
  machine.key(path, lines);
}

void RandomMachine::addRecord(const std::string& path, int percent) {
  if (!chance(percent)) {
    return;
  }
  std::string lines = chance(75) ? valueLine("", anyText()) : "";
  for (const char* name : valueNames) {
    lines += chance(12) ? valueLine(name, anyText()) : "";
  }
  addKey(path, lines);
  if (chance(15)) {
    addKey(path + R"(\Below)", chance(60) ? valueLine("x", anyText()) : "");
  }
}

void RandomMachine::addValues(const std::string& path, int percent, const std::string& ending) {
  std::string lines;
  for (const char* name : valueNames) {
    lines += chance(percent) ? valueLine(name + ending, anyText()) : "";
  }
  addKey(path, lines);
}

void RandomMachine::addClasses(const std::string& classes) {
  for (const char* name : classNames) {
    const std::string key = classes + "\\" + name;
    addRecord(key + R"(\DefaultIcon)", 40);
    addRecord(key + R"(\shell\open\command)", 40);
    addRecord(key + R"(\shell\edit\command)", 20);
    addRecord(key + R"(\shell\HELPDIR)", 20);
  }
  for (const char* view : {R"(\)", R"(\Wow6432Node\)"}) {
    for (const char* id : classIds) {
      const std::string key = classes + view + R"(CLSID\)" + id;
      addRecord(key + R"(\InprocServer32)", 50);
      addRecord(key + R"(\TypeLib)", 40);
    }
  }
  for (const char* id : classIds) {
    addRecord(classes + R"(\TypeLib\)" + id + R"(\1.0\HELPDIR)", 50);
  }
  if (chance(50)) {
    addKey(classes + R"(\MIME\Database\Content Type\a/b)", valueLine("Extension", ".none"));
    fates[".none"] = Fate::Dead;
  }
}

void RandomMachine::addSoftware(const std::string& root) {
  const std::string windows = root + R"(\Microsoft\Windows\CurrentVersion\)";
  for (const char* name : recordNames) {
    addRecord(windows + R"(Uninstall\)" + name, 50);
    addRecord(windows + R"(App Paths\)" + name, 50);
    addRecord(root + R"(\Vendor )" + name, 40);
  }
  addValues(windows + "Run", 50, "");
  addValues(windows + R"(App Paths)", 20, "");
  addValues(windows + "SharedDlls", 30, R"(:\gone.dll)");
  addValues(windows + "Fonts", 30, "");
  addValues(root + R"(\Microsoft\Windows NT\CurrentVersion\Fonts)", 40, "");
}

void RandomMachine::addExtensions() {
  const std::string list = hkcu + R"(Software\Microsoft\Windows\CurrentVersion\Explorer\FileExts\)";
  for (const char* name : extensionNames) {
    const std::string key = list + name;
    addKey(key, chance(20) ? valueLine("Application", anyText()) : "");
    if (chance(60)) {
      addKey(key + R"(\OpenWithProgids)", chance(30) ? valueLine("A.Doc", "") : "");
    }
    if (chance(40)) {
      addKey(key + R"(\OpenWithList)", chance(60) ? valueLine("a", anyText()) : "");
    }
    if (chance(30)) {
      addKey(key + R"(\UserChoice)", valueLine("ProgId", anyText()));
    }
  }
}

void RandomMachine::addHelp() {
  for (const char* system : {"Windows", "Windows NT"}) {
    addValues(hklm + R"(SOFTWARE\Microsoft\)" + system + R"(\Help)", 60, ".hlp");
    addValues(hklm + R"(SOFTWARE\Microsoft\)" + system + R"(\HTML Help)", 60, ".chm");
  }
  for (const char* id : classIds) {
    std::string lines = chance(60) ? valueLine("HelpTopic", anyText()) : "";
    lines += chance(60) ? valueLine("LinkedHelpTopics", anyText()) : "";
    addKey(hklm + R"(SOFTWARE\Microsoft\MMC\SnapIns\)" + id, lines);
  }
}

void RandomMachine::addFirewall() {
  constexpr std::array rules{
      Known{R"(v2.30|Action=Allow|App=C:\Gone\gone.exe|Name=x|)", Fate::Dead},
      Known{R"(v2.30|Action=Allow|App=C:\Real\app.exe|Name=x|)", Fate::InUse},
      Known{R"(v2.30 without an end)", Fate::InUse}};
  std::string lines;
  for (const char* name : {"1", "2", "3", "4", "a"}) {
    const Known& rule = rules[random() % rules.size()];
    lines += valueLine(name, rule.text);
    fates[rule.text] = rule.fate;
  }
  addKey(hklm + R"(SYSTEM\CurrentControlSet\Services\SharedAccess\Parameters\FirewallPolicy)"
                R"(\FirewallRules)",
         lines);
}

}  // namespace zelvreg::fixture
