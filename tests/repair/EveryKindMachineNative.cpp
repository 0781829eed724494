// Only the emulated computer can be created from a folder.
#include "repair/EveryKindMachine.h"

#include "form/Form42.h"
#include "shell/StartUp.h"
#include "support/FaultSweep.h"
#include "support/SourceFolder.h"

namespace zelvreg::fixture {
namespace {

// Behind the demo machine's own registry. A list of help files ends with one that is never looked
// at, and the three walks over them write their fields to the same rows: what the first finds must
// outnumber what the second finds, and so on, for all three kinds to stay.
constexpr const char* moreKeys = R"(
[-HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\HTML Help]

[HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\HTML Help]
"a.chm"="C:\\Windows\\Help\\pre"
"b.chm"="C:\\Windows\\Help\\pre"
"c.chm"="C:\\Windows\\Help\\pre"
"harbour.chm"="C:\\Program Files (x86)\\Harbour Mail"
"unseen.chm"="C:\\Windows\\Help\\"

[HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\MMC\SnapIns\FX:{5B0E52C4-0B61-4B8E-8C1B-6A2D9E1F0A00}]
"LinkedHelpTopics"="C:\\Windows\\Help\\gone.chm"

[HKEY_LOCAL_MACHINE\SOFTWARE\Classes\CLSID\{00000000-0000-0000-0000-000000000001}\InprocServer32]
@=""

[HKEY_LOCAL_MACHINE\SOFTWARE\Classes\CLSID\{00000000-0000-0000-0000-000000000002}\LocalServer32]
@="C:\\Gone\\server.exe"

[HKEY_LOCAL_MACHINE\SOFTWARE\Classes\CLSID\{00000000-0000-0000-0000-000000000003}\ToolboxBitmap32]
@="C:\\Gone\\bitmap.exe"

[HKEY_LOCAL_MACHINE\SOFTWARE\Classes\TypeLib\{00000000-0000-0000-0000-000000000004}\1.0\0\win32]
@="C:\\Gone\\library.tlb"

[HKEY_LOCAL_MACHINE\SOFTWARE\Wow6432Node\zelvane\Zelvane Tuner Deluxe\regscan]
"saveundo"="1"

[HKEY_LOCAL_MACHINE\SOFTWARE\Wow6432Node\zelvane\Zelvane Tuner Deluxe\statics\regscan]
"count"="40"
)";

constexpr const char* programFolderName = "C/Program Files (x86)/zelvreg";

// So that a run reads files too.
constexpr const char* language = "[Form42]\r\na1=\"Fonts\"\r\nLabel10=\"Invalid entries:\"\r\n";
constexpr const char* exclusions = "HKEY_USERS\\Software\\Nothing\r\n";

}  // namespace

EveryKindMachine::EveryKindMachine() : home(folderInMemory()) {
  std::filesystem::copy(
      sourceFolder() + "/demo/machine", home.path(),
      std::filesystem::copy_options::recursive | std::filesystem::copy_options::overwrite_existing);
  home.write("registry.reg", home.read("registry.reg") + moreKeys);
  home.write("machine.ini", home.read("machine.ini") + "now=2026-01-31T13:45:06\n");
  for (const char* name : {"a", "b", "c"}) {
    home.write(std::string("C/Windows/Help/pre") + name + ".chm", "");
  }
  restart();
}

machine::Machine& EveryKindMachine::restart() {
  started.reset();
  std::filesystem::remove_all(programFolder());
  home.write(std::string(programFolderName) + "/lang/zelvreg-english.lang", language);
  home.write(std::string(programFolderName) + "/exregscan.txt", exclusions);
  started.emplace(home.path());
  return *started->machine;
}

std::filesystem::path EveryKindMachine::programFolder() const {
  return home.path() / programFolderName;
}

void scanAllRows(Form42& form) {
  Form_Load(form);
  for (std::size_t row = 1; row <= form.View1.count(); ++row) {
    form.View1.setChecked(row, true);
  }
  form.cmd_start.click();
}

void scanWhatNoRowScans(Form42& form) {
  for (Button* scanner : {&form.Command14, &form.Command16, &form.Command18, &form.Command19}) {
    scanner->click();
  }
  form.chameleonButton16.click();
}

}  // namespace zelvreg::fixture
