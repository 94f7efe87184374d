; What is special about the component: two widths, the registration of each, and its logs.

!define LOG AddressBook.log

; A host may have the DLL loaded. Then it is put aside, and goes when Windows starts the next time
; or when the setup program runs again.
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

; $0: what the regsvr32 of a width ended with. A Windows without 32-bit programs has no regsvr32 and
; no hosts of that width.
!macro Regsvr32 program folder switches
  StrCpy $0 0
  ${DisableX64FSRedirection}
  ${If} ${FileExists} "${program}"
    ExecWait '"${program}" /s ${switches} "$INSTDIR\${folder}\${NAME}.dll"' $0
  ${EndIf}
  ${EnableX64FSRedirection}
!macroend

; $0: 0, or what the first regsvr32 that failed ended with
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

; A user who had no classes of his own has none again.
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

; The log is written beside the DLL, where ordinary users may not write once it is installed for
; everybody. They get the right to append to these two files, not to the folder of a DLL.
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
