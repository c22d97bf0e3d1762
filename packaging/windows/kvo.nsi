; The installer of Kvo for one user, who needs no administrator for it.
; Made by script/windows installer, which says: VERSION, SIZE (KB), FILES (the folder of what is
; installed), LISTS (the folder of files.nsh and drop.nsh, which name it), OUT (the file to make).
Unicode true
Target amd64-unicode
!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include WinVer.nsh

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Kvo"
!define CLASSES "Software\Classes"
!define RUN_TYPE "Kvo.Run"

Name "Kvo"
OutFile "${OUT}"
RequestExecutionLevel user
ManifestDPIAware true
ManifestSupportedOS Win10
SetCompressor /SOLID lzma
InstallDir "$LOCALAPPDATA\Programs\Kvo"
InstallDirRegKey HKCU "${UNINSTALL}" "InstallLocation"
BrandingText "Kvo ${VERSION}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "Kvo"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey FileDescription "Installs Kvo"
VIAddVersionKey CompanyName "The Kvo maintainers"
VIAddVersionKey LegalCopyright "Copyright 2026 the owner of Kvo"

!define MUI_ICON kvo.ico
!define MUI_UNICON kvo.ico
!define MUI_FINISHPAGE_RUN "$INSTDIR\kvo.exe"
!define MUI_FINISHPAGE_RUN_PARAMETERS "--last-folder"
!define MUI_FINISHPAGE_RUN_TEXT "Start Kvo"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

; Ends, before anything is changed, where the program is open in the folder.
!macro EndWhereOpen
    ${If} ${FileExists} "$INSTDIR\kvo.exe"
        ClearErrors
        FileOpen $0 "$INSTDIR\kvo.exe" a
        ${If} ${Errors}
            MessageBox MB_OK|MB_ICONSTOP "Kvo is open. Close it, and then try again." /SD IDOK
            SetErrorLevel 2
            Quit
        ${EndIf}
        FileClose $0
    ${EndIf}
!macroend

; The extension of a run is the minute of its download and a d: sixty of them.
!macro EachExtension
    ${For} $0 0 59
        IntFmt $1 ".%02dd" $0
!macroend

Function .onInit
    ${IfNot} ${AtLeastWin10}
        MessageBox MB_OK|MB_ICONSTOP "Kvo needs Windows 10 or 11." /SD IDOK
        SetErrorLevel 3
        Quit
    ${EndIf}
FunctionEnd

Section "Kvo"
    !insertmacro EndWhereOpen
    ; A version that is there goes first, wherever it lies, and with it what this one has no more.
    ReadRegStr $2 HKCU "${UNINSTALL}" "InstallLocation"
    ${If} $2 != ""
    ${AndIf} ${FileExists} "$2\uninstall.exe"
        ExecWait '"$2\uninstall.exe" /S /KEEP _?=$2' $3
        ${If} $3 != 0
            MessageBox MB_OK|MB_ICONSTOP "Kvo is open. Close it, and then try again." /SD IDOK
            SetErrorLevel 2
            Quit
        ${EndIf}
        Delete "$2\uninstall.exe"
        RMDir "$2"
    ${EndIf}

    ClearErrors
    !include "${LISTS}\files.nsh"
    SetOutPath "$INSTDIR"
    WriteUninstaller "$INSTDIR\uninstall.exe"
    ${If} ${Errors}
        MessageBox MB_OK|MB_ICONSTOP "Not everything could be written to $INSTDIR." /SD IDOK
        SetErrorLevel 4
        Quit
    ${EndIf}
    CreateShortcut "$SMPROGRAMS\Kvo.lnk" "$INSTDIR\kvo.exe" "--last-folder" "$INSTDIR\kvo.exe" 0 \
        SW_SHOWNORMAL "" "Read the data logger and look at its runs"

    ; Kvo is offered for these extensions and takes none: what a user, or another program, has said of
    ; one stays, for an extension does not make a run.
    WriteRegStr HKCU "${CLASSES}\${RUN_TYPE}" "" "Run of a drag-racing data logger"
    WriteRegStr HKCU "${CLASSES}\${RUN_TYPE}\DefaultIcon" "" "$INSTDIR\kvo.exe,0"
    WriteRegStr HKCU "${CLASSES}\${RUN_TYPE}\shell\open\command" "" \
        '"$INSTDIR\kvo.exe" --last-folder "%1"'
    !insertmacro EachExtension
        WriteRegStr HKCU "${CLASSES}\$1\OpenWithProgids" "${RUN_TYPE}" ""
    ${Next}

    WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "Kvo"
    WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "$INSTDIR\kvo.exe,0"
    WriteRegStr HKCU "${UNINSTALL}" "Publisher" "The Kvo maintainers"
    WriteRegStr HKCU "${UNINSTALL}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
    WriteRegStr HKCU "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
    WriteRegDWORD HKCU "${UNINSTALL}" "EstimatedSize" ${SIZE}
    WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
    WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
    System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)' ; the types have changed
SectionEnd

; Only what was installed goes: a folder in which somebody keeps a file of his own stays with it.
Section "Uninstall"
    !insertmacro EndWhereOpen
    !include "${LISTS}\drop.nsh"
    Delete "$SMPROGRAMS\Kvo.lnk"
    !insertmacro EachExtension
        DeleteRegValue HKCU "${CLASSES}\$1\OpenWithProgids" "${RUN_TYPE}"
        DeleteRegKey /ifempty HKCU "${CLASSES}\$1\OpenWithProgids"
        DeleteRegKey /ifempty HKCU "${CLASSES}\$1"
    ${Next}
    DeleteRegKey HKCU "${CLASSES}\${RUN_TYPE}"
    DeleteRegKey HKCU "${UNINSTALL}"
    System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'

    ; Which folders were open last; a new version goes on with them.
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/KEEP" $1
    ${If} ${Errors}
        Delete "$APPDATA\Kvo\Kvo.ini"
        RMDir "$APPDATA\Kvo"
    ${EndIf}
    SetOutPath "$TEMP"
    Delete "$INSTDIR\uninstall.exe" ; as the last one: who waits for the end sees it by that
    RMDir "$INSTDIR"
SectionEnd
