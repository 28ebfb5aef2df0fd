; The installer: for one user, without administrator rights. tools/package gives it
;   VERSION    the program's version, such as 1.0.0
;   PLATFORM   win32 or win64
;   STAGE      the directory with what is installed
;   FILES      a file with the macros InstallFiles and RemoveFiles, one line for each file of it
;   ICON       the program's icon
;   PAGE       the picture of the first and the last page, a bitmap of 164 by 314 pixels
;   OUTPUT     the installer to write

Unicode true
ManifestDPIAware true
ManifestSupportedOS all
SetCompressor /SOLID lzma
RequestExecutionLevel user

!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include "${FILES}"

!define PRODUCT "NXClip"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${PRODUCT}"
!define WINDOW_CLASS "NXClipMain"
!define UNINSTALLER "Deinstallieren.exe"
!define PROGRAM_RUNS 2 ; exit code: nothing was changed, because the program could not be closed

Name "${PRODUCT} ${VERSION}"
OutFile "${OUTPUT}"
; The program keeps its format sets and its first profiles beside itself: it must be able to write there.
InstallDir "$LOCALAPPDATA\Programs\${PRODUCT}"
InstallDirRegKey HKCU "${UNINSTALL_KEY}" "InstallLocation"
BrandingText "${PRODUCT} ${VERSION}"
ShowInstDetails nevershow
ShowUninstDetails nevershow

VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=1031 "ProductName" "${PRODUCT}"
VIAddVersionKey /LANG=1031 "FileDescription" "Installation von ${PRODUCT}"
VIAddVersionKey /LANG=1031 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=1031 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=1031 "LegalCopyright" ""

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!define MUI_WELCOMEFINISHPAGE_BITMAP "${PAGE}"
!define MUI_WELCOMEPAGE_TITLE "NXClip ${VERSION} installieren"
!define MUI_WELCOMEPAGE_TEXT "NXClip wird für den angemeldeten Benutzer eingerichtet. Administratorrechte sind dafür \
  nicht nötig.$\r$\n$\r$\nEin vorhandenes NXClip wird aktualisiert. Profile, Clips, Formatsätze und Einstellungen \
  bleiben erhalten.$\r$\n$\r$\n$_CLICK"
!define MUI_FINISHPAGE_TITLE "NXClip ${VERSION} ist installiert"
!define MUI_FINISHPAGE_RUN "$INSTDIR\NXClip.exe"
!define MUI_FINISHPAGE_RUN_TEXT "NXClip jetzt starten"
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "German"

; A running program holds its file and would write its settings after us: it is asked to close and given ten
; seconds. Only the program of this directory counts; another copy elsewhere is left alone as long as this one's
; file is free.
!macro CloseProgram PREFIX
Function ${PREFIX}CloseProgram
  ${IfNot} ${FileExists} "$INSTDIR\NXClip.exe"
    Return
  ${EndIf}
  again:
  StrCpy $1 0
  ${Do}
    ClearErrors
    FileOpen $0 "$INSTDIR\NXClip.exe" a
    ${IfNot} ${Errors}
      FileClose $0
      Return
    ${EndIf}
    ${If} $1 = 0
      FindWindow $2 "${WINDOW_CLASS}" "${PRODUCT}"
      ${If} $2 <> 0
        SendMessage $2 ${WM_CLOSE} 0 0 /TIMEOUT=5000
      ${EndIf}
    ${EndIf}
    Sleep 100
    IntOp $1 $1 + 1
  ${LoopUntil} $1 > 100
  MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION \
    "NXClip läuft noch und lässt sich nicht beenden.$\r$\n$\r$\nBeenden Sie es bitte und versuchen Sie es noch einmal." \
    /SD IDCANCEL IDRETRY again
  SetErrorLevel ${PROGRAM_RUNS}
  Quit
FunctionEnd
!macroend
!insertmacro CloseProgram ""
!insertmacro CloseProgram "un."

Section
  Call CloseProgram
  ; An older version may have had other files; its uninstaller knows which. The user's own files stay.
  ${If} ${FileExists} "$INSTDIR\${UNINSTALLER}"
    ExecWait '"$INSTDIR\${UNINSTALLER}" /S _?=$INSTDIR'
  ${EndIf}
  !insertmacro InstallFiles
  SetOutPath "$INSTDIR"
  WriteUninstaller "$INSTDIR\${UNINSTALLER}"
  CreateShortcut "$SMPROGRAMS\${PRODUCT}.lnk" "$INSTDIR\NXClip.exe" "" "" "" "" "" "Manager für die Zwischenablage"

  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "${PRODUCT}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "${PRODUCT}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\NXClip.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\${UNINSTALLER}"'
  WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\${UNINSTALLER}" /S'
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "EstimatedSize" $0
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

; Removes what the installer and the program itself made, and nothing else: profiles, format sets, and templates
; of the user's own stay, and with them their directories.
Section "Uninstall"
  Call un.CloseProgram
  !insertmacro RemoveFiles
  Delete "$INSTDIR\protokol.txt"
  Delete "$INSTDIR\${UNINSTALLER}"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\${PRODUCT}.lnk"
  DeleteRegKey HKCU "${UNINSTALL_KEY}"
  ; The settings also know which profiles are attached: whoever installs again finds everything as it was.
  MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 \
    "Sollen auch die Einstellungen von NXClip gelöscht werden?$\r$\n$\r$\nProfile und Clips bleiben in jedem Fall erhalten." \
    /SD IDNO IDNO keep
  DeleteRegKey HKCU "Software\${PRODUCT}"
  keep:
SectionEnd
