#include "CaseTable.h"

#include <array>

namespace zelvreg::bench {
namespace {

constexpr Truth dead = Truth::Dead;
constexpr Truth alive = Truth::Alive;
constexpr Truth undecidable = Truth::Undecidable;

constexpr std::array paths{
    Case{"variable-program-files", alive, "%ProgramFiles%\\{live}"},
    Case{"variable-program-files", dead, "%ProgramFiles%\\{gone}"},
    Case{"variable-program-w6432", alive, "%ProgramW6432%\\{live}", Fits::Bits64},
    Case{"variable-program-w6432", dead, "%ProgramW6432%\\{lost}", Fits::Bits64},
    Case{"variable-common-x86", alive, "%CommonProgramFiles(x86)%\\Vendor Shared\\{tool}"},
    Case{"variable-common-x86", dead, "%CommonProgramFiles(x86)%\\Vendor Shared\\{notool}"},
    Case{"variable-common", alive, "%CommonProgramFiles%\\Vendor Common\\{tool}", Fits::Bits64},
    Case{"variable-common", alive, "%CommonProgramFiles%\\Vendor Shared\\{tool}", Fits::Bits32},
    Case{"variable-of-profile", alive, "%LOCALAPPDATA%\\Tools\\{tool}", Fits::OfUser},
    Case{"variable-of-profile", dead, "%LOCALAPPDATA%\\Tools\\{notool}", Fits::OfUser},
    Case{"variable-of-user", alive, "%TOOLSOFANN%\\{tool}", Fits::OfUser},
    Case{"variable-of-user", dead, "%TOOLSOFANN%\\{notool}", Fits::OfUser},
    // Of a user's variable that is made of another one, and of two that are made of each other.
    Case{"variable-of-variable", alive, "%NESTEDTOOLS%\\{tool}", Fits::OfUser},
    Case{"variable-of-variable", dead, "%NESTEDTOOLS%\\{notool}", Fits::OfUser},
    Case{"variable-loop", undecidable, "%LOOPONE%\\{tool}", Fits::OfUser},
    Case{"variable-of-windows", alive, "%windir%\\Tools\\{tool}"},
    Case{"variable-of-windows", dead, "%SystemRoot%\\Tools\\{notool}"},
    Case{"variable-of-windows", alive, "%SystemDrive%\\Company Tools\\{tool}"},
    Case{"variable-of-system", alive, "%COMPANYTOOLS%\\{tool}"},
    Case{"variable-of-system", dead, "%COMPANYTOOLS%\\{notool}"},
    Case{"variable-unknown", undecidable, "%NOSUCHPLACE%\\Programs\\{tool}"},
    Case{"variable-unknown", undecidable, "C:\\Programs\\%NOSUCHPLACE%\\{tool}"},
    Case{"device-prefix", alive, "\\\\?\\{P}\\{live}"},
    Case{"device-prefix", dead, "\\\\?\\{P}\\{gone}"},
    Case{"nt-prefix", alive, "\\??\\{P}\\{live}"},
    Case{"nt-prefix", dead, "\\??\\{P}\\{lost}"},
    Case{"system-root", alive, "\\SystemRoot\\Tools\\{tool}"},
    Case{"system-root", dead, "\\SystemRoot\\Tools\\{notool}"},
    Case{"file-url", alive, "file:///{P}\\{live}", Fits::Anywhere, Shape::Url},
    Case{"file-url", dead, "file:///{P}\\{gone}", Fits::Anywhere, Shape::Url},
    Case{"slashes", alive, "{P}\\{live}", Fits::Anywhere, Shape::Slashes},
    Case{"slashes", dead, "{P}\\{lost}", Fits::Anywhere, Shape::Slashes},
    Case{"relative-parts", alive, "{P}\\..\\Windows\\Tools\\{tool}"},
    Case{"relative-parts", dead, "{P}\\..\\Windows\\Tools\\{notool}"},
    Case{"only-syswow64", alive, "C:\\Windows\\System32\\only32\\{tool}", Fits::Bits32},
    Case{"only-syswow64", undecidable, "C:\\Windows\\System32\\only32\\{tool}", Fits::Bits64},
    Case{"only-system32", alive, "C:\\Windows\\System32\\only64\\{tool}", Fits::Bits64},
    Case{"only-system32", undecidable, "C:\\Windows\\SysWOW64\\only64\\{tool}", Fits::Bits64},
    Case{"sysnative", alive, "C:\\Windows\\Sysnative\\only64\\{tool}", Fits::Bits32},
    Case{"sysnative", dead, "C:\\Windows\\Sysnative\\only64\\{notool}", Fits::Bits32},
    Case{"share", undecidable, "\\\\server\\programs\\{tool}"},
    Case{"share", undecidable, "\\\\?\\UNC\\server\\programs\\{tool}"},
    Case{"drive-absent", undecidable, "Q:\\Programs\\{tool}"},
    Case{"drive-absent", undecidable, "r:\\{tool}"},
    Case{"short-name", undecidable, "C:\\PROGRA~1\\VENDOR~1\\{tool}"},
    Case{"long-path", alive, "C:\\Long\\{deep}\\{tool}"},
    Case{"long-path", dead, "C:\\Long\\{deep}\\{notool}"},
    Case{"long-path", dead, "C:\\Longer\\{deep}\\{tool}"},
    Case{"link", alive, "C:\\Links\\Present\\{tool}"},
    Case{"link", dead, "C:\\Links\\Present\\{notool}"},
    Case{"link-broken", undecidable, "C:\\Links\\Broken\\{tool}"},
    Case{"packaged-app", undecidable,
         "C:\\Program Files\\WindowsApps\\Vendor.Tool_1.2.3.0_x64__8wekyb3d8bbwe\\{tool}"},
    Case{"several-scripts", alive, "C:\\Program Files\\Фирма Ελλάς 東京 é 😀\\{tool}"},
    Case{"several-scripts", dead, "C:\\Program Files\\Фирма Ελλάς 東京 é 😀\\{notool}"},
    Case{"several-scripts", dead, "C:\\Programme für Übungen\\Δοκιμή\\試験 😀\\{tool}"},
};

constexpr std::array commands{
    // A quote or a backslash behind the program hides it from a plain cut.
    Case{"arguments", alive, "{P}\\{live} /log \"D:\\log.txt\""},
    Case{"arguments", alive, "{P}\\{live} /log D:\\logs\\a.b.txt"},
    Case{"arguments", dead, "{P}\\{gone} /log D:\\logs\\a.b.txt"},
    Case{"arguments", dead, "{P}\\{lost} /background"},
    Case{"arguments", dead, "\"{P}\\{gone}\" -embedding"},
    Case{"arguments-adjoining", alive, "\"{P}\\{live}\"/log:D:\\logs\\a.b.txt"},
    Case{"arguments-adjoining", undecidable, "{P}\\{live}/log:D:\\logs\\a.b.txt"},
    Case{"arguments-adjoining", dead, "\"{P}\\{gone}\"/background"},
    Case{"extension-missing", alive, "{P}\\{noext}"},
    Case{"extension-missing", alive, "\"{P}\\{noext}\" /background"},
    Case{"extension-missing", alive, "{P}\\{noext} /background"},
    Case{"extension-missing", dead, "C:\\Company Tools\\nosuchtool"},
    Case{"bare-name", alive, "notepad.exe"},
    Case{"bare-name", alive, "notepad /p"},
    Case{"bare-name", dead, "nosuchprogram.exe /p"},
    Case{"bare-name-on-path", alive, "onpath.exe -quiet"},
    Case{"bare-name-of-app-paths", alive, "onapppaths.exe -quiet"},
    Case{"bare-name-only-syswow64", alive, "only32.exe", Fits::Bits32},
    Case{"cmd", alive, "cmd.exe /c start \"\" \"{P}\\{live}\""},
    Case{"cmd", alive, "cmd /c \"\"{P}\\{live}\" /quiet\""},
    Case{"cmd", alive, "%ComSpec% /c start \"title\" /min \"{P}\\{live}\" -x"},
    Case{"cmd", dead, "cmd.exe /c start \"\" \"{P}\\{gone}\""},
    Case{"cmd", dead, "cmd.exe /c {P}\\{lost}"},
    Case{"rundll32", alive, "rundll32.exe shell32.dll,Control_RunDLL"},
    Case{"rundll32", alive, "rundll32.exe C:\\Company Tools\\tool.dll,#1 D:\\logs\\a.b.txt"},
    Case{"rundll32", dead, "rundll32.exe \"C:\\Company Tools\\notool.dll\",Start"},
    Case{"rundll32", dead, "rundll32.exe C:\\Company Tools\\notool.dll,Start"},
    Case{"regsvr32", alive, "regsvr32.exe /s /i:\"user\" \"C:\\Company Tools\\tool.dll\""},
    Case{"regsvr32", dead, "regsvr32.exe /s \"C:\\Company Tools\\notool.dll\""},
    Case{"regsvr32", dead, "regsvr32 /s C:\\Nowhere\\notool.dll"},
    Case{"msiexec", alive, "MsiExec.exe /I{12345678-1234-4234-8234-123456789ABC}"},
    Case{"msiexec", alive, "msiexec /fu {12345678-1234-4234-8234-123456789ABC} /qn"},
    Case{"msiexec", dead, "MsiExec.exe /I{87654321-4321-4321-8321-CBA987654321}"},
    Case{"wscript", alive, "wscript.exe //E:\"vbscript\" \"C:\\Company Tools\\tool.vbs\""},
    Case{"wscript", dead, "wscript.exe //B \"C:\\Company Tools\\notool.vbs\" \"quiet\""},
    Case{"cscript", alive, "cscript //nologo C:\\Tools\\..\\Windows\\Tools\\tool.vbs D:\\x.y"},
    Case{"cscript", dead, "cscript.exe //nologo C:\\Windows\\Tools\\notool.vbs"},
    Case{"explorer", alive, "explorer.exe \"C:\\Company Tools\""},
    Case{"explorer", alive, "explorer.exe C:\\Windows\\Tools"},
    Case{"explorer", dead, "explorer.exe \"C:\\Company Tools\\Nowhere\""},
    Case{"explorer", undecidable, "explorer.exe shell:AppsFolder\\Vendor.Tool_8wekyb3d8bbwe!App"},
    Case{"powershell", alive,
         "powershell.exe -ExecutionPolicy \"Bypass\" -File \"C:\\Company Tools\\tool.ps1\" -Quiet"},
    Case{"powershell", dead, "powershell.exe -NoProfile -File \"C:\\Company Tools\\notool.ps1\""},
    Case{"powershell", undecidable, "powershell.exe -Command \"Start-Job { Get-Date }\""},
    Case{"svchost", alive, "svchost.exe -k VendorServices"},
    Case{"svchost", dead, "svchost.exe -k NoSuchServices"},
    Case{"dllhost", alive, "dllhost.exe /Processid:{D1100000-0000-4000-8000-000000000001}"},
    Case{"dllhost", dead, "dllhost.exe /Processid:{D1100000-0000-4000-8000-00000000DEAD}"},
    Case{"updater", alive,
         "C:\\Users\\Ann\\AppData\\Local\\Vendor\\Update.exe --processStart "
         "\"App.exe\"",
         Fits::OfUser},
    Case{"updater", dead,
         "C:\\Users\\Ann\\AppData\\Local\\Gone Vendor\\Update.exe --processStart "
         "\"App.exe\"",
         Fits::OfUser},
    Case{"slashes", alive, "C:/Windows/Tools/tool.exe /log C:/logs/a.b.txt"},
};

}  // namespace

std::span<const Case> pathCases() { return paths; }

std::span<const Case> commandCases() { return commands; }

}  // namespace zelvreg::bench
