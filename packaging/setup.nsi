; The setup program. packaging/pack defines VERSION, FILES (the macros that install and remove the
; files), SIZE in KB, SETUP (the program to write) and, optionally, WIDE.
;
;   setup.exe [/S] [/AllUsers | /CurrentUser] [/D=FOLDER]
;   uninstall.exe [/S] [/KeepLog]
;
; /S runs silently. Exit codes: 0 success, 1 cancelled by the user, 2 failure.
Unicode true
!ifdef WIDE
  Target amd64-unicode
  !pragma warning disable 6012  ; RunningX64 is constant in a 64-bit program
!endif
!include LogicLib.nsh
!include FileFunc.nsh
!include MUI2.nsh
!include x64.nsh

!define NAME KTRVAddressBook
!define UNINSTALL_KEYS Software\Microsoft\Windows\CurrentVersion\Uninstall
!define UNINSTALL_KEY "${UNINSTALL_KEYS}\${NAME}"

Name ${NAME}
OutFile "${SETUP}"
SetCompressor /SOLID lzma
ManifestDPIAware true
; By default it installs for the current user. It requests elevation only for an installation for
; all users, because an elevated process must not run files from a folder that the user can write
; to.
RequestExecutionLevel user
; Empty unless /D is given.
InstallDir ""
BrandingText "${NAME} ${VERSION}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "${NAME}"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey FileDescription "${NAME} setup"
VIAddVersionKey LegalCopyright ""

Var forAll  ; 1: install for all users; empty: for the current user

!define MUI_ABORTWARNING
Page custom ChooseUsers UsersChosen
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

!macro Fail text
  MessageBox MB_OK|MB_ICONSTOP "${text}" /SD IDOK
  SetErrorLevel 2
!macroend

!include users.nsh
!include rights.nsh
!include component.nsh
!include "${FILES}"

Section
  ${If} $forAll != ""
    Call MakePlace
    ${If} $refused != ""
      !insertmacro Fail "$refused$\r$\nWhat everybody runs must stand where nobody else can write."
      Abort
    ${EndIf}
  ${EndIf}
  Call RemoveEarlier
  ClearErrors
  !insertmacro BringFiles
  ${If} ${Errors}
    !insertmacro Fail "$INSTDIR cannot be written."
    Abort
  ${EndIf}
  WriteUninstaller "$INSTDIR\uninstall.exe"
  ; Here the uninstaller, which also undoes a failed registration, finds for whom it works.
  WriteRegStr SHCTX "${UNINSTALL_KEY}" InstallLocation "$INSTDIR"
  !insertmacro RegisterAll
  ${If} $0 <> 0
    ExecWait '"$INSTDIR\uninstall.exe" /S /KeepLog _?=$INSTDIR'
    Delete "$INSTDIR\uninstall.exe"
    SetOutPath $TEMP
    RMDir "$INSTDIR"
    ${If} $forAll == ""
      RMDir "$LOCALAPPDATA\Programs"
    ${EndIf}
    !insertmacro Fail "The component could not be registered (regsvr32 ended with $0)."
    Abort
  ${EndIf}
  !insertmacro OpenLogs
  StrCpy $0 ""
  ${If} $forAll != ""
    ; Runs in place instead of from a copy in the user's temporary folder.
    StrCpy $0 " /AtRestart _?=$INSTDIR"
  ${EndIf}

  WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayName "${NAME}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayVersion "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" UninstallString '"$INSTDIR\uninstall.exe"$0'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" QuietUninstallString '"$INSTDIR\uninstall.exe" /S$0'
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" EstimatedSize ${SIZE}
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" NoModify 1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" NoRepair 1
SectionEnd

Section Uninstall
  !insertmacro UnregisterAll
  DeleteRegKey SHCTX "${UNINSTALL_KEY}"
  Call un.RemoveLogs
  !insertmacro RemoveFiles
  ${GetParameters} $1
  ClearErrors
  ${GetOptions} $1 "/AtRestart" $2
  SetOutPath $TEMP
  ${If} ${Errors}
    Delete "$INSTDIR\uninstall.exe"
    RMDir "$INSTDIR"
  ${Else}
    Delete /REBOOTOK "$INSTDIR\uninstall.exe"  ; it is still running
    RMDir /REBOOTOK "$INSTDIR"
  ${EndIf}
  ${If} $forAll == ""
    ; Removed only if empty: this program may have created them.
    DeleteRegKey /ifempty HKCU "${UNINSTALL_KEYS}"
    RMDir "$LOCALAPPDATA\Programs"
  ${EndIf}
SectionEnd

; Removes an earlier version, because its files may differ. Its logs stay; if it is in another
; folder, they are copied from there.
Function RemoveEarlier
  ReadRegStr $1 SHCTX "${UNINSTALL_KEY}" InstallLocation
  ${If} $1 == ""
  ${OrIfNot} ${FileExists} "$1\uninstall.exe"
    Return
  ${EndIf}
  ; Files that a user could have written must not run elevated.
  ${If} $forAll == ""
    !insertmacro IsElevated
    StrCpy $refused ""
    ${If} $0 != ""
      StrCpy $refused "It stands in a folder of the user's."
    ${EndIf}
  ${Else}
    StrCpy $0 $1
    Call CheckPlace
  ${EndIf}
  ${If} $refused != ""
    !insertmacro Fail "The earlier version in $1 must be removed first. $refused"
    Abort
  ${EndIf}
  StrCpy $2 /KeepLog
  ${If} $1 != $INSTDIR
    StrCpy $2 ""
    CreateDirectory "$INSTDIR\x64"
    CreateDirectory "$INSTDIR\x86"
    CopyFiles /SILENT "$1\x64\${LOG}" "$INSTDIR\x64"
    CopyFiles /SILENT "$1\x86\${LOG}" "$INSTDIR\x86"
  ${EndIf}
  ExecWait '"$1\uninstall.exe" /S $2 _?=$1'
  Delete "$1\uninstall.exe"
  RMDir "$1"
FunctionEnd
