; The Windows installer of the DQ-480 setting software, made by scripts/build-windows.sh:
;   makensis -DVERSION=1.01 -DSTAGE=<folder with the programs> -DOUTFILE=<setup.exe> dq480.nsi
; It installs for every user of the PC under Program Files, with a Start menu entry, .stf files
; opening in the program, and an uninstaller. "setup.exe /S" installs without a question.

; A 64-bit installer, like the program: it sees the real system folder and registry.
Target amd64-unicode
!include "MUI2.nsh"

!define APPNAME "DQ-480 Setting Software"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\DQ480"
!define FILE_CLASS "DQ480.SettingFile"

Name "${APPNAME}"
OutFile "${OUTFILE}"
InstallDir "$PROGRAMFILES64\${APPNAME}"
InstallDirRegKey HKLM "${UNINSTALL_KEY}" "InstallLocation"
RequestExecutionLevel admin
SetCompressor /SOLID lzma
ManifestDPIAware true

VIProductVersion "${VERSION}.0.0"
VIAddVersionKey /LANG=1033 "ProductName" "${APPNAME}"
VIAddVersionKey /LANG=1033 "FileDescription" "${APPNAME} installer"
VIAddVersionKey /LANG=1033 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=1033 "ProductVersion" "${VERSION}"

!define MUI_ICON "${STAGE}/dq480.ico"
!define MUI_UNICON "${STAGE}/dq480.ico"
!define MUI_FINISHPAGE_RUN "$INSTDIR\dq480.exe"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "Japanese"

Function .onInit
    !insertmacro MUI_LANGDLL_DISPLAY
FunctionEnd

Section "Install"
    SetOutPath "$INSTDIR"
    ; An installed copy keeps its work folders in the user's own data folder; only the portable
    ; zip carries the marker that keeps them beside the .exe.
    File /r "${STAGE}/*.*"
    WriteUninstaller "$INSTDIR\uninstall.exe"

    ; The format command reads its answers for a removable card from here: press Enter when the
    ; card is in, no volume label, no second card.
    CreateDirectory "$SYSDIR\DQ480tmp"
    FileOpen $0 "$SYSDIR\DQ480tmp\FMT.tmp" w
    FileWrite $0 "$\r$\n$\r$\nN$\r$\n"
    FileClose $0

    SetShellVarContext all
    CreateShortcut "$SMPROGRAMS\${APPNAME}.lnk" "$INSTDIR\dq480.exe" "" "$INSTDIR\dq480.exe" 0

    WriteRegStr HKLM "Software\Classes\.stf" "" "${FILE_CLASS}"
    WriteRegStr HKLM "Software\Classes\${FILE_CLASS}" "" "DQ-480 setting file"
    WriteRegStr HKLM "Software\Classes\${FILE_CLASS}\DefaultIcon" "" "$INSTDIR\dq480.exe,0"
    WriteRegStr HKLM "Software\Classes\${FILE_CLASS}\shell\open\command" "" '"$INSTDIR\dq480.exe" "%1"'
    System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'

    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayName" "${APPNAME}"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\dq480.exe,0"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
    WriteRegStr HKLM "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoModify" 1
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

Section "Uninstall"
    SetShellVarContext all
    Delete "$SMPROGRAMS\${APPNAME}.lnk"
    ; .stf is let go only when it still opens in this program.
    ReadRegStr $0 HKLM "Software\Classes\.stf" ""
    StrCmp $0 "${FILE_CLASS}" 0 +2
    DeleteRegKey HKLM "Software\Classes\.stf"
    DeleteRegKey HKLM "Software\Classes\${FILE_CLASS}"
    System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
    DeleteRegKey HKLM "${UNINSTALL_KEY}"
    ; The format's answers: the removable drive's from the installer, the fixed drive's that the
    ; program writes before each format. The folder goes only when nothing else was put there.
    Delete "$SYSDIR\DQ480tmp\FMT.tmp"
    Delete "$SYSDIR\DQ480tmp\FMT_HDD.tmp"
    RMDir "$SYSDIR\DQ480tmp"
    ; Only what was installed goes: the folder chosen may hold the operator's own files, and the
    ; projects live in the operators' own data folders and stay.
    !include "${UNINSTALL_LIST}"
    Delete "$INSTDIR\uninstall.exe"
    RMDir "$INSTDIR"
SectionEnd
