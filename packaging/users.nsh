; For whom to install: command-line switch, choice on the page, or by the rights of the user.

!macro ForEverybody
  StrCpy $forAll 1
  SetShellVarContext all
!macroend

!macro ForCurrentUser
  StrCpy $forAll ""
  SetShellVarContext current
!macroend

; $0: 1 if the process has administrator rights
!macro IsAdministrator
  UserInfo::GetAccountType
  Pop $0
  ${If} $0 == Admin
    StrCpy $0 1
  ${Else}
    StrCpy $0 ""
  ${EndIf}
!macroend

; $0: 1 if the process is elevated through UAC. Without UAC an administrator always has all rights.
; Wine has no UAC, but reports an elevated token.
!macro IsElevated
  StrCpy $0 ""
  System::Call 'advapi32::OpenProcessToken(p -1, i 8, *p .R3) i .R4'
  ${If} $R4 <> 0
    System::Call 'advapi32::GetTokenInformation(p R3, i 18, *i .R5, i 4, *i .R6) i .R4'
    ${If} $R4 <> 0
    ${AndIf} $R5 = 2  ; TokenElevationTypeFull
      StrCpy $0 1
    ${EndIf}
    System::Call 'kernel32::CloseHandle(p R3)'
  ${EndIf}
  System::Call 'kernel32::GetModuleHandleW(w "ntdll") p .R3'
  System::Call 'kernel32::GetProcAddress(p R3, m "wine_get_version") p .R3'
  ${If} $R3 P<> 0
    StrCpy $0 ""
  ${EndIf}
!macroend

; The folder of an earlier version, or the default.
Function SuggestFolder
  ReadRegStr $INSTDIR SHCTX "${UNINSTALL_KEY}" InstallLocation
  ${If} $INSTDIR != ""
    Return
  ${EndIf}
  ${If} $forAll == ""
    StrCpy $INSTDIR "$LOCALAPPDATA\Programs\${NAME}"
  ${Else}
    StrCpy $INSTDIR "$PROGRAMFILES64\${NAME}"
  ${EndIf}
FunctionEnd

Function .onInit
  ${If} ${RunningX64}
    SetRegView 64
  ${EndIf}
  !insertmacro IsAdministrator
  StrCpy $forAll $0
  ${GetParameters} $1
  ClearErrors
  ${GetOptions} $1 "/CurrentUser" $2
  ${IfNot} ${Errors}
    StrCpy $forAll ""
  ${EndIf}
  ClearErrors
  ${GetOptions} $1 "/AllUsers" $2
  ${IfNot} ${Errors}
    StrCpy $forAll 1
    ${If} $0 == ""
      !insertmacro Fail "Only an administrator can install for everybody."
      Quit
    ${EndIf}
  ${EndIf}

  ${If} $forAll == ""
    !insertmacro IsElevated
    ${If} $0 != ""
      !insertmacro Fail "Start it without an administrator's rights to install for yourself."
      Quit
    ${EndIf}
    !insertmacro ForCurrentUser
  ${Else}
    !insertmacro ForEverybody
  ${EndIf}
  ${If} $INSTDIR == ""
    Call SuggestFolder
  ${EndIf}
FunctionEnd

; The uninstaller works for the user whose Uninstall key names its folder, unless the machine's key
; names the same folder. A user's own key counts only for that user.
Function un.onInit
  ${If} ${RunningX64}
    SetRegView 64
  ${EndIf}
  ReadRegStr $0 HKCU "${UNINSTALL_KEY}" InstallLocation
  ReadRegStr $1 HKLM "${UNINSTALL_KEY}" InstallLocation
  ${If} $0 == $INSTDIR
  ${AndIf} $1 != $INSTDIR
    !insertmacro ForCurrentUser
    Return
  ${EndIf}
  !insertmacro ForEverybody
  !insertmacro IsAdministrator
  ${If} $0 != ""
    Return
  ${EndIf}
  ${IfNot} ${Silent}
    ClearErrors
    ExecShell runas "$INSTDIR\uninstall.exe" "/AtRestart _?=$INSTDIR"
    ${IfNot} ${Errors}
      Quit
    ${EndIf}
  ${EndIf}
  !insertmacro Fail "Only an administrator can remove what is installed for everybody."
  Quit
FunctionEnd

Var everybody
Var onlyMe

; Elevation is requested only if needed, and not used for an installation for one user.
Function ChooseUsers
  !insertmacro IsElevated
  ${If} $0 != ""
    Abort
  ${EndIf}
  !insertmacro MUI_HEADER_TEXT "Users" "Who is to use the address book on this computer?"
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateFirstRadioButton} 0 10u 100% 12u "&Everybody on this computer"
  Pop $everybody
  ${NSD_CreateAdditionalRadioButton} 0 28u 100% 12u "&Only me"
  Pop $onlyMe
  UserInfo::GetOriginalAccountType
  Pop $0
  ${If} $forAll == ""
  ${AndIf} $0 != Admin
    ${NSD_Check} $onlyMe
  ${Else}
    ${NSD_Check} $everybody
  ${EndIf}
  nsDialogs::Show
FunctionEnd

Function UsersChosen
  StrCpy $1 $forAll
  ${NSD_GetState} $everybody $0
  ${If} $0 = ${BST_CHECKED}
    !insertmacro IsAdministrator
    ${If} $0 == ""
      ClearErrors
      ExecShell runas "$EXEPATH" "/AllUsers"
      ${IfNot} ${Errors}
        Quit
      ${EndIf}
      Abort
    ${EndIf}
    !insertmacro ForEverybody
  ${Else}
    !insertmacro ForCurrentUser
  ${EndIf}
  ${If} $1 != $forAll
    Call SuggestFolder
  ${EndIf}
FunctionEnd
