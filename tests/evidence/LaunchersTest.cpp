#include "evidence/Launchers.h"

#include <gtest/gtest.h>

#include "evidence/CommandText.h"

namespace zelvreg {
namespace {

struct Case {
  const char* command;
  TargetIs kind;
  const char* text;
};

std::optional<LaunchTarget> targetOf(const char* command) {
  const CommandParts parts = commandParts(command);
  return launchTarget(parts.program, parts.arguments);
}

TEST(Launchers, SayWhatTheyOpen) {
  for (const auto& [command, kind, text] : {
           Case{"cmd /c a.exe /x", TargetIs::Command, "a.exe /x"},
           Case{"CMD.EXE /D /S /K\"C:\\a b.exe\"", TargetIs::Command, "\"C:\\a b.exe\""},
           Case{"cmd /c \"\"C:\\a b.exe\" /x\"", TargetIs::Command, "\"C:\\a b.exe\" /x"},
           Case{"cmd /c start \"title\" /min \"C:\\a b.exe\"", TargetIs::Command,
                "\"C:\\a b.exe\""},
           Case{"cmd /c start /min \"title\" C:\\a.exe", TargetIs::Command, "C:\\a.exe"},
           Case{"cmd /c start \"\" /d C:\\x C:\\a.exe", TargetIs::Command, "C:\\a.exe"},
           Case{"cmd /c call run.bat", TargetIs::Command, "run.bat"},
           Case{"C:\\Windows\\System32\\rundll32.exe C:\\a b\\c.dll,Entry x", TargetIs::Library,
                "C:\\a b\\c.dll"},
           Case{"rundll32 \"C:\\a b\\c.dll\",Entry", TargetIs::Library, "C:\\a b\\c.dll"},
           Case{"regsvr32 /s /u C:\\a.ocx", TargetIs::Library, "C:\\a.ocx"},
           Case{"wscript.exe //B \"C:\\a.vbs\" x", TargetIs::Command, "\"C:\\a.vbs\" x"},
           Case{"explorer.exe /e,/root,C:\\a b", TargetIs::Command, "C:\\a b"},
           Case{"powershell -NoProfile -ExecutionPolicy Bypass -File C:\\a.ps1 x",
                TargetIs::Command, "C:\\a.ps1 x"},
           Case{"powershell C:\\a.ps1", TargetIs::Command, "C:\\a.ps1"},
           Case{"svchost -k netsvcs -p", TargetIs::ServiceGroup, "netsvcs"},
           Case{"dllhost.exe /Processid:{01234567-89ab-CDEF-0123-456789abcdef}",
                TargetIs::Application, "{01234567-89ab-CDEF-0123-456789abcdef}"},
           Case{"MsiExec.exe /X{01234567-89ab-CDEF-0123-456789abcdef}", TargetIs::Product,
                "{01234567-89ab-CDEF-0123-456789abcdef}"},
           Case{"msiexec /i C:\\a.msi", TargetIs::Command, "C:\\a.msi"},
           Case{"msiexec /L*v \"C:\\x.log\" /x \"C:\\a b.msi\" /qn", TargetIs::Command,
                "\"C:\\a b.msi\" /qn"},
           Case{"msiexec /qn INSTALLDIR=\"C:\\x\" /iC:\\a.msi", TargetIs::Command, "C:\\a.msi"},
           Case{"control.exe C:\\a.cpl", TargetIs::Command, "C:\\a.cpl"},
           Case{"explorer.exe C:\\a b,/e", TargetIs::Command, "C:\\a b"},
           Case{"javaw -Xmx1g -jar C:\\a.jar", TargetIs::Command, "C:\\a.jar"},
           Case{"java -JAR C:\\a.jar", TargetIs::Command, "C:\\a.jar"},
           Case{"cmd /q /r a.exe", TargetIs::Command, "a.exe"},
           Case{"cmd /K a.com", TargetIs::Command, "a.com"},
           Case{"cmd /c A.CMD x", TargetIs::Command, "A.CMD x"},
           Case{"cmd /c a.msc", TargetIs::Command, "a.msc"},
           Case{"cmd /c a.vbs", TargetIs::Command, "a.vbs"},
           Case{"cmd /c C:tool", TargetIs::Command, "C:tool"},
           Case{"cmd /c tools/tool", TargetIs::Command, "tools/tool"},
           Case{"cmd /c \"C:\\a (x86)\\b.exe\"", TargetIs::Command, "\"C:\\a (x86)\\b.exe\""},
           Case{"cmd /c \"C:\\a.exe \"x y\"\"", TargetIs::Command, "C:\\a.exe \"x y\""},
           Case{"cmd /c start /dC:\\x C:\\a.exe", TargetIs::Command, "C:\\a.exe"},
           Case{"cmd /c start a.exe \"x\"", TargetIs::Command, "a.exe \"x\""},
           Case{"rundll32 /d C:\\a.dll,Entry", TargetIs::Library, "C:\\a.dll"},
           Case{"rundll32 C:\\a.dll", TargetIs::Library, "C:\\a.dll"},
           Case{"regsvr32 -s \"C:\\a b.ocx\"", TargetIs::Library, "\"C:\\a b.ocx\""},
           Case{"cscript //Nologo C:\\a.vbs", TargetIs::Command, "C:\\a.vbs"},
           Case{"explorer /select,C:\\a\\b.txt", TargetIs::Command, "C:\\a\\b.txt"},
           Case{"powershell -f C:\\a.ps1", TargetIs::Command, "C:\\a.ps1"},
           Case{"powershell.exe -w hidden -NoExit C:\\A.PS1 x", TargetIs::Command, "C:\\A.PS1"},
           Case{"pwsh -ep Bypass C:\\a.ps1", TargetIs::Command, "C:\\a.ps1"},
           Case{"svchost -p -K netsvcs", TargetIs::ServiceGroup, "netsvcs"},
           Case{"msiexec -i C:\\a.msi", TargetIs::Command, "C:\\a.msi"},
           Case{"msiexec /fa C:\\a.msi", TargetIs::Command, "C:\\a.msi"},
           Case{"msiexec /JM C:\\a.msi", TargetIs::Command, "C:\\a.msi"},
           Case{"msiexec /package C:\\a.msi", TargetIs::Command, "C:\\a.msi"},
           Case{"msiexec /XC:\\a.msi", TargetIs::Command, "C:\\a.msi"},
           Case{"mmc C:\\a.msc /s", TargetIs::Command, "C:\\a.msc /s"},
           Case{"hh C:\\a.chm", TargetIs::Command, "C:\\a.chm"},
           Case{"control A.CPL,x", TargetIs::Command, "A.CPL,x"},
       }) {
    const auto target = targetOf(command);
    ASSERT_TRUE(target) << command;
    EXPECT_EQ(target->kind, kind) << command;
    EXPECT_EQ(target->text, text) << command;
  }
}

TEST(Launchers, WhatCannotBeToldIsUnclear) {
  for (const char* command : {"cmd /c echo x > C:\\a.txt",
                              "cmd /c a.exe & b.exe",
                              "cmd /c del C:\\a.txt",
                              "cmd /c start \"only a title\"",
                              "cmd /q",
                              "explorer shell:Startup",
                              "powershell -Command x",
                              "powershell -EncodedCommand x",
                              "svchost -s",
                              "java Main",
                              "mshta https://vendor.example",
                              "cmd /c mkdir x",
                              "cmd /c \"title x\"",
                              "cmd /c @echo off",
                              "cmd /c (start app)",
                              "cmd /c C:\\Program^ Files\\a.exe",
                              "cmd /c python3.11 -m x",
                              "cmd /c start \"\" /d C:\\x a.exe",
                              "control printers",
                              "explorer www.vendor.example",
                              "explorer /factory,{75dff2b7-6936-4c06-a8bb-676a7b00b24b}",
                              "rundll32 ,x",
                              "dllhost /x",
                              "cmd a.exe",
                              "cmd /",
                              "cmd /x a.exe",
                              "cmd /c \"\"",
                              "cmd /c \"C:\\a.exe\" & \"b.exe\"",
                              "cmd /c a.exe | b.exe",
                              "cmd /c start /dC:\\x a.exe",
                              "cmd /c start /d C:\\x",
                              "cmd /c call",
                              "explorer /e",
                              "explorer SHELL:Startup\\x",
                              "explorer ::{20D04FE0-3AEA-1069-A2D8-08002B30309D}\\x",
                              "explorer file://server/x",
                              "powershell -w hidden x",
                              "powershell -e x.ps1",
                              "powershell -version 2",
                              "svchost -k",
                              "java -jar",
                              "mshta JavaScript:close()",
                              "hh mk:@MSITStore://x",
                              "msiexec i C:\\a.msi",
                              "msiexec /f:x C:\\a.msi",
                              "msiexec /i: C:\\a.msi",
                              "msiexec /pC:\\a.msi",
                              "msiexec /i",
                              "msiexec /qn"}) {
    const auto target = targetOf(command);
    ASSERT_TRUE(target) << command;
    EXPECT_EQ(target->kind, TargetIs::Unclear) << command;
  }
}

TEST(Launchers, AnyOtherProgramAndALauncherByItselfOpenNothing) {
  for (const char* command : {"notepad a.txt", "cmd.exe", "C:\\cmd\\a.exe /c b.exe", ""}) {
    EXPECT_FALSE(targetOf(command)) << command;
  }
}

}  // namespace
}  // namespace zelvreg
