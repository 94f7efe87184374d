; Steps for this component: DLLs of two bitnesses, their registration, and the logs.

!define LOG AddressBook.log

; A DLL that a host has loaded, or a running program, cannot be deleted. It is renamed instead, and
; deleted at the next restart of Windows or the next run of the setup program.
!macro PutAside path
  Delete "${path}\..\ns*.tmp"
  ClearErrors
  Delete "${path}"
  ${If} ${Errors}
    GetTempFileName $R0 "${path}\.."
    Delete $R0
    Rename "${path}" $R0
    Delete /REBOOTOK $R0
  ${EndIf}
  ClearErrors
!macroend

; $0: the exit code of regsvr32. A Windows without 32-bit support has neither a 32-bit regsvr32 nor
; 32-bit hosts.
!macro Regsvr32 program folder switches
  StrCpy $0 0
  ${DisableX64FSRedirection}
  ${If} ${FileExists} "${program}"
    ExecWait '"${program}" /s ${switches} "$INSTDIR\${folder}\${NAME}.dll"' $0
  ${EndIf}
  ${EnableX64FSRedirection}
!macroend

; $0: 0, or the first non-zero exit code of regsvr32
!macro Regsvr32OfBoth undo
  StrCpy $1 "${undo}"
  ${If} $forAll == ""
    StrCpy $1 "${undo} /n /i:user"
  ${EndIf}
  StrCpy $2 0
  StrCpy $3 "$WINDIR\System32"
  ${If} ${RunningX64}
    !insertmacro Regsvr32 "$WINDIR\System32\regsvr32.exe" x64 $1
    StrCpy $2 $0
    StrCpy $3 "$WINDIR\SysWOW64"
  ${EndIf}
  !insertmacro Regsvr32 "$3\regsvr32.exe" x86 $1
  ${If} $2 <> 0
    StrCpy $0 $2
  ${EndIf}
!macroend

!macro RegisterAll
  !insertmacro Regsvr32OfBoth ""
!macroend

; Removes the keys of the user's own classes if they are empty.
!macro RemoveEmptyClasses view
  ${If} ${RunningX64}
    SetRegView ${view}
  ${EndIf}
  DeleteRegKey /ifempty HKCU "Software\Classes\CLSID"
  DeleteRegKey /ifempty HKCU "Software\Classes\Interface"
  DeleteRegKey /ifempty HKCU "Software\Classes\TypeLib"
!macroend

!macro UnregisterAll
  !insertmacro Regsvr32OfBoth "/u"
  ${If} $forAll == ""
    !insertmacro RemoveEmptyClasses 32
    !insertmacro RemoveEmptyClasses 64
    DeleteRegKey /ifempty HKCU "Software\Classes\Wow6432Node"
  ${EndIf}
!macroend

; The log is in the folder of the DLL. After an installation for all users, ordinary users cannot
; write there. They get the right to append to the two log files, but none on the folder.
!macro OpenLog folder
  !insertmacro IsLink "$INSTDIR\${folder}\${LOG}"
  ${If} $R0 <> 0
    Delete "$INSTDIR\${folder}\${LOG}"
  ${EndIf}
  ${IfNot} ${FileExists} "$INSTDIR\${folder}\${LOG}"
    FileOpen $0 "$INSTDIR\${folder}\${LOG}" w
    FileClose $0
  ${EndIf}
  !insertmacro SetRights "$INSTDIR\${folder}\${LOG}" "${LOG_RIGHTS}"
!macroend

!macro OpenLogs
  ${If} $forAll != ""
    !insertmacro OpenLog x64
    !insertmacro OpenLog x86
  ${EndIf}
!macroend

Function un.RemoveLogs
  ${GetParameters} $1
  ClearErrors
  ${GetOptions} $1 "/KeepLog" $2
  ${IfNot} ${Errors}
    Return
  ${EndIf}
  ${IfNot} ${FileExists} "$INSTDIR\x64\${LOG}"
  ${AndIfNot} ${FileExists} "$INSTDIR\x86\${LOG}"
    Return
  ${EndIf}
  MessageBox MB_YESNO|MB_ICONQUESTION "Delete the log ${LOG} as well?" /SD IDYES IDYES delete
  Return
  delete:
  Delete "$INSTDIR\x64\${LOG}"
  Delete "$INSTDIR\x86\${LOG}"
FunctionEnd
