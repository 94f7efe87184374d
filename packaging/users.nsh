; For whom it is installed: chosen by switch, by the page, or left to who runs the program.

!macro ForEverybody
  StrCpy $forAll 1
  SetShellVarContext all
!macroend

!macro ForCurrentUser
  StrCpy $forAll ""
  SetShellVarContext current
!macroend

; $0: whether the user is an administrator with all rights
!macro IsAdministrator
  UserInfo::GetAccountType
  Pop $0
  ${If} $0 == Admin
    StrCpy $0 1
  ${Else}
    StrCpy $0 ""
  ${EndIf}
!macroend

; The folder of an earlier version, or the usual one.
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
    !insertmacro ForCurrentUser
  ${Else}
    !insertmacro ForEverybody
  ${EndIf}
  ${If} $INSTDIR == ""
    Call SuggestFolder
  ${EndIf}
FunctionEnd

; The uninstaller belongs to the user whose installation its folder is.
Function un.onInit
  ${If} ${RunningX64}
    SetRegView 64
  ${EndIf}
  ReadRegStr $0 HKCU "${UNINSTALL_KEY}" InstallLocation
  ${If} $0 == $INSTDIR
    !insertmacro ForCurrentUser
    Return
  ${EndIf}
  !insertmacro ForEverybody
  !insertmacro IsAdministrator
  ${If} $0 == ""
    !insertmacro Fail "Only an administrator can remove what is installed for everybody."
    Quit
  ${EndIf}
FunctionEnd

Var everybody
Var onlyMe

; Not shown to those who have no choice.
Function ChooseUsers
  !insertmacro IsAdministrator
  ${If} $0 == ""
    Abort
  ${EndIf}
  !insertmacro MUI_HEADER_TEXT "Users" "Who is to use the address book on this computer?"
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateFirstRadioButton} 0 10u 100% 12u "&Everybody on this computer"
  Pop $everybody
  ${NSD_CreateAdditionalRadioButton} 0 28u 100% 12u "&Only me"
  Pop $onlyMe
  ${If} $forAll == ""
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
    !insertmacro ForEverybody
  ${Else}
    !insertmacro ForCurrentUser
  ${EndIf}
  ${If} $1 != $forAll
    Call SuggestFolder
  ${EndIf}
FunctionEnd
