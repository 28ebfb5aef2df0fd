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
!include Win\COM.nsh
!include "${FILES}"

!define PRODUCT "NXClip"
!define RUN_KEY "Software\Microsoft\Windows\CurrentVersion\Run"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${PRODUCT}"
!define WINDOW_CLASS "NXClipMain"
!define UNINSTALLER "Deinstallieren.exe"
!define LINK "$SMPROGRAMS\${PRODUCT}.lnk"
!define UPDATE "/UPDATE" ; tells the uninstaller that a newer version follows
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

Var Closed ; 1 when a running program was closed

; A running program holds its file and would write its settings after us: it is asked to close and given ten
; seconds. With a dialog open it stays; where nobody is there to be asked, it is told that the session ends, upon which
; it stores everything and goes. Only the program of this directory counts; another copy elsewhere is left alone as
; long as this one's file is free.
!ifndef WM_QUERYENDSESSION
!define WM_QUERYENDSESSION 0x11
!endif
!ifndef WM_ENDSESSION
!define WM_ENDSESSION 0x16
!endif
!define ENDSESSION_CLOSEAPP 1
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
    StrCpy $Closed 1
    FindWindow $2 "${WINDOW_CLASS}" "${PRODUCT}"
    ${If} $2 <> 0
      ${If} $1 = 0
        SendMessage $2 ${WM_CLOSE} 0 0 /TIMEOUT=5000
      ${ElseIf} $1 = 20
      ${AndIf} ${Silent}
        SendMessage $2 ${WM_QUERYENDSESSION} 0 ${ENDSESSION_CLOSEAPP} $3 /TIMEOUT=5000
        ${If} $3 = 1
          SendMessage $2 ${WM_ENDSESSION} 1 ${ENDSESSION_CLOSEAPP} /TIMEOUT=5000
        ${EndIf}
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

; $3 says where the Start menu's link leads; empty without one.
Function ReadLink
  StrCpy $3 ""
  !insertmacro ComHlpr_CreateInProcInstance ${CLSID_ShellLink} ${IID_IShellLink} r0 ""
  ${If} $0 P<> 0
    ${IUnknown::QueryInterface} $0 '("${IID_IPersistFile}",.r1)'
    ${If} $1 P<> 0
      ${IPersistFile::Load} $1 '("${LINK}",0)'
      ${IShellLink::GetPath} $0 '(.r3,${NSIS_MAX_STRLEN},0,0)'
      ${IUnknown::Release} $1 ""
    ${EndIf}
    ${IUnknown::Release} $0 ""
  ${EndIf}
FunctionEnd

Section
  Call CloseProgram
  ; An older version may have had other files; its uninstaller knows which. The user's own files stay.
  ${If} ${FileExists} "$INSTDIR\${UNINSTALLER}"
    ExecWait '"$INSTDIR\${UNINSTALLER}" /S ${UPDATE} _?=$INSTDIR'
  ${EndIf}
  !insertmacro InstallFiles
  SetOutPath "$INSTDIR"
  WriteUninstaller "$INSTDIR\${UNINSTALLER}"
  ; One that leads there already may have been pinned, and have a key and an icon of the user's own.
  Call ReadLink
  ${If} $3 != "$INSTDIR\NXClip.exe"
    CreateShortcut "${LINK}" "$INSTDIR\NXClip.exe" "" "" "" "" "" "Manager für die Zwischenablage"
  ${EndIf}

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
  ; Nobody is there to start it again, and the clipboard is to be taken as before.
  ${If} ${Silent}
  ${AndIf} $Closed = 1
    Exec '"$INSTDIR\NXClip.exe"'
  ${EndIf}
SectionEnd

; Removes what the installer and the program itself made, and nothing else: profiles, format sets, and templates
; of the user's own stay, and with them their directories.
Section "Uninstall"
  Call un.CloseProgram
  !insertmacro RemoveFiles
  Delete "$INSTDIR\protokol.txt"
  Delete "$INSTDIR\${UNINSTALLER}"
  RMDir "$INSTDIR"
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "${UPDATE}" $1
  ${If} ${Errors}
    Delete "${LINK}"
    DeleteRegValue HKCU "${RUN_KEY}" "${PRODUCT}"
  ${EndIf}
  DeleteRegKey HKCU "${UNINSTALL_KEY}"
  ; The settings also know which profiles are attached: whoever installs again finds everything as it was.
  MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 \
    "Sollen auch die Einstellungen von NXClip gelöscht werden?$\r$\n$\r$\nProfile und Clips bleiben in jedem Fall erhalten." \
    /SD IDNO IDNO keep
  DeleteRegKey HKCU "Software\${PRODUCT}"
  keep:
SectionEnd
