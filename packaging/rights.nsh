; Access rights for an installation for all users. Whoever can replace the DLL can run code in every
; host. So ordinary users must not be able to write to its folder or to a parent folder. A new
; folder is created with its rights; an existing folder is checked first; links are refused, because
; their target can be changed later.

; SYSTEM and administrators: full access. Users: read and execute. No inheritance from the parent.
!define FOLDER_RIGHTS \
  "O:BAD:P(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)(A;OICI;0x1200A9;;;BU)"
; For a log: users may also append, but cannot delete or change what is in it.
!define LOG_RIGHTS "O:BAD:P(A;;FA;;;SY)(A;;FA;;;BA)(A;;0x12008D;;;BU)"

; Access masks that other users must not have. In the folder and its subfolders: everything except
; read and execute.
!define MORE_THAN_READING 0x5FEDFF56
; In parent folders: delete, delete child, change permissions or owner.
!define MOVING_AWAY 0x100D0040

!define LINK 0x400  ; FILE_ATTRIBUTE_REPARSE_POINT

; Size of SECURITY_ATTRIBUTES; its members are aligned to the size of a pointer.
!ifdef WIDE
  !define SA_SIZE 24
!else
  !define SA_SIZE 12
!endif

Var refused  ; why a folder must not be used; empty if it may be used

; $R0: non-zero for a link (reparse point)
!macro IsLink path
  System::Call 'kernel32::GetFileAttributesW(w "${path}") i .R0'
  ${If} $R0 = -1
    StrCpy $R0 0
  ${EndIf}
  IntOp $R0 $R0 & ${LINK}
!macroend

; $R1: 1 if the account of the SID may write: SYSTEM, administrators, TrustedInstaller,
; creator-owner, and the user who installs
!macro IsTrusted sid
  StrCpy $R1 ""
  ${If} "${sid}" == "S-1-5-18"
  ${OrIf} "${sid}" == "S-1-5-32-544"
  ${OrIf} "${sid}" == "S-1-5-80-956008885-3418522649-1831038044-1853292631-2271478464"
  ${OrIf} "${sid}" == "S-1-3-0"
  ${OrIf} "${sid}" == $R9
    StrCpy $R1 1
  ${EndIf}
!macroend

; $R9: the SID of the user who installs
!macro FindUser
  StrCpy $R9 ""
  System::Alloc 256
  Pop $R2
  System::Call 'advapi32::OpenProcessToken(p -1, i 8, *p .R3) i .R4'
  ${If} $R4 <> 0
    System::Call 'advapi32::GetTokenInformation(p R3, i 1, p R2, i 256, *i .R5) i .R4'
    ${If} $R4 <> 0
      System::Call '*$R2(p .R5)'
      System::Call 'advapi32::ConvertSidToStringSidW(p R5, *w .R9)'
    ${EndIf}
    System::Call 'kernel32::CloseHandle(p R3)'
  ${EndIf}
  System::Free $R2
!macroend

; Sets $refused if an untrusted account has one of the rights on the folder $R8. $R6: the rights as
; an access mask. $R7: 1 to include entries that are only inherited by its files.
Function CheckRights
  System::Call 'advapi32::GetNamedSecurityInfoW(w R8, i 1, i 5, *p .R2, p 0, *p .R3, p 0, *p .R4) \
    i .R0'
  ${If} $R0 <> 0
    StrCpy $refused "The rights of $R8 cannot be read."
    Return
  ${EndIf}
  System::Call 'advapi32::ConvertSidToStringSidW(p R2, *w .R5)'
  !insertmacro IsTrusted $R5
  ${If} $R1 == ""
    StrCpy $refused "$R8 belongs to a user."
  ${EndIf}
  ${If} $R3 P= 0
    StrCpy $refused "Everybody can write in $R8."  ; a null DACL means full access for everyone
  ${EndIf}
  StrCpy $R2 0
  ${Do}
    ${If} $refused != ""
      ${Break}
    ${EndIf}
    System::Call 'advapi32::GetAce(p R3, i R2, *p .R5) i .R0'
    ${If} $R0 = 0
      ${Break}
    ${EndIf}
    IntOp $R2 $R2 + 1
    ; Type, flags and mask of the entry; its SID follows.
    System::Call '*$R5(&i1 .R0, &i1 .R1, &i2, i .r5)'
    IntOp $R1 $R1 & 8  ; INHERIT_ONLY_ACE
    ${If} $R1 <> 0
    ${AndIf} $R7 == ""
    ${OrIf} $R0 = 1  ; ACCESS_DENIED_ACE
      ${Continue}
    ${EndIf}
    IntOp $R1 $5 & $R6
    ${If} $R0 <> 0
      StrCpy $refused "The rights of $R8 are not understood."
      ${Break}
    ${EndIf}
    ${If} $R1 = 0
      ${Continue}
    ${EndIf}
    IntPtrOp $R5 $R5 + 8
    System::Call 'advapi32::ConvertSidToStringSidW(p R5, *w .R0)'
    !insertmacro IsTrusted $R0
    ${If} $R1 == ""
      StrCpy $refused "Others can write in $R8."
    ${EndIf}
  ${Loop}
  System::Call 'kernel32::LocalFree(p R4)'
FunctionEnd

; Sets $refused if the folder exists and is a link, or an untrusted account can write to it.
!macro CheckFolder folder
  ${If} $refused == ""
  ${AndIf} ${FileExists} "${folder}\*.*"
    !insertmacro IsLink "${folder}"
    ${If} $R0 <> 0
      StrCpy $refused "${folder} is a link."
    ${Else}
      StrCpy $R8 "${folder}"
      StrCpy $R7 1
      StrCpy $R6 ${MORE_THAN_READING}
      Call CheckRights
    ${EndIf}
  ${EndIf}
!macroend

; Sets $refused if an untrusted account could change or replace what is in the folder $0.
Function CheckPlace
  Push $1
  StrCpy $refused ""
  !insertmacro FindUser
  !insertmacro CheckFolder "$0"
  !insertmacro CheckFolder "$0\x64"
  !insertmacro CheckFolder "$0\x86"
  !insertmacro CheckFolder "$0\host"
  ${GetParent} "$0" $1
  ${Do}
    ${If} $refused != ""
    ${OrIf} $1 == ""
      ${Break}
    ${EndIf}
    ${If} ${FileExists} "$1\*.*"
      !insertmacro IsLink "$1"
      ${If} $R0 <> 0
        StrCpy $refused "$1 is a link."
      ${Else}
        StrCpy $R8 "$1"
        StrLen $R0 "$1"
        ${If} $R0 = 2
          StrCpy $R8 "$1\"  ; "C:" alone means the current folder of the drive
        ${EndIf}
        StrCpy $R7 ""
        StrCpy $R6 ${MOVING_AWAY}
        Call CheckRights
      ${EndIf}
    ${EndIf}
    ${GetParent} "$1" $1
  ${Loop}
  Pop $1
FunctionEnd

; Sets the rights of a file or folder and makes the administrators its owner.
!macro SetRights path rights
  System::Call 'advapi32::ConvertStringSecurityDescriptorToSecurityDescriptorW( \
    w "${rights}", i 1, *p .R0, p 0) i .R1'
  ${If} $R1 <> 0
    System::Call 'advapi32::SetFileSecurityW(w "${path}", i 0x80000005, p R0) i .R1'
    System::Call 'kernel32::LocalFree(p R0)'
  ${EndIf}
  ${If} $R1 = 0
    StrCpy $refused "The rights of ${path} cannot be set."
  ${EndIf}
!macroend

; Creates $INSTDIR with its rights while it is still empty. Sets $refused if it cannot be used.
Function MakePlace
  ${GetParent} "$INSTDIR" $0
  CreateDirectory "$0"
  StrCpy $0 "$INSTDIR"
  Call CheckPlace
  ${If} $refused != ""
    Return
  ${EndIf}
  ${If} ${FileExists} "$INSTDIR\*.*"
    !insertmacro SetRights "$INSTDIR" "${FOLDER_RIGHTS}"
    Return
  ${EndIf}
  System::Call 'advapi32::ConvertStringSecurityDescriptorToSecurityDescriptorW( \
    w "${FOLDER_RIGHTS}", i 1, *p .R0, p 0) i .R1'
  ${If} $R1 <> 0
    ; SECURITY_ATTRIBUTES: size, descriptor, handle not inherited.
    System::Call '*(p ${SA_SIZE}, p R0, p 0) p .R2'
    System::Call 'kernel32::CreateDirectoryW(w "$INSTDIR", p R2) i .R1'
    System::Free $R2
    System::Call 'kernel32::LocalFree(p R0)'
  ${EndIf}
  ${If} $R1 = 0
    StrCpy $refused "$INSTDIR cannot be made with rights of its own."
  ${EndIf}
FunctionEnd
