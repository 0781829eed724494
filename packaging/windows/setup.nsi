; The set-up program. tools/release gives it VERSION, NUMBERS (four of them), STAGE, OUT, SIZE in KB,
; PROGRAM_KEY, FOLDER_ACCESS, EVENT_KEY, EVENT_PROGRAM, EVENT_TYPES, and the folder GENERATED with the
; list of what is removed.
;
;   /S              silently
;   /D=FOLDER       into this folder; last, and without quotation marks
; The program that removes it takes /S, and /REMOVEDATA for what is kept otherwise.
; Both end with 0, with 1 when the user stops them, and with 2 when they refuse to begin.

Unicode true
SetCompressor /SOLID lzma
ManifestDPIAware true
ManifestSupportedOS all
RequestExecutionLevel admin
AllowRootDirInstall false

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\zelvreg"
; In PROGRAM_KEY, "InstalledBy" keeps the set-up program and the Windows Installer package out of each
; other's way, and "KeptIn" is the folder of what was kept when a version was removed.
; The window and the console hold it while they run.
!define LOCK "$WINDIR\zelvreg.lock"
; Who could open it could also keep it open.
!define LOCK_ACCESS "D:P(A;;FA;;;BA)(A;;FA;;;SY)"

!include LogicLib.nsh
!include FileFunc.nsh
!include WordFunc.nsh
!include WinVer.nsh
!include MUI2.nsh

Name "zelvreg"
OutFile "${OUT}"
InstallDir "$PROGRAMFILES32\zelvreg"
InstallDirRegKey HKLM "${UNINSTALL_KEY}" "InstallLocation"
BrandingText "zelvreg ${VERSION}"
ShowInstDetails nevershow
ShowUninstDetails nevershow

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!define MUI_LANGDLL_ALLLANGUAGES
!define MUI_FINISHPAGE_RUN "$INSTDIR\zelvreg.exe"

!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_LICENSE "${STAGE}\LICENSE.txt"
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE refuseForeignFolder
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_COMPONENTS
!insertmacro MUI_UNPAGE_INSTFILES

!include "texts.nsh"
!insertmacro MUI_RESERVEFILE_LANGDLL

VIProductVersion "${NUMBERS}"
VIFileVersion "${NUMBERS}"
VIAddVersionKey /LANG=1033 "ProductName" "zelvreg"
VIAddVersionKey /LANG=1033 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=1033 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=1033 "FileDescription" "Fix Registry Problems, set-up"
VIAddVersionKey /LANG=1033 "LegalCopyright" "MIT licence"

; Says why, silently only with the status, and ends.
!macro refuse text
  SetErrorLevel 2
  MessageBox MB_OK|MB_ICONSTOP "${text}" /SD IDOK
  Quit
!macroend

; Neither the window nor the console can start until the set-up has ended: the file is open for
; GENERIC_WRITE and DELETE, shared with nobody, is a link itself and not what it leads to, and goes
; with its handle.
!macro keepProgramOut
  System::Call 'advapi32::ConvertStringSecurityDescriptorToSecurityDescriptorW(w "${LOCK_ACCESS}", i 1, *p .r1, p 0) i .r0'
  System::Call '*(i 12, p r1, i 0) p .r3'
  System::Call 'kernel32::CreateFileW(w "${LOCK}", i 0x40010000, i 0, p r3, i 4, i 0x04200002, p 0) p .r0'
  System::Free $3
  System::Call 'kernel32::LocalFree(p r1)'
  ${If} $0 == -1 ; INVALID_HANDLE_VALUE
    !insertmacro refuse $(isRunning)
  ${EndIf}
!macroend

Function .onInit
  ${IfNot} ${AtLeastWin7}
    !insertmacro refuse $(needsWindows7)
  ${EndIf}
  ${IfNot} ${Silent}
    !insertmacro MUI_LANGDLL_DISPLAY
  ${EndIf}
  !insertmacro keepProgramOut
  ReadRegStr $0 HKLM "${UNINSTALL_KEY}" "DisplayVersion"
  ${If} $0 != ""
    ${VersionCompare} "$0" "${VERSION}" $1
    ${If} $1 == 1
      !insertmacro refuse $(isNewer)
    ${EndIf}
  ${EndIf}
  ReadRegStr $0 HKLM "${PROGRAM_KEY}" "InstalledBy"
  ${If} $0 == "Windows Installer"
    !insertmacro refuse $(isInstalledByPackage)
  ${EndIf}
  ${If} ${Silent}
    Call refuseForeignFolder
  ${EndIf}
FunctionEnd

; A folder in which others keep their files gets neither our access list nor our files: one of theirs
; may be a library that our programs would load. Ours are those that administrators have made ours.
Function refuseForeignFolder
  ReadRegStr $0 HKLM "${UNINSTALL_KEY}" "InstallLocation"
  ReadRegStr $1 HKLM "${PROGRAM_KEY}" "KeptIn"
  ${If} $INSTDIR == "$PROGRAMFILES32\zelvreg"
  ${OrIf} $INSTDIR == $0
  ${OrIf} $INSTDIR == $1
    Return
  ${EndIf}
  ${DirState} "$INSTDIR" $0
  ${If} $0 == 1
    ${If} ${Silent}
      !insertmacro refuse $(folderIsForeign)
    ${EndIf}
    MessageBox MB_OK|MB_ICONEXCLAMATION $(folderIsForeign)
    Abort
  ${EndIf}
FunctionEnd

; Administrators start what is in the folder, so nobody else may change it, wherever it is. Done
; before anything is in it: all of that inherits the list.
!macro protectFolder
  System::Call 'advapi32::ConvertStringSecurityDescriptorToSecurityDescriptorW(w "${FOLDER_ACCESS}", i 1, *p .r1, p 0) i .r0'
  ${If} $0 != 0
    System::Call 'advapi32::SetFileSecurityW(w "$INSTDIR", i 4, p r1) i .r0'
    System::Call 'kernel32::LocalFree(p r1)'
  ${EndIf}
!macroend

Section
  SetShellVarContext all
  ; An older version takes with it whatever files it had, and leaves what belongs to the user.
  ReadRegStr $0 HKLM "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $0 != ""
  ${AndIf} ${FileExists} "$0\uninstall.exe"
    ExecWait '"$0\uninstall.exe" /S /UPGRADE _?=$0' $1
    ${If} $1 != 0
      !insertmacro refuse $(olderStays)
    ${EndIf}
    Delete "$0\uninstall.exe"
    RMDir "$0"
  ${EndIf}

  ClearErrors
  SetOutPath "$INSTDIR"
  !insertmacro protectFolder
  SetOverwrite on
  File /r "${STAGE}/*"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  ${If} ${Errors}
    !insertmacro refuse $(cannotWrite)
  ${EndIf}

  CreateDirectory "$SMPROGRAMS\zelvreg"
  CreateShortcut "$SMPROGRAMS\zelvreg\Fix Registry Problems.lnk" "$INSTDIR\zelvreg.exe"
  CreateShortcut "$SMPROGRAMS\zelvreg\Help.lnk" "$INSTDIR\zelvhelp.chm"

  WriteRegExpandStr HKLM "${EVENT_KEY}" "EventMessageFile" "$INSTDIR\${EVENT_PROGRAM}"
  WriteRegDWORD HKLM "${EVENT_KEY}" "TypesSupported" ${EVENT_TYPES}

  DeleteRegValue HKLM "${PROGRAM_KEY}" "KeptIn"
  WriteRegStr HKLM "${PROGRAM_KEY}" "InstalledBy" "Set-up"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayName" "zelvreg - Fix Registry Problems"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "Publisher" "${PUBLISHER}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "URLInfoAbout" "${HOMEPAGE}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\zelvreg.exe"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKLM "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "EstimatedSize" ${SIZE}
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

Var removesData

Function un.onInit
  !insertmacro MUI_UNGETLANGUAGE
  ${GetParameters} $2
  ClearErrors
  ${GetOptions} $2 "/UPGRADE" $1
  ${If} ${Errors}
    ; A newer set-up that has started this one keeps the program out itself.
    !insertmacro keepProgramOut
  ${EndIf}
  ClearErrors
  ${GetOptions} $2 "/REMOVEDATA" $1
  ${IfNot} ${Errors}
    StrCpy $removesData 1
  ${EndIf}
FunctionEnd

Section "un.zelvreg"
  SectionIn RO
  SetShellVarContext all
  !include "${GENERATED}/remove.nsh"
  ; What a scan of users who are not signed in may have left behind.
  RMDir /r "$INSTDIR\copies"
  Delete "$SMPROGRAMS\zelvreg\Fix Registry Problems.lnk"
  Delete "$SMPROGRAMS\zelvreg\Help.lnk"
  RMDir "$SMPROGRAMS\zelvreg"
  DeleteRegKey HKLM "${UNINSTALL_KEY}"
  DeleteRegKey HKLM "${PROGRAM_KEY}"
  DeleteRegKey HKLM "${EVENT_KEY}"
SectionEnd

Section /o "un.$(removeData)" removeData
  StrCpy $removesData 1
SectionEnd

Section "-un.end"
  ${If} $removesData == 1
    Delete "$INSTDIR\exregscan.txt"
    ; Journals, by the times in their names.
    Delete "$INSTDIR\??.??.???? t *.txt"
    RMDir /r "$INSTDIR\backup"
    DeleteRegKey HKLM "Software\zelvane\Zelvane Tuner Deluxe\regscan"
    DeleteRegKey HKLM "Software\zelvane\Zelvane Tuner Deluxe\timer\reg"
    DeleteRegKey HKLM "Software\zelvane\Zelvane Tuner Deluxe\statics\regscan"
    DeleteRegKey HKLM "Software\zelvane\zelvane tuner\zelvreg"
  ${EndIf}
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  ${If} ${FileExists} "$INSTDIR\*.*"
    WriteRegStr HKLM "${PROGRAM_KEY}" "KeptIn" "$INSTDIR"
  ${EndIf}
  ; Those that nothing is in any more.
  DeleteRegKey /ifempty HKLM "Software\zelvane\Zelvane Tuner Deluxe\timer"
  DeleteRegKey /ifempty HKLM "Software\zelvane\Zelvane Tuner Deluxe\statics"
  DeleteRegKey /ifempty HKLM "Software\zelvane\Zelvane Tuner Deluxe"
  DeleteRegKey /ifempty HKLM "Software\zelvane\zelvane tuner"
  DeleteRegKey /ifempty HKLM "Software\zelvane"
SectionEnd

!insertmacro MUI_UNFUNCTION_DESCRIPTION_BEGIN
!insertmacro MUI_UNFUNCTION_DESCRIPTION_END
