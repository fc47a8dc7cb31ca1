; The installer: makensis -DARCH=x86|x64 -DFILES=folder -DOUTPUT=installer.exe vellumor.nsi
; Everything that Vellumor writes lies beside its executable, so the uninstaller leaves the folder while undo files
; or backups are in it.

!if ${ARCH} == x64
    Target amd64-unicode
!else
    Target x86-unicode
!endif
SetCompressor /SOLID lzma
SetDateSave off
ManifestSupportedOS all
RequestExecutionLevel admin
Name "Vellumor"
OutFile "${OUTPUT}"

!include MUI2.nsh

!define VERSION 4.55
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Vellumor"
!if ${ARCH} == x64
    !define PROGRAMS "$PROGRAMFILES64"
!else
    !define PROGRAMS "$PROGRAMFILES32"
!endif
InstallDir "${PROGRAMS}\Vellumor"

VIProductVersion 4.55.0.0
VIAddVersionKey ProductName "Vellumor"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey FileDescription "Vellumor installer (${ARCH})"
VIAddVersionKey LegalCopyright "The Vellumor authors"

!define MUI_ICON "${FILES}\app.ico"
!define MUI_UNICON "${FILES}\app.ico"
!define MUI_FINISHPAGE_RUN "$INSTDIR\vellumor.exe"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

; The 64-bit program is installed in the 64-bit view of the registry, like any other of its kind.
!macro ChooseView
    SetShellVarContext all
    !if ${ARCH} == x64
        SetRegView 64
    !endif
!macroend

Function .onInit
    !insertmacro ChooseView
FunctionEnd

Function un.onInit
    !insertmacro ChooseView
FunctionEnd

Section
    SetOutPath "$INSTDIR"
    File "${FILES}\vellumor.exe"
    File "${FILES}\vellumor-cli.exe"
    File "${FILES}\VellumorHelp.chm"
    File "${FILES}\README.txt"
    WriteUninstaller "$INSTDIR\uninstall.exe"
    CreateDirectory "$SMPROGRAMS\Vellumor"
    CreateShortcut "$SMPROGRAMS\Vellumor\Vellumor.lnk" "$INSTDIR\vellumor.exe"
    CreateShortcut "$SMPROGRAMS\Vellumor\Vellumor Help.lnk" "$INSTDIR\VellumorHelp.chm"
    WriteRegStr HKLM "${UNINSTALL_KEY}" DisplayName "Vellumor ${VERSION} (${ARCH})"
    WriteRegStr HKLM "${UNINSTALL_KEY}" DisplayVersion "${VERSION}"
    WriteRegStr HKLM "${UNINSTALL_KEY}" DisplayIcon "$INSTDIR\vellumor.exe"
    WriteRegStr HKLM "${UNINSTALL_KEY}" Publisher "Vellumor"
    WriteRegStr HKLM "${UNINSTALL_KEY}" URLInfoAbout "https://vellumor.example/"
    WriteRegStr HKLM "${UNINSTALL_KEY}" InstallLocation "$INSTDIR"
    WriteRegStr HKLM "${UNINSTALL_KEY}" UninstallString '"$INSTDIR\uninstall.exe"'
    WriteRegStr HKLM "${UNINSTALL_KEY}" QuietUninstallString '"$INSTDIR\uninstall.exe" /S'
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" NoModify 1
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" NoRepair 1
SectionEnd

Section Uninstall
    Delete "$INSTDIR\vellumor.exe"
    Delete "$INSTDIR\vellumor-cli.exe"
    Delete "$INSTDIR\VellumorHelp.chm"
    Delete "$INSTDIR\README.txt"
    Delete "$INSTDIR\uninstall.exe"
    Delete "$SMPROGRAMS\Vellumor\Vellumor.lnk"
    Delete "$SMPROGRAMS\Vellumor\Vellumor Help.lnk"
    RMDir "$SMPROGRAMS\Vellumor"
    ; Empty folders only: undo files and backups are the user's.
    RMDir "$INSTDIR\Backup\System"
    RMDir "$INSTDIR\Backup"
    RMDir "$INSTDIR\Undo"
    RMDir "$INSTDIR"
    DeleteRegKey HKLM "${UNINSTALL_KEY}"
SectionEnd
